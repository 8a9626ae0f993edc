#include "platform/posix/posix_file_system.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <optional>

#include "../file_system_port_test.h"

namespace fs = std::filesystem;

INSTANTIATE_TEST_SUITE_P(Posix, FileSystemPortTest,
                         ::testing::Values(FileSystemUnderTest{
                             [] { return std::unique_ptr<FileSystem>(new PosixFileSystem); },
                             L"test_platform"}));

namespace {

// Sets an environment variable for one test and puts the old value back.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value) : m_name(name) {
        if (const char* old = std::getenv(name))
            m_old = old;
        if (value != nullptr)
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

// The directory's own order depends on the disk; the adapter's does not.
TEST_F(PosixFileSystemTest, FindListsNamesInCaseBlindOrder) {
    for (const wchar_t* name : {L"b.dwg", L"A.DWG", L"c.dxf", L"noext"})
        scratch.Write(name, "x");
    fs::create_directory(scratch.Path() / "Sub");
    std::vector<std::wstring> names;
    for (const FoundFile& found : disk.Find(scratch.File(L"*.*")))
        names.push_back(found.name);
    EXPECT_EQ(names, (std::vector<std::wstring>{L".", L"..", L"A.DWG", L"b.dwg", L"c.dxf", L"noext",
                                                L"Sub"}));
}

TEST_F(PosixFileSystemTest, WriteAtomicKeepsTheModeAndRefusesReadOnlyFolders) {
    const std::wstring path = scratch.Write(L"work.ini", "old");
    const fs::perms mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_write;
    fs::permissions(scratch.Path() / "work.ini", mode);
    ASSERT_TRUE(disk.WriteAtomic(path, "new"));
    EXPECT_EQ(fs::status(scratch.Path() / "work.ini").permissions(), mode);

    if (::geteuid() != 0) {  // root writes into read-only folders
        fs::create_directory(scratch.Path() / "ro");
        const std::wstring inside = scratch.Write(L"ro/a.ini", "keep");
        fs::permissions(scratch.Path() / "ro", fs::perms::owner_write, fs::perm_options::remove);
        EXPECT_FALSE(disk.WriteAtomic(inside, "lost"));
        EXPECT_EQ(ReadBytes(scratch.Path() / "ro" / "a.ini"), "keep");
    }
}

TEST_F(PosixFileSystemTest, WellKnownFoldersComeFromTheEnvironment) {
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
    ScopedEnv tmp("TMPDIR", nullptr);
    EXPECT_EQ(disk.TempFolder(), L"/tmp/");
}
