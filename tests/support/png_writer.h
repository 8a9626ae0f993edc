#pragma once
// PNG files of RGB pictures, written without a library so that the Windows build, which has
// none, saves the same pictures as the native one: 8-bit RGB, no filtering, the image data in
// stored (uncompressed) deflate blocks.

#include <cstdint>
#include <filesystem>
#include <string>

// The file's bytes for `width` by `height` pixels of red, green, blue, rows from the top,
// `stride` bytes apart; empty for a picture with no pixels.
std::string EncodeStoredPng(const std::uint8_t* rgb, int width, int height, int stride);

// Writes the picture to `path`; false if it can't be encoded or written.
bool SavePng(const std::filesystem::path& path, const std::uint8_t* rgb, int width, int height,
             int stride);
