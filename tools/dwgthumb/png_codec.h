#pragma once
// PNG files for the tools: encoding RGB pictures, and the size a PNG's header states.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// An 8-bit RGB PNG of tight rows from the top; empty on failure.
std::string EncodePng(const std::vector<std::uint8_t>& rgb, int width, int height);

struct PngHeader {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int bitDepth = 0;
    int colorType = 0;
};

struct DecodedPng {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgb;  // tight rows from the top
};

// The picture of a PNG file as 8-bit RGB, whatever its own format; nullopt if it can't be read.
std::optional<DecodedPng> ReadPngFile(const std::string& path);

// The signature and the IHDR chunk of `bytes`; nullopt if they are not those of a PNG.
std::optional<PngHeader> ReadPngHeader(const std::string& bytes);
