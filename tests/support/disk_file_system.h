#pragma once
// The file system adapter of the platform the tests run on, for tests that work on real folders.

#ifdef _WIN32
#include "platform/win32/win32_file_system.h"
using DiskFileSystem = Win32FileSystem;
#else
#include "platform/posix/posix_file_system.h"
using DiskFileSystem = PosixFileSystem;
#endif

#include <algorithm>
#include <string>

// A path written with '/' as the adapter hands it back, with the platform's own separator.
inline std::wstring NativePath(std::wstring path) {
#ifdef _WIN32
    std::replace(path.begin(), path.end(), L'/', L'\\');
#endif
    return path;
}
