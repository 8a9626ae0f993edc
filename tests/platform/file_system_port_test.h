#pragma once
// What every file system adapter does on the real disk. Each build runs the suite with its own
// adapter (INSTANTIATE_TEST_SUITE_P beside the adapter's own tests).

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "ports/file_system.h"
#include "support/test_files.h"

struct FileSystemUnderTest {
    std::unique_ptr<FileSystem> (*make)();
    std::wstring programName;  // the test program's file name, as ModulePath ends
};

class FileSystemPortTest : public ::testing::TestWithParam<FileSystemUnderTest> {
protected:
    ScratchFolder scratch;
    const std::unique_ptr<FileSystem> disk = GetParam().make();
};
