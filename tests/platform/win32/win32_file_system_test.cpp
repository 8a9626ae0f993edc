#include "platform/win32/win32_file_system.h"

#include <gtest/gtest.h>

#include "../file_system_port_test.h"

INSTANTIATE_TEST_SUITE_P(Win32, FileSystemPortTest,
                         ::testing::Values(FileSystemUnderTest{
                             [] { return std::unique_ptr<FileSystem>(new Win32FileSystem); },
                             L"test_win32.exe"}));

// Names on this disk are the same in any case, the exact ones as much as the patterns.
TEST(Win32FileSystem, FindsAnExactNameInAnyCaseAndTheUserDataFolderExists) {
    const ScratchFolder scratch;
    scratch.Write(L"b.dwg", "xy");
    Win32FileSystem disk;
    const auto found = disk.Find(scratch.File(L"B.DWG"));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].size, 2u);
    EXPECT_TRUE(disk.Stat(disk.UserDataFolder()).value_or(FoundFile{}).isFolder);
}
