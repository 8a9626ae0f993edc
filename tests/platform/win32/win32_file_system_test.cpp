#include "platform/win32/win32_file_system.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
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

std::vector<std::wstring> Sorted(std::vector<std::wstring> names) {
    std::sort(names.begin(), names.end());
    return names;
}

// The same path with '/' for every '\', as the core may pass it.
std::wstring Slashed(std::wstring path) {
    std::replace(path.begin(), path.end(), L'\\', L'/');
    return path;
}

class Win32FileSystemTest : public ::testing::Test {
protected:
    ScratchFolder scratch;
    Win32FileSystem disk;
};

}  // namespace

TEST_F(Win32FileSystemTest, FindMatchesPatternsWithoutRegardToCase) {
    scratch.Write(L"b.dwg", "xy");
    scratch.Write(L"A.DWG", "x");
    scratch.Write(L"c.dxf", "x");
    scratch.Write(L"noext", "x");
    fs::create_directory(scratch.Path() / "Sub");

    const auto all = disk.Find(scratch.File(L"*.*"));
    ASSERT_GE(all.size(), 2u);
    EXPECT_EQ(all[0].name, L".") << "the finder lists the dots first by itself";
    EXPECT_EQ(all[1].name, L"..");
    EXPECT_EQ(Sorted(Names(all)), (std::vector<std::wstring>{L".", L"..", L"A.DWG", L"Sub",
                                                             L"b.dwg", L"c.dxf", L"noext"}));

    EXPECT_EQ(Sorted(Names(disk.Find(Slashed(scratch.File(L"*.dwg"))))),
              (std::vector<std::wstring>{L"A.DWG", L"b.dwg"}));
    EXPECT_EQ(Names(disk.Find(scratch.File(L"?.DX?"))), (std::vector<std::wstring>{L"c.dxf"}));
    EXPECT_TRUE(disk.Find(scratch.File(L"*.zip")).empty());
    EXPECT_TRUE(disk.Find(scratch.File(L"missing\\*.*")).empty());

    const auto one = disk.Find(scratch.File(L"B.DWG"));
    ASSERT_EQ(one.size(), 1u) << "a pattern without wildcards finds that one entry";
    EXPECT_EQ(one[0].size, 2u);
    EXPECT_FALSE(one[0].isFolder);
    const auto sub = disk.Find(scratch.File(L"S*"));
    ASSERT_EQ(sub.size(), 1u);
    EXPECT_TRUE(sub[0].isFolder);
    EXPECT_EQ(sub[0].size, 0u);
}

TEST_F(Win32FileSystemTest, StatTellsFilesFromFoldersAndReadsTheirDetails) {
    scratch.Write(L"plan.dwg", std::string(1234, 'x'));
    fs::create_directory(scratch.Path() / "Sub");

    const auto file = disk.Stat(Slashed(scratch.File(L"plan.dwg")));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->name, L"plan.dwg");
    EXPECT_EQ(file->size, 1234u);
    EXPECT_FALSE(file->isReadOnly);
    const auto now = static_cast<std::int64_t>(std::time(nullptr));
    EXPECT_LE(std::abs(file->lastWriteTime - now), 24 * 3600) << "seconds since 1970, not 1601";

    EXPECT_FALSE(disk.Stat(scratch.File(L"plan.dwg\\"))) << "a trailing separator names a folder";
    const auto folder = disk.Stat(scratch.File(L"Sub\\"));
    ASSERT_TRUE(folder);
    EXPECT_TRUE(folder->isFolder);
    EXPECT_EQ(folder->name, L"Sub");
    EXPECT_FALSE(disk.Stat(scratch.File(L"none")));
    EXPECT_FALSE(disk.Stat(L""));

    ::SetFileAttributesW(scratch.File(L"plan.dwg").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(disk.Stat(scratch.File(L"plan.dwg"))->isReadOnly);
    ::SetFileAttributesW(scratch.File(L"plan.dwg").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Win32FileSystemTest, ReadsAtAnyOffsetAndRespectsTheLimit) {
    const std::string bytes = "0123456789abcdef";
    const std::wstring path = scratch.Write(L"data.bin", bytes);

    auto file = disk.OpenRead(path);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Size(), bytes.size());
    char buffer[8] = {};
    EXPECT_EQ(file->ReadAt(10, buffer, 8), 6u) << "reads past the end return fewer bytes";
    EXPECT_EQ(std::string(buffer, 6), "abcdef");
    EXPECT_EQ(file->ReadAt(100, buffer, 8), 0u);

    EXPECT_EQ(disk.ReadAll(Slashed(path), 16), bytes);
    EXPECT_FALSE(disk.ReadAll(path, 15)) << "larger than the limit";
    EXPECT_FALSE(disk.ReadAll(scratch.File(L"none"), 100));
    EXPECT_FALSE(disk.OpenRead(scratch.Folder())) << "a folder is no file";
}

TEST_F(Win32FileSystemTest, WriteAtomicReplacesWholeFilesAndLeavesNoTemporaryBehind) {
    const std::wstring path = scratch.File(L"work.ini");
    ASSERT_TRUE(disk.WriteAtomic(path, "first"));
    ASSERT_TRUE(disk.WriteAtomic(Slashed(path), "second, longer"));
    ASSERT_TRUE(disk.WriteAtomic(path, ""));
    EXPECT_EQ(ReadBytes(scratch.Path() / "work.ini"), "");
    ASSERT_TRUE(disk.WriteAtomic(path, std::string(3 << 20, 'z')));
    EXPECT_EQ(ReadBytes(scratch.Path() / "work.ini").size(), 3u << 20);
    EXPECT_EQ(Names(disk.Find(scratch.File(L"*"))),
              (std::vector<std::wstring>{L".", L"..", L"work.ini"}));
    EXPECT_EQ(ReadBytes(scratch.Path() / "work.ini").substr(0, 2), "zz");
}

TEST_F(Win32FileSystemTest, WriteAtomicFailsWithoutLosingTheOldFile) {
    const std::wstring path = scratch.Write(L"locked.ini", "keep");
    ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(disk.WriteAtomic(path, "new"));
    ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(ReadBytes(scratch.Path() / "locked.ini"), "keep");

    EXPECT_FALSE(disk.WriteAtomic(scratch.File(L"missing\\a.ini"), "x"));
    fs::create_directory(scratch.Path() / "Sub");
    EXPECT_FALSE(disk.WriteAtomic(scratch.File(L"Sub"), "x")) << "a folder is not replaced";
    EXPECT_EQ(Sorted(Names(disk.Find(scratch.File(L"*")))),
              (std::vector<std::wstring>{L".", L"..", L"Sub", L"locked.ini"}));
}

TEST_F(Win32FileSystemTest, FoldersFilesAndUniqueNames) {
    EXPECT_TRUE(disk.CreateFolder(Slashed(scratch.File(L"New/"))));
    EXPECT_FALSE(disk.CreateFolder(scratch.File(L"New"))) << "it exists";
    EXPECT_FALSE(disk.CreateFolder(scratch.File(L"a\\b"))) << "one level only";

    const std::wstring first = disk.CreateUniqueFile(scratch.Folder(), L"HV_");
    const std::wstring second = disk.CreateUniqueFile(Slashed(scratch.Folder()), L"HV_");
    ASSERT_FALSE(first.empty());
    ASSERT_FALSE(second.empty());
    EXPECT_NE(first, second);
    EXPECT_EQ(first.rfind(scratch.Folder() + L"HV_", 0), 0u) << fs::path(first).string();
    EXPECT_EQ(ReadBytes(first), "") << "the file is made, empty";
    EXPECT_TRUE(disk.CreateUniqueFile(scratch.File(L"missing\\"), L"HV_").empty());

    EXPECT_TRUE(disk.Remove(first));
    EXPECT_FALSE(disk.Remove(first));
    EXPECT_FALSE(disk.Stat(first));
}

TEST_F(Win32FileSystemTest, WellKnownFoldersEndWithTheSeparator) {
    EXPECT_EQ(disk.Separator(), L'\\');
    const std::wstring module = disk.ModulePath();
    ASSERT_GT(module.size(), 4u);
    EXPECT_EQ(module.substr(module.size() - 4), L".exe");
    EXPECT_TRUE(disk.Stat(module));
    EXPECT_FALSE(disk.UserName().empty());
    for (const std::wstring& folder : {disk.UserDataFolder(), disk.TempFolder()}) {
        ASSERT_FALSE(folder.empty());
        EXPECT_EQ(folder.back(), L'\\');
        const auto found = disk.Stat(folder);
        ASSERT_TRUE(found) << fs::path(folder).string();
        EXPECT_TRUE(found->isFolder);
    }
}
