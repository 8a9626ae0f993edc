#include "foundation/file_info.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ports/port.h"
#include "ports/shell.h"
#include "support/disk_file_system.h"
#include "support/test_files.h"

namespace fs = std::filesystem;

namespace {

struct NamingShell : Shell {
    ShellFileInfo DescribeFile(const std::wstring& path) override {
        return {7, L"Drawing (" + path.substr(path.rfind(L'.') + 1) + L")"};
    }
    // Describing a file never opens it.
    void Open(const std::wstring&, int) override { ADD_FAILURE() << "the shell opened a file"; }
};

class FileInfoTest : public ::testing::Test {
protected:
    ScratchFolder scratch;
    DiskFileSystem disk;
    ScopedPort<FileSystem> port{disk};
};

}  // namespace

TEST_F(FileInfoTest, SizeTextCountsInDecimalThousands) {
    EXPECT_EQ(FileSizeText(0), L"0 bytes");
    EXPECT_EQ(FileSizeText(1000), L"1000 bytes");
    EXPECT_EQ(FileSizeText(1001), L"1 KB");
    EXPECT_EQ(FileSizeText(1999999), L"1999 KB");
    EXPECT_EQ(FileSizeText(4294967295u), L"4294967 KB");
}

TEST_F(FileInfoTest, DateTextHasNoLeadingZeros) {
    std::tm time{};
    time.tm_year = 124, time.tm_mon = 2, time.tm_mday = 5, time.tm_hour = 9, time.tm_min = 7;
    EXPECT_EQ(FileDateText(time), L"3/5/2024 9:07 AM");
    time.tm_hour = 0;
    EXPECT_EQ(FileDateText(time), L"3/5/2024 12:07 AM");
    time.tm_hour = 12, time.tm_mon = 11, time.tm_mday = 31;
    EXPECT_EQ(FileDateText(time), L"12/31/2024 12:07 PM");
    time.tm_hour = 23, time.tm_min = 0;
    EXPECT_EQ(FileDateText(time), L"12/31/2024 11:00 PM");
}

TEST_F(FileInfoTest, ReadsSizeTimeAndShellDetailsOfAFile) {
    NamingShell shell;
    ScopedPort<Shell> shellPort(shell);
    scratch.Write(L"plan.dwg", std::string(1001, 'x'));
    const auto written = fs::file_time_type::clock::now() - std::chrono::hours(50);
    fs::last_write_time(scratch.Path() / "plan.dwg", written);

    const CFileInfo info(scratch.File(L"plan.dwg"));
    EXPECT_EQ(info.m_nLength, 1001u);
    EXPECT_EQ(info.m_strSize, L"1 KB");
    EXPECT_EQ(info.m_iIcon, 7);
    EXPECT_EQ(info.m_strTypeName, L"Drawing (dwg)");
    EXPECT_FALSE(info.m_strDate.empty());
    EXPECT_NE(info.m_strDate.find(L"M"), std::wstring::npos);
    EXPECT_TRUE(info.HasFileTitle(L"PLAN"));
    EXPECT_FALSE(info.HasFileTitle(L"plan.dwg"));

    scratch.Write(L"newer.dwg", "");
    const CFileInfo newer(scratch.File(L"newer.dwg"));
    EXPECT_TRUE(info < newer);
    EXPECT_FALSE(info == newer);
    EXPECT_EQ(newer.m_strSize, L"0 bytes");
}

TEST_F(FileInfoTest, MissingFileKeepsEmptyTexts) {
    scratch.Write(L"there.dwg", "12345");
    CFileInfo fresh(scratch.File(L"gone.dwg"));
    CFileInfo reused(scratch.File(L"there.dwg"));
    ASSERT_EQ(reused.m_strSize, L"5 bytes");
    reused.SetFile(scratch.File(L"gone.dwg"));
    for (const CFileInfo* info : {&fresh, &reused}) {
        EXPECT_EQ(info->m_iIcon, -1);
        EXPECT_EQ(info->m_strDate, L"");
        EXPECT_EQ(info->m_strSize, L"");
        EXPECT_EQ(info->m_time, 0);
        EXPECT_EQ(info->m_nLength, 0u);
        EXPECT_EQ(info->m_path.GetFileName(), L"gone.dwg");
    }
}
