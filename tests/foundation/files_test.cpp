#include "foundation/files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "foundation/folders.h"
#include "ports/port.h"
#include "support/disk_file_system.h"
#include "support/test_files.h"

namespace fs = std::filesystem;
using Names = std::vector<std::wstring>;

namespace {

class FilesTest : public ::testing::Test {
protected:
    FilesTest() {
        for (const char* folder : {"b", "a", "a/deep", "a/deep/deeper"}) {
            fs::create_directory(scratch.Path() / folder);
        }
        for (const wchar_t* file : {L"site.dwg", L"Plan.DWG", L"plan.dxf", L"notes.txt",
                                    L"a/inner.dwg", L"a/deep/deeper/last.dwg"}) {
            scratch.Write(file, "x");
        }
    }
    ScratchFolder scratch;
    DiskFileSystem disk;
    ScopedPort<FileSystem> port{disk};
};

}  // namespace

TEST_F(FilesTest, FoldersWalkBreadthFirst) {
    const std::wstring root = scratch.Folder();
    EXPECT_EQ(Folders(scratch.File(L"a\\"), false).m_folders,
              Names{NativePath(scratch.File(L"a/"))});
    EXPECT_EQ(Folders(root, true).m_folders,
              (Names{root, NativePath(root + L"a/"), NativePath(root + L"b/"),
                     NativePath(root + L"a/deep/"), NativePath(root + L"a/deep/deeper/")}));
}

TEST_F(FilesTest, IncludesComeInPatternOrder) {
    Files files(true, true);
    files.Load(scratch.Folder(), L"*.dwg,*.dxf", L"", false);
    EXPECT_EQ(files.m_strRoot, scratch.Folder());
    EXPECT_EQ(files.m_files, (Names{scratch.File(L"Plan.DWG"), scratch.File(L"site.dwg"),
                                    scratch.File(L"plan.dxf")}));

    Files twice(false, true);
    twice.Load(scratch.Folder(), L"p*,*.dxf", L"", false);
    EXPECT_EQ(twice.m_files, (Names{L"Plan.DWG", L"plan.dxf", L"plan.dxf"}));
}

TEST_F(FilesTest, ExcludesReplaceIncludes) {
    Files files(false, false);
    files.Load(scratch.Folder(), L"*.txt", L"*.DWG,*.txt", false);
    EXPECT_EQ(files.m_files, Names{L"plan"});
}

TEST_F(FilesTest, FlagsChooseTheFormAndRecursionReachesDeepFiles) {
    Files noExtension(true, false);
    noExtension.Load(scratch.File(L"a"), L"*.dwg", L"", true);
    EXPECT_EQ(noExtension.m_files, (Names{NativePath(scratch.File(L"a/inner")),
                                          NativePath(scratch.File(L"a/deep/deeper/last"))}));

    Files titles(false, false);
    titles.Load(L"", L"*.dwg", L"", false);
    EXPECT_TRUE(titles.m_files.empty());
    EXPECT_TRUE(titles.m_strRoot.empty());
    titles.Load(scratch.File(L"missing"), L"*.dwg", L"", true);
    EXPECT_TRUE(titles.m_files.empty());
}
