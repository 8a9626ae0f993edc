#pragma once
// One drawing as dwgthumb reports it: its version, what its stored preview holds, and the
// picture written out as PNG or BMP.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include "foundation/win_types.h"

struct ThumbOptions {
    std::filesystem::path outputFolder;  // empty: nothing is written
    bool bmp = false;
    std::optional<win::COLORREF> background;  // palette fitting for it first
    // Pictures written in this run: drawings of the same name in different folders get
    // "-2", "-3" ... rather than overwrite each other.
    std::set<std::filesystem::path> written;
};

struct ThumbResult {
    std::string version;      // the string at the file's start
    std::string versionText;  // the table's text, or the tool's name for a newer release
    int versionCode = 0;
    std::string outcome;      // "256x102 8-bit", "PNG 640x480", "No Preview" ...
    bool readFailed = false;  // the file couldn't be read
    std::string failure;      // why, for the error line
    std::filesystem::path written;
};

// The name of a release newer than the version table, or empty.
std::string NewerReleaseName(const std::string& version);

ThumbResult MakeThumbnail(const std::filesystem::path& drawing, ThumbOptions& options);

// A BMP file of a packed DIB: the 14-byte file header, then the DIB as it is.
std::string BmpFileOf(const std::uint8_t* dib, std::size_t size);
