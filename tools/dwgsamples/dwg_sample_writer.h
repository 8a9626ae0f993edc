#pragma once
// Makes files shaped like drawings as far as the preview reader looks: the head with its
// version string, preview address and writer byte, then a preview block with image records,
// and generated pictures for them. For tests, benchmarks and the demo: no real drawing needed.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/win_types.h"

struct DibSpec {
    int width = 32;
    int height = 20;
    int bits = 8;                  // 1, 4, 8 or 24
    bool coreHeader = false;       // a 12-byte core header instead of the 40-byte info header
    std::uint32_t colorsUsed = 0;  // biClrUsed; 0 for the full table
    bool topDown = false;          // a negative height (info header only)
    // Colour table entries to set; the rest are a grey ramp. Entry i is palette[i] if given.
    std::vector<std::optional<win::COLORREF>> palette;
    std::uint32_t seed = 1;  // varies the pattern
};

inline DibSpec SizedDib(int width, int height, int bits) {
    DibSpec spec;
    spec.width = width;
    spec.height = height;
    spec.bits = bits;
    return spec;
}

// A packed DIB with a pattern of diagonal bands in all of its colours.
std::string MakeDib(const DibSpec& spec);

// The pixel the pattern puts at column x, row y (from the top) of a DIB made by MakeDib.
win::COLORREF DibPatternPixel(const DibSpec& spec, int x, int y);

struct DwgRecordSpec {
    DwgRecordSpec() = default;
    DwgRecordSpec(std::int8_t recordType, std::string recordBytes)
        : type(recordType), bytes(std::move(recordBytes)) {}

    std::int8_t type = 2;
    std::string bytes;
    std::optional<std::uint32_t> claimedSize;  // a size other than the bytes' own
    std::optional<std::int32_t> address;       // an address other than where the bytes go
};

struct DwgSampleSpec {
    std::string version = "AC1015";
    std::uint8_t writerByte = 0;
    std::vector<DwgRecordSpec> records;
    bool withPreview = true;                // false: no sentinel where the head points
    std::optional<std::uint8_t> countByte;  // a record count other than the records'
    std::size_t bodyBytes = 256;            // drawing data before the preview block
};

std::string MakeDwg(const DwgSampleSpec& spec);

// The versions the table knows and the newer ones the tool names.
const std::vector<std::string>& KnownDwgVersions();
