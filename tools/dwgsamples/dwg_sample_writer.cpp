#include "tools/dwgsamples/dwg_sample_writer.h"

#include <algorithm>

namespace {

void Put16(std::string& out, std::size_t at, std::uint32_t value) {
    out[at] = static_cast<char>(value & 0xFF);
    out[at + 1] = static_cast<char>((value >> 8) & 0xFF);
}

void Put32(std::string& out, std::size_t at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i)
        out[at + static_cast<std::size_t>(i)] = static_cast<char>((value >> (8 * i)) & 0xFF);
}

void Append32(std::string& out, std::uint32_t value) {
    out.append(4, '\0');
    Put32(out, out.size() - 4, value);
}

unsigned TableSize(const DibSpec& spec) {
    if (spec.bits > 8)
        return 0;
    if (spec.colorsUsed != 0 && !spec.coreHeader)
        return spec.colorsUsed;
    return 1u << spec.bits;
}

win::COLORREF TableEntry(const DibSpec& spec, unsigned index) {
    if (index < spec.palette.size() && spec.palette[index])
        return *spec.palette[index];
    const unsigned count = TableSize(spec);
    const auto grey = static_cast<std::uint8_t>(count > 1 ? index * 255 / (count - 1) : 0);
    return win::MakeColor(grey, static_cast<std::uint8_t>(255 - grey),
                          static_cast<std::uint8_t>((index * 37 + spec.seed) & 0xFF));
}

unsigned PatternIndex(const DibSpec& spec, int x, int y) {
    const unsigned count = TableSize(spec);
    const unsigned band = static_cast<unsigned>(x + 2 * y) / 3 + spec.seed;
    return count == 0 ? band : band % count;
}

}  // namespace

win::COLORREF DibPatternPixel(const DibSpec& spec, int x, int y) {
    const unsigned index = PatternIndex(spec, x, y);
    if (spec.bits <= 8)
        return TableEntry(spec, index);
    return win::MakeColor(static_cast<std::uint8_t>(x * 255 / std::max(1, spec.width - 1)),
                          static_cast<std::uint8_t>(y * 255 / std::max(1, spec.height - 1)),
                          static_cast<std::uint8_t>(index * 16));
}

std::string MakeDib(const DibSpec& spec) {
    const unsigned headerSize = spec.coreHeader ? 12 : 40;
    const unsigned entrySize = spec.coreHeader ? 3 : 4;
    const unsigned colors = TableSize(spec);
    const std::size_t rowBytes = (static_cast<std::size_t>(spec.width) * spec.bits + 31) / 32 * 4;
    std::string out(headerSize + colors * entrySize + rowBytes * spec.height, '\0');
    Put32(out, 0, headerSize);
    if (spec.coreHeader) {
        Put16(out, 4, static_cast<std::uint32_t>(spec.width));
        Put16(out, 6, static_cast<std::uint32_t>(spec.height));
        Put16(out, 8, 1);
        Put16(out, 10, static_cast<std::uint32_t>(spec.bits));
    } else {
        Put32(out, 4, static_cast<std::uint32_t>(spec.width));
        Put32(out, 8, static_cast<std::uint32_t>(spec.topDown ? -spec.height : spec.height));
        Put16(out, 12, 1);
        Put16(out, 14, static_cast<std::uint32_t>(spec.bits));
        Put32(out, 20, static_cast<std::uint32_t>(rowBytes * spec.height));
        Put32(out, 32, spec.colorsUsed);
    }
    for (unsigned i = 0; i < colors; ++i) {
        const win::COLORREF c = TableEntry(spec, i);
        const std::size_t at = headerSize + static_cast<std::size_t>(i) * entrySize;
        out[at] = static_cast<char>(win::BlueOf(c));
        out[at + 1] = static_cast<char>(win::GreenOf(c));
        out[at + 2] = static_cast<char>(win::RedOf(c));
    }
    const std::size_t pixels = headerSize + static_cast<std::size_t>(colors) * entrySize;
    for (int y = 0; y < spec.height; ++y) {
        const int stored = spec.topDown && !spec.coreHeader ? y : spec.height - 1 - y;
        char* row = out.data() + pixels + static_cast<std::size_t>(stored) * rowBytes;
        for (int x = 0; x < spec.width; ++x) {
            if (spec.bits == 24) {
                const win::COLORREF c = DibPatternPixel(spec, x, y);
                row[3 * x] = static_cast<char>(win::BlueOf(c));
                row[3 * x + 1] = static_cast<char>(win::GreenOf(c));
                row[3 * x + 2] = static_cast<char>(win::RedOf(c));
                continue;
            }
            const unsigned index = PatternIndex(spec, x, y);
            const std::size_t bit = static_cast<std::size_t>(x) * spec.bits;
            const unsigned shift = 8 - spec.bits - static_cast<unsigned>(bit % 8);
            row[bit / 8] =
                static_cast<char>(static_cast<unsigned char>(row[bit / 8]) | (index << shift));
        }
    }
    return out;
}

std::string MakeDwg(const DwgSampleSpec& spec) {
    std::string out(std::max<std::size_t>(spec.bodyBytes, 32), '\0');
    for (std::size_t i = 32; i < out.size(); ++i)
        out[i] = static_cast<char>((i * 131) & 0xFF);  // stands for the drawing's own data
    out.replace(0, std::min<std::size_t>(spec.version.size(), 6), spec.version, 0, 6);
    out[17] = static_cast<char>(spec.writerByte);
    const std::size_t block = out.size();
    Put32(out, 13, static_cast<std::uint32_t>(block));

    static const unsigned char kSentinel[16] = {0x1F, 0x25, 0x6D, 0x07, 0xD4, 0x36, 0x28, 0x28,
                                                0x9D, 0x57, 0xCA, 0x3F, 0x9D, 0x44, 0x10, 0x2B};
    if (!spec.withPreview) {
        out.append(16, '\x55');
        return out;
    }
    out.append(reinterpret_cast<const char*>(kSentinel), sizeof kSentinel);
    const std::size_t overall = out.size();
    Append32(out, 0);
    out +=
        static_cast<char>(spec.countByte.value_or(static_cast<std::uint8_t>(spec.records.size())));
    const std::size_t table = out.size();
    out.append(9 * spec.records.size(), '\0');
    for (std::size_t i = 0; i < spec.records.size(); ++i) {
        const DwgRecordSpec& record = spec.records[i];
        const std::size_t at = table + 9 * i;
        out[at] = static_cast<char>(record.type);
        Put32(out, at + 1,
              static_cast<std::uint32_t>(
                  record.address.value_or(static_cast<std::int32_t>(out.size()))));
        Put32(out, at + 5,
              record.claimedSize.value_or(static_cast<std::uint32_t>(record.bytes.size())));
        out += record.bytes;
    }
    Put32(out, overall, static_cast<std::uint32_t>(out.size() - block));
    return out;
}

const std::vector<std::string>& KnownDwgVersions() {
    static const std::vector<std::string> versions = {
        "AC1021", "AC1018", "AC402b", "AC401h", "AC1015", "AC1500", "AC1014", "AC1013",
        "AC1012", "AC1011", "AC1010", "AC1009", "AC1008", "AC1007", "AC1006", "AC1005",
        "AC1004", "AC1003", "AC1002", "AC1001", "AC2.22", "AC2.21", "AC2.20", "AC2.10",
        "AC1.50", "AC1.40", "AC1.2",  "MC0.0",  "AC1024", "AC1027", "AC1032"};
    return versions;
}
