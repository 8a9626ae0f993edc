#include "support/png_writer.h"

#include <algorithm>
#include <array>
#include <fstream>

namespace {

std::uint32_t Crc32(const std::string& bytes, std::size_t from) {
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> t{};
        for (std::uint32_t n = 0; n < 256; ++n) {
            std::uint32_t c = n;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) != 0 ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[n] = c;
        }
        return t;
    }();
    std::uint32_t crc = 0xFFFFFFFFu;
    for (std::size_t i = from; i < bytes.size(); ++i)
        crc = table[(crc ^ static_cast<std::uint8_t>(bytes[i])) & 0xFF] ^ (crc >> 8);
    return crc ^ 0xFFFFFFFFu;
}

std::uint32_t Adler32(const std::string& bytes) {
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (char c : bytes) {
        a = (a + static_cast<std::uint8_t>(c)) % 65521;
        b = (b + a) % 65521;
    }
    return (b << 16) | a;
}

void PutBigEndian(std::string& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out += static_cast<char>((value >> shift) & 0xFF);
}

void PutChunk(std::string& out, const char* type, const std::string& data) {
    PutBigEndian(out, static_cast<std::uint32_t>(data.size()));
    const std::size_t start = out.size();
    out += type;
    out += data;
    PutBigEndian(out, Crc32(out, start));
}

// A zlib stream of stored blocks: no compression, at most 65535 bytes a block.
std::string StoredZlib(const std::string& raw) {
    std::string out = "\x78\x01";
    std::size_t at = 0;
    do {
        const std::size_t length = std::min<std::size_t>(raw.size() - at, 65535);
        const bool last = at + length == raw.size();
        out += static_cast<char>(last ? 1 : 0);
        out += static_cast<char>(length & 0xFF);
        out += static_cast<char>(length >> 8);
        out += static_cast<char>(~length & 0xFF);
        out += static_cast<char>((~length >> 8) & 0xFF);
        out.append(raw, at, length);
        at += length;
    } while (at < raw.size());
    PutBigEndian(out, Adler32(raw));
    return out;
}

}  // namespace

std::string EncodeStoredPng(const std::uint8_t* rgb, int width, int height, int stride) {
    if (rgb == nullptr || width <= 0 || height <= 0 || stride < width * 3)
        return {};
    std::string header;
    PutBigEndian(header, static_cast<std::uint32_t>(width));
    PutBigEndian(header, static_cast<std::uint32_t>(height));
    header += std::string("\x08\x02\x00\x00\x00", 5);  // 8 bits, RGB, deflate, no filter, no interlace

    std::string raw;
    raw.reserve(static_cast<std::size_t>(height) * (static_cast<std::size_t>(width) * 3 + 1));
    for (int y = 0; y < height; ++y) {
        raw += '\0';  // filter type: none
        const auto* row = reinterpret_cast<const char*>(rgb + static_cast<std::size_t>(y) * stride);
        raw.append(row, static_cast<std::size_t>(width) * 3);
    }
    std::string png = "\x89PNG\r\n\x1a\n";
    PutChunk(png, "IHDR", header);
    PutChunk(png, "IDAT", StoredZlib(raw));
    PutChunk(png, "IEND", {});
    return png;
}

bool SavePng(const std::filesystem::path& path, const std::uint8_t* rgb, int width, int height,
             int stride) {
    const std::string png = EncodeStoredPng(rgb, width, height, stride);
    if (png.empty())
        return false;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(png.data(), static_cast<std::streamsize>(png.size()));
    return static_cast<bool>(file);
}
