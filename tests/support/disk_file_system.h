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
#include <filesystem>
#include <string>

#include "foundation/text_encoding.h"

// A path written with '/' as the adapter hands it back, with the platform's own separator.
inline std::wstring NativePath(std::wstring path) {
#ifdef _WIN32
    std::replace(path.begin(), path.end(), L'/', L'\\');
#endif
    return path;
}

// The path of the standard library for a path the core handles.
inline std::filesystem::path DiskPath(const std::wstring& path) {
#ifdef _WIN32
    return std::filesystem::path(path);
#else
    return std::filesystem::path(ToUtf8(path));
#endif
}
