#include "file_system_port_test.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::wstring>;

Names SortedNames(const std::vector<FoundFile>& found) {
    Names names;
    for (const auto& f : found)
        names.push_back(f.name);
    std::sort(names.begin(), names.end());
    return names;
}

// The path with both separators, as the core may pass it: '/' first, '\' for the last one.
std::wstring Mixed(std::wstring path) {
    std::replace(path.begin(), path.end(), L'\\', L'/');
    const std::size_t last = path.rfind(L'/');
    if (last != std::wstring::npos)
        path[last] = L'\\';
    return path;
}

bool NearNow(std::int64_t seconds) {
    return std::abs(seconds - static_cast<std::int64_t>(std::time(nullptr))) < 24 * 3600;
}

void MakeReadOnly(const fs::path& path) {
    fs::permissions(path, fs::perms::owner_read);
}

}  // namespace

TEST_P(FileSystemPortTest, FindMatchesPatternsWithoutRegardToCaseAndListsTheDotsFirst) {
    scratch.Write(L"b.dwg", "xy");
    scratch.Write(L"A.DWG", "x");
    scratch.Write(L"c.dxf", "x");
    scratch.Write(L"noext", "x");
    fs::create_directory(scratch.Path() / "Sub");

    const auto all = disk->Find(scratch.File(L"*.*"));
    ASSERT_GE(all.size(), 2u);
    EXPECT_EQ(all[0].name, L".");
    EXPECT_EQ(all[1].name, L"..");
    EXPECT_EQ(SortedNames(all),
              (Names{L".", L"..", L"A.DWG", L"Sub", L"b.dwg", L"c.dxf", L"noext"}));
    EXPECT_EQ(SortedNames(disk->Find(Mixed(scratch.File(L"*.dwg")))), (Names{L"A.DWG", L"b.dwg"}));
    EXPECT_EQ(SortedNames(disk->Find(scratch.File(L"?.DX?"))), Names{L"c.dxf"});
    EXPECT_TRUE(disk->Find(scratch.File(L"*.zip")).empty());
    EXPECT_TRUE(disk->Find(scratch.Folder() + L"missing/*.*").empty());

    const auto one = disk->Find(scratch.File(L"b.dwg"));
    ASSERT_EQ(one.size(), 1u) << "a pattern without wildcards finds that one entry";
    EXPECT_EQ(one[0].size, 2u);
    EXPECT_FALSE(one[0].isFolder);
    EXPECT_TRUE(NearNow(one[0].lastWriteTime)) << "seconds since 1970";
    EXPECT_TRUE(disk->Find(scratch.File(L"two.txt")).empty());
    const auto sub = disk->Find(scratch.File(L"S*"));
    ASSERT_EQ(sub.size(), 1u);
    EXPECT_TRUE(sub[0].isFolder);
    EXPECT_EQ(sub[0].size, 0u);
}

TEST_P(FileSystemPortTest, NamesOutsideAsciiRoundTrip) {
    const std::wstring name = L"B\u00fcro \u56fe.dwg";
    ASSERT_TRUE(disk->WriteAtomic(scratch.File(name), "data"));
    EXPECT_EQ(SortedNames(disk->Find(scratch.File(L"*.dwg"))), Names{name});
    EXPECT_EQ(disk->ReadAll(scratch.File(name), 100), "data");
}

TEST_P(FileSystemPortTest, StatTellsFilesFromFoldersAndReadsTheirDetails) {
    scratch.Write(L"plan.dwg", std::string(1234, 'x'));
    fs::create_directory(scratch.Path() / "Sub");

    const auto file = disk->Stat(Mixed(scratch.File(L"plan.dwg")));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->name, L"plan.dwg");
    EXPECT_EQ(file->size, 1234u);
    EXPECT_FALSE(file->isFolder);
    EXPECT_FALSE(file->isReadOnly);
    EXPECT_TRUE(NearNow(file->lastWriteTime));

    EXPECT_FALSE(disk->Stat(scratch.File(L"plan.dwg\\"))) << "a trailing separator names a folder";
    EXPECT_FALSE(disk->Stat(scratch.File(L"plan.dwg/")));
    for (const wchar_t* folder : {L"Sub", L"Sub\\", L"Sub/"}) {
        const auto found = disk->Stat(scratch.File(folder));
        ASSERT_TRUE(found);
        EXPECT_TRUE(found->isFolder);
        EXPECT_EQ(found->name, L"Sub");
    }
    EXPECT_FALSE(disk->Stat(scratch.File(L"none")));
    EXPECT_FALSE(disk->Stat(L""));

    MakeReadOnly(scratch.Path() / "plan.dwg");
    EXPECT_TRUE(disk->Stat(scratch.File(L"plan.dwg"))->isReadOnly);
}

TEST_P(FileSystemPortTest, ReadsAtAnyOffsetAndRespectsTheLimit) {
    const std::string bytes = "0123456789abcdef";
    const std::wstring path = scratch.Write(L"data.bin", bytes);

    auto file = disk->OpenRead(path);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Size(), bytes.size());
    char buffer[8] = {};
    EXPECT_EQ(file->ReadAt(10, buffer, 8), 6u) << "reads past the end return fewer bytes";
    EXPECT_EQ(std::string(buffer, 6), "abcdef");
    EXPECT_EQ(file->ReadAt(16, buffer, 8), 0u);
    EXPECT_EQ(file->ReadAt(1u << 30, buffer, 8), 0u);

    EXPECT_EQ(disk->ReadAll(Mixed(path), 16), bytes);
    EXPECT_FALSE(disk->ReadAll(path, 15)) << "larger than the limit";
    EXPECT_FALSE(disk->ReadAll(scratch.File(L"none"), 100));
    EXPECT_FALSE(disk->ReadAll(scratch.Folder(), 100));
    EXPECT_FALSE(disk->OpenRead(scratch.Folder())) << "a folder is no file";
}

TEST_P(FileSystemPortTest, WriteAtomicReplacesWholeFilesAndLeavesNoTemporaryBehind) {
    const std::wstring path = scratch.File(L"work.ini");
    ASSERT_TRUE(disk->WriteAtomic(path, "first, and longer"));
    ASSERT_TRUE(disk->WriteAtomic(Mixed(path), "second"));
    EXPECT_EQ(ReadBytes(scratch.Path() / "work.ini"), "second");
    ASSERT_TRUE(disk->WriteAtomic(path, ""));
    EXPECT_EQ(ReadBytes(scratch.Path() / "work.ini"), "");
    ASSERT_TRUE(disk->WriteAtomic(path, std::string(3 << 20, 'z')));
    EXPECT_EQ(ReadBytes(scratch.Path() / "work.ini"), std::string(3 << 20, 'z'));
    EXPECT_EQ(SortedNames(disk->Find(scratch.File(L"*"))), (Names{L".", L"..", L"work.ini"}));

    // The rename, the second step, replaces a file and moves none that is missing.
    const std::wstring next = scratch.Write(L"next.tmp", "renamed");
    ASSERT_TRUE(disk->Rename(Mixed(next), path));
    EXPECT_EQ(ReadBytes(scratch.Path() / "work.ini"), "renamed");
    EXPECT_FALSE(disk->Rename(next, path));
    EXPECT_EQ(SortedNames(disk->Find(scratch.File(L"*"))), (Names{L".", L"..", L"work.ini"}));
}

TEST_P(FileSystemPortTest, WriteAtomicFailsWithoutLosingTheOldFile) {
    const std::wstring path = scratch.Write(L"locked.ini", "keep");
    MakeReadOnly(scratch.Path() / "locked.ini");
    EXPECT_FALSE(disk->WriteAtomic(path, "new"));
    EXPECT_EQ(ReadBytes(scratch.Path() / "locked.ini"), "keep");

    EXPECT_FALSE(disk->WriteAtomic(scratch.File(L"missing\\a.ini"), "x"));
    fs::create_directory(scratch.Path() / "Sub");
    EXPECT_FALSE(disk->WriteAtomic(scratch.File(L"Sub"), "x")) << "a folder is not replaced";
    EXPECT_EQ(SortedNames(disk->Find(scratch.File(L"*"))),
              (Names{L".", L"..", L"Sub", L"locked.ini"}));
}

TEST_P(FileSystemPortTest, FoldersFilesAndUniqueNames) {
    EXPECT_TRUE(disk->CreateFolder(Mixed(scratch.File(L"New/"))));
    EXPECT_FALSE(disk->CreateFolder(scratch.File(L"New"))) << "it exists";
    EXPECT_FALSE(disk->CreateFolder(scratch.File(L"a\\b"))) << "one level only";

    const std::wstring first = disk->CreateUniqueFile(scratch.Folder(), L"HV_");
    const std::wstring second = disk->CreateUniqueFile(Mixed(scratch.Folder()), L"HV_");
    ASSERT_FALSE(first.empty());
    ASSERT_FALSE(second.empty());
    EXPECT_NE(first, second);
    EXPECT_EQ(first.rfind(scratch.Folder() + L"HV_", 0), 0u) << fs::path(first).string();
    EXPECT_EQ(ReadBytes(first), "") << "the file is made, empty";
    EXPECT_TRUE(disk->CreateUniqueFile(scratch.File(L"missing\\"), L"HV_").empty());

    EXPECT_TRUE(disk->Remove(first));
    EXPECT_FALSE(disk->Remove(first));
    EXPECT_FALSE(disk->Stat(first));
}

TEST_P(FileSystemPortTest, WellKnownFoldersEndWithTheSeparator) {
    EXPECT_EQ(disk->Separator(), scratch.Folder().back()) << "the platform's own separator";
    EXPECT_FALSE(disk->UserName().empty());
    const std::wstring data = disk->UserDataFolder();
    ASSERT_FALSE(data.empty());
    EXPECT_EQ(data.back(), disk->Separator());
    const std::wstring temp = disk->TempFolder();
    ASSERT_FALSE(temp.empty());
    EXPECT_EQ(temp.back(), disk->Separator());
    EXPECT_TRUE(disk->Stat(temp).value_or(FoundFile{}).isFolder);
    const auto module = disk->Stat(disk->ModulePath());
    ASSERT_TRUE(module);
    EXPECT_EQ(module->name, GetParam().programName);
}
