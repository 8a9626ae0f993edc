#include "platform/posix/posix_file_system.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

#include "support/test_files.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::wstring> Names(const std::vector<FoundFile>& found) {
    std::vector<std::wstring> names;
    for (const auto& f : found)
        names.push_back(f.name);
    return names;
}

// Sets an environment variable for one test and puts the old value back.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value) : m_name(name) {
        if (const char* old = std::getenv(name))
            m_old = old;
        if (value)
            ::setenv(name, value, 1);
        else
            ::unsetenv(name);
    }
    ~ScopedEnv() {
        if (m_old)
            ::setenv(m_name, m_old->c_str(), 1);
        else
            ::unsetenv(m_name);
    }

private:
    const char* m_name;
    std::optional<std::string> m_old;
};

class PosixFileSystemTest : public ::testing::Test {
protected:
    ScratchFolder scratch;
    PosixFileSystem disk;
};

}  // namespace

TEST_F(PosixFileSystemTest, FindListsDotsFirstThenNamesInCaseBlindOrder) {
    scratch.Write(L"b.dwg", "x");
    scratch.Write(L"A.DWG", "x");
    scratch.Write(L"c.dxf", "x");
    scratch.Write(L"noext", "x");
    fs::create_directory(scratch.Path() / "Sub");

    EXPECT_EQ(
        Names(disk.Find(scratch.File(L"*.*"))),
        (std::vector<std::wstring>{L".", L"..", L"A.DWG", L"b.dwg", L"c.dxf", L"noext", L"Sub"}));
    EXPECT_EQ(Names(disk.Find(scratch.File(L"*.dwg"))),
              (std::vector<std::wstring>{L"A.DWG", L"b.dwg"}));
    EXPECT_EQ(Names(disk.Find(scratch.File(L"?.dxf"))), (std::vector<std::wstring>{L"c.dxf"}));
    EXPECT_TRUE(disk.Find(scratch.File(L"*.pdf")).empty());
}

TEST_F(PosixFileSystemTest, FindAcceptsBackslashesAndReportsEntryDetails) {
    fs::create_directory(scratch.Path() / "sub");
    scratch.Write(L"sub/plan.dwg", "12345");
    std::wstring pattern = scratch.Folder() + L"sub\\*.dwg";

    const auto found = disk.Find(pattern);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].name, L"plan.dwg");
    EXPECT_EQ(found[0].size, 5u);
    EXPECT_FALSE(found[0].isFolder);
    EXPECT_GT(found[0].lastWriteTime, 1'500'000'000);

    const auto folder = disk.Find(scratch.Folder() + L"*");
    ASSERT_EQ(folder.size(), 3u);
    EXPECT_TRUE(folder[2].isFolder);
}

TEST_F(PosixFileSystemTest, FindWithoutWildcardsFindsExactlyThatEntry) {
    scratch.Write(L"one.txt", "");
    EXPECT_EQ(Names(disk.Find(scratch.File(L"one.txt"))), std::vector<std::wstring>{L"one.txt"});
    EXPECT_TRUE(disk.Find(scratch.File(L"two.txt")).empty());
    EXPECT_TRUE(disk.Find(scratch.Folder() + L"missing/*.*").empty());
}

TEST_F(PosixFileSystemTest, Utf8NamesRoundTrip) {
    const std::wstring name = L"B\u00fcro \u56fe.dwg";
    ASSERT_TRUE(disk.WriteAtomic(scratch.File(name), "data"));
    EXPECT_EQ(Names(disk.Find(scratch.File(L"*.dwg"))), std::vector<std::wstring>{name});
    EXPECT_EQ(disk.ReadAll(scratch.File(name), 100), "data");
}

TEST_F(PosixFileSystemTest, StatTellsFoldersFromFiles) {
    scratch.Write(L"file", "abc");
    fs::create_directory(scratch.Path() / "dir");

    EXPECT_TRUE(disk.Stat(scratch.File(L"dir"))->isFolder);
    EXPECT_TRUE(disk.Stat(scratch.File(L"dir\\"))->isFolder);
    EXPECT_EQ(disk.Stat(scratch.File(L"dir/"))->name, L"dir");
    EXPECT_EQ(disk.Stat(scratch.File(L"file"))->size, 3u);
    EXPECT_FALSE(disk.Stat(scratch.File(L"file/")));
    EXPECT_FALSE(disk.Stat(scratch.File(L"none")));
    EXPECT_FALSE(disk.Stat(L""));

    fs::permissions(scratch.Path() / "file", fs::perms::owner_write, fs::perm_options::remove);
    EXPECT_TRUE(disk.Stat(scratch.File(L"file"))->isReadOnly);
}

TEST_F(PosixFileSystemTest, ReadingHonoursLimitsAndFileEnd) {
    const std::wstring path = scratch.Write(L"ten", "0123456789");
    EXPECT_EQ(disk.ReadAll(path, 10), "0123456789");
    EXPECT_FALSE(disk.ReadAll(path, 9));
    EXPECT_FALSE(disk.ReadAll(scratch.Folder(), 100));
    EXPECT_FALSE(disk.ReadAll(scratch.File(L"none"), 100));

    auto file = disk.OpenRead(path);
    ASSERT_TRUE(file);
    char buffer[8] = {};
    EXPECT_EQ(file->ReadAt(6, buffer, sizeof buffer), 4u);
    EXPECT_EQ(std::string(buffer, 4), "6789");
    EXPECT_EQ(file->ReadAt(10, buffer, sizeof buffer), 0u);
    EXPECT_EQ(file->ReadAt(1u << 30, buffer, sizeof buffer), 0u);
}

TEST_F(PosixFileSystemTest, WriteAtomicReplacesWholeFileAndLeavesNoTemporaryFile) {
    const std::wstring path = scratch.Write(L"work.ini", "old contents that are longer");
    fs::permissions(scratch.Path() / "work.ini",
                    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_write);
    const auto modeBefore = fs::status(scratch.Path() / "work.ini").permissions();

    ASSERT_TRUE(disk.WriteAtomic(path, "new"));
    EXPECT_EQ(ReadBytes(scratch.Path() / "work.ini"), "new");
    EXPECT_EQ(fs::status(scratch.Path() / "work.ini").permissions(), modeBefore);
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch.Path()), fs::directory_iterator()), 1);
}

TEST_F(PosixFileSystemTest, FailedWritesLeaveTheOldFile) {
    EXPECT_FALSE(disk.WriteAtomic(scratch.Folder() + L"missing/x.ini", "x"));

    const std::wstring locked = scratch.Write(L"locked.ini", "keep");
    fs::permissions(scratch.Path() / "locked.ini", fs::perms::owner_write,
                    fs::perm_options::remove);
    EXPECT_FALSE(disk.WriteAtomic(locked, "lost"));
    EXPECT_EQ(ReadBytes(scratch.Path() / "locked.ini"), "keep");

    if (::geteuid() != 0) {  // root writes into read-only folders
        fs::create_directory(scratch.Path() / "ro");
        const std::wstring inside = scratch.Write(L"ro/a.ini", "keep");
        fs::permissions(scratch.Path() / "ro", fs::perms::owner_write, fs::perm_options::remove);
        EXPECT_FALSE(disk.WriteAtomic(inside, "lost"));
        EXPECT_EQ(ReadBytes(scratch.Path() / "ro" / "a.ini"), "keep");
    }
}

TEST_F(PosixFileSystemTest, FoldersFilesAndUniqueNames) {
    EXPECT_TRUE(disk.CreateFolder(scratch.File(L"new\\")));
    EXPECT_FALSE(disk.CreateFolder(scratch.File(L"new")));
    EXPECT_FALSE(disk.CreateFolder(scratch.File(L"a/b/c")));

    const std::wstring first = disk.CreateUniqueFile(scratch.Folder(), L"HV_");
    const std::wstring second = disk.CreateUniqueFile(scratch.File(L"new"), L"HV_");
    ASSERT_FALSE(first.empty());
    EXPECT_NE(first, second);
    EXPECT_EQ(first.rfind(scratch.Folder() + L"HV_", 0), 0u);
    EXPECT_EQ(second.rfind(scratch.File(L"new/HV_"), 0), 0u);
    EXPECT_EQ(disk.Stat(first)->size, 0u);
    EXPECT_TRUE(disk.Remove(first));
    EXPECT_FALSE(disk.Remove(first));
    EXPECT_TRUE(disk.CreateUniqueFile(scratch.File(L"none/"), L"HV_").empty());
}

TEST_F(PosixFileSystemTest, WellKnownFoldersEndWithSeparator) {
    {
        ScopedEnv xdg("XDG_CONFIG_HOME", "/srv/config");
        EXPECT_EQ(disk.UserDataFolder(), L"/srv/config/");
    }
    {
        ScopedEnv xdg("XDG_CONFIG_HOME", nullptr);
        ScopedEnv home("HOME", "/home/drafter/");
        EXPECT_EQ(disk.UserDataFolder(), L"/home/drafter/.config/");
    }
    {
        ScopedEnv tmp("TMPDIR", "/var/tmp");
        EXPECT_EQ(disk.TempFolder(), L"/var/tmp/");
    }
    {
        ScopedEnv tmp("TMPDIR", nullptr);
        EXPECT_EQ(disk.TempFolder(), L"/tmp/");
    }
    EXPECT_FALSE(disk.UserName().empty());
    const auto module = disk.Stat(disk.ModulePath());
    ASSERT_TRUE(module);
    EXPECT_EQ(module->name, L"test_platform");
}
