#include "foundation/file_path.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ports/folder_dialog.h"
#include "ports/port.h"
#include "support/disk_file_system.h"
#include "support/recording_message_boxes.h"
#include "support/test_files.h"

namespace fs = std::filesystem;

namespace {

struct ScriptedFolderDialog : FolderDialog {
    std::optional<std::wstring> answer;
    std::wstring start;
    unsigned flags = 0;
    std::optional<std::wstring> Choose(void*, const std::wstring&, const std::wstring& from,
                                       unsigned asked) override {
        start = from;
        flags = asked;
        return answer;
    }
};

class FilePathTest : public ::testing::Test {
protected:
    ScratchFolder scratch;
    DiskFileSystem disk;
    ScopedPort<FileSystem> port{disk};
};

}  // namespace

TEST_F(FilePathTest, SplitsLikeTheClassicSplitterWithBothSeparatorsAndEmptyHasNoParts) {
    const CFilePath path(L"C:\\Jobs/A\\site.v2.dwg");
    EXPECT_FALSE(path.m_bExists);
    EXPECT_EQ(path.GetDrive(), L"C:");
    EXPECT_EQ(std::wstring(path.m_szDir), L"\\Jobs/A\\");
    EXPECT_EQ(path.GetFileTitle(), L"site.v2");
    EXPECT_EQ(path.GetExtension(), L".dwg");
    EXPECT_EQ(path.GetFileName(), L"site.v2.dwg");
    EXPECT_EQ(path.GetPathNoExtension(), L"C:\\Jobs/A\\site.v2");
    EXPECT_EQ(path.GetPath(true), L"C:\\\\Jobs/A\\\\site.v2.dwg");
    EXPECT_EQ(path.GetFolder(true, false), L"C:\\Jobs/A\\");
    EXPECT_EQ(path.GetFolder(false, true), L"C:\\\\Jobs/A");

    std::vector<std::wstring> parts{L"kept"};
    path.GetFolderParts(parts);
    EXPECT_EQ(parts, (std::vector<std::wstring>{L"kept", L"Jobs", L"A"}));

    EXPECT_EQ(CFilePath(L"1:x.dwg").GetDrive(), L"");  // a drive is a letter
    EXPECT_EQ(CFilePath(L"/home/u/.bashrc").GetExtension(), L".bashrc");
    EXPECT_EQ(CFilePath(L"None Found").GetFileTitle(), L"None Found");

    const CFilePath empty;
    EXPECT_FALSE(empty.m_bExists || empty.m_bIsFolder);
    EXPECT_EQ(empty.GetPath() + empty.GetFileName() + empty.GetFolder(false), L"");
}

TEST_F(FilePathTest, FoldersFoundOnDiskGainOneSeparator) {
    fs::create_directory(scratch.Path() / "sub");
    const std::wstring folder = scratch.File(L"sub");
    for (const std::wstring& given : {folder, folder + L"\\\\", folder + L"/"}) {
        const CFilePath path(given);
        EXPECT_TRUE(path.m_bExists);
        EXPECT_TRUE(path.m_bIsFolder);
        EXPECT_EQ(path.GetPath(), NativePath(folder + L"/"));
        EXPECT_EQ(path.GetFileName(), L"");
    }
    const CFilePath missing(scratch.File(L"none"));
    EXPECT_FALSE(missing.m_bExists);
    EXPECT_EQ(missing.GetPath(), scratch.File(L"none"));
    EXPECT_EQ(missing.GetFileTitle(), L"none");

    scratch.Write(L"plan.dwg", "x");
    const CFilePath file(scratch.File(L"plan.dwg"));
    EXPECT_TRUE(file.m_bExists);
    EXPECT_FALSE(file.m_bIsFolder);
}

TEST_F(FilePathTest, PartsAreCutToTheirBuffersAndRebuilt) {
    const std::wstring longName(300, L'n');
    const CFilePath path(L"/" + std::wstring(400, L'd') + L"/" + longName + L"." + longName);
    EXPECT_EQ(std::wstring(path.m_szDir).size(), 259u);
    EXPECT_EQ(path.GetFileTitle().size(), 255u);
    EXPECT_EQ(path.GetExtension().size(), 255u);

    CFilePath edited(L"C:\\a\\plan.dwg");
    edited.SetExtension(L".bak");
    edited.SetFileTitle(L"old plan");
    EXPECT_EQ(edited.GetPath(), L"C:\\a\\old plan.bak");
    edited.SetFileTitle(longName);
    EXPECT_EQ(edited.GetFileTitle().size(), 255u);
}

TEST_F(FilePathTest, EqualityIgnoresCase) {
    EXPECT_TRUE(CFilePath(L"C:\\Jobs\\A.dwg") == CFilePath(L"c:\\JOBS\\a.DWG"));
    EXPECT_FALSE(CFilePath(L"C:\\Jobs\\A.dwg") == CFilePath(L"C:\\Jobs\\A.dxf"));
}

TEST_F(FilePathTest, InvalidNamesAreReportedOnlyWhenAsked) {
    RecordingMessageBoxes boxes;
    ScopedPort<MessageBoxes> boxPort(boxes);
    EXPECT_TRUE(IsValidFileName(L"site plan (2).dwg", true));
    EXPECT_FALSE(IsValidFileName(L"a?b", false));
    EXPECT_TRUE(boxes.shown.empty());
    for (const wchar_t* bad : {L"<", L">", L":", L"\"", L"*", L"?", L"|"}) {
        EXPECT_FALSE(IsValidFileName(std::wstring(L"x") + bad, true)) << bad;
    }
    ASSERT_EQ(boxes.shown.size(), 7u);
    EXPECT_EQ(boxes.shown[0].first,
              L"File names cannot contain the following characters-\n< > : \" * ? |");
}

TEST_F(FilePathTest, FileExistsUsesTheFinder) {
    scratch.Write(L"plan.dwg", "x");
    EXPECT_TRUE(FileExists(scratch.File(L"plan.dwg")));
    EXPECT_TRUE(FileExists(scratch.File(L"*.DWG")));
    EXPECT_FALSE(FileExists(scratch.File(L"*.dxf")));
    EXPECT_FALSE(FileExists(L""));
}

TEST_F(FilePathTest, CreatePathMakesEveryMissingLevel) {
    const std::wstring deep = scratch.Folder() + L"a\\b/c\\";
    EXPECT_TRUE(CreatePath(deep));
    EXPECT_TRUE(fs::is_directory(scratch.Path() / "a" / "b" / "c"));
    EXPECT_TRUE(CreatePath(deep));

    scratch.Write(L"file", "");
    EXPECT_FALSE(CreatePath(scratch.File(L"file/below")));
    const std::wstring longPath = scratch.Folder() + std::wstring(120, L'x') + L"/" +
                                  std::wstring(120, L'y') + L"/" + std::wstring(120, L'z');
    EXPECT_TRUE(CreatePath(longPath));
    EXPECT_TRUE(CFilePath(longPath).m_bIsFolder);
}

TEST_F(FilePathTest, BrowseForFolderSetsTheChosenFolder) {
    ScriptedFolderDialog dialog;
    ScopedPort<FolderDialog> dialogPort(dialog);
    fs::create_directory(scratch.Path() / "chosen");
    CFilePath path(scratch.Folder());

    EXPECT_FALSE(path.BrowseForFolder(nullptr, L"Pick", false));
    EXPECT_EQ(dialog.start, scratch.Folder());
    EXPECT_EQ(dialog.flags, 0x41u);
    EXPECT_EQ(path.GetPath(), scratch.Folder());

    dialog.answer = scratch.File(L"chosen");
    EXPECT_TRUE(path.BrowseForFolder(nullptr, L"Pick", true));
    EXPECT_EQ(dialog.flags, 0x4041u);
    EXPECT_TRUE(path.m_bIsFolder);
    EXPECT_EQ(path.GetPath(), NativePath(scratch.File(L"chosen/")));

    dialog.answer = scratch.File(L"gone");
    EXPECT_TRUE(path.BrowseForFolder(nullptr, L"Pick", false));
    EXPECT_EQ(path.GetPath(), NativePath(scratch.File(L"gone/")));
    EXPECT_FALSE(path.m_bExists);
}
