#include "tools/dwgthumb/png_codec.h"

#include <png.h>

#include <cstring>

namespace {

void AppendToString(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<std::string*>(png_get_io_ptr(png));
    out->append(reinterpret_cast<const char*>(data), length);
}

void NoFlush(png_structp) {}

std::uint32_t BigEndian32(const std::string& bytes, std::size_t at) {
    return (static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at])) << 24) |
           (static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + 1])) << 16) |
           (static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + 2])) << 8) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + 3]));
}

}  // namespace

std::string EncodePng(const std::vector<std::uint8_t>& rgb, int width, int height) {
    if (width <= 0 || height <= 0 ||
        rgb.size() < static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3)
        return {};
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    if (png == nullptr)
        return {};
    png_infop info = png_create_info_struct(png);
    std::string out;
    if (info == nullptr || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, info != nullptr ? &info : nullptr);
        return {};
    }
    png_set_write_fn(png, &out, AppendToString, NoFlush);
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
                 PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int y = 0; y < height; ++y) {
        png_write_row(png,
                      const_cast<png_bytep>(rgb.data() + static_cast<std::size_t>(y) * width * 3));
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return out;
}

std::optional<PngHeader> ReadPngHeader(const std::string& bytes) {
    static const char kSignature[8] = {'\x89', 'P', 'N', 'G', '\r', '\n', '\x1A', '\n'};
    if (bytes.size() < 33 || std::memcmp(bytes.data(), kSignature, 8) != 0 ||
        bytes.compare(12, 4, "IHDR") != 0)
        return std::nullopt;
    PngHeader header;
    header.width = BigEndian32(bytes, 16);
    header.height = BigEndian32(bytes, 20);
    header.bitDepth = static_cast<unsigned char>(bytes[24]);
    header.colorType = static_cast<unsigned char>(bytes[25]);
    return header;
}

std::optional<DecodedPng> ReadPngFile(const std::string& path) {
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
        return std::nullopt;
    image.format = PNG_FORMAT_RGB;
    DecodedPng decoded;
    decoded.width = static_cast<int>(image.width);
    decoded.height = static_cast<int>(image.height);
    decoded.rgb.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, decoded.rgb.data(), 0, nullptr) == 0) {
        png_image_free(&image);
        return std::nullopt;
    }
    return decoded;
}
