// The PNG writer's files as libpng reads them: every pixel back, over pictures that need one
// stored block and several.

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <array>
#include <vector>

#include "support/png_writer.h"

namespace {

std::vector<std::uint8_t> Pattern(int width, int height, int stride) {
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(stride) * height, 0xEE);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width * 3; ++x)
            rgb[static_cast<std::size_t>(y) * stride + x] = static_cast<std::uint8_t>(x * 7 + y * 13);
    return rgb;
}

// The picture libpng decodes from `png`, tight RGB rows; empty if libpng refuses it.
std::vector<std::uint8_t> ReadWithLibpng(const std::string& png, int& width, int& height) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, png.data(), png.size()))
        return {};
    image.format = PNG_FORMAT_RGB;
    std::vector<std::uint8_t> rgb(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, rgb.data(), 0, nullptr))
        return {};
    width = static_cast<int>(image.width);
    height = static_cast<int>(image.height);
    return rgb;
}

}  // namespace

TEST(PngWriter, LibpngReadsBackEveryPixelInOneBlockOrMany) {
    // 1 by 1 fits one block; 200 by 120 (72120 bytes of rows) needs two; the stride has padding.
    for (const auto [width, height, stride] : {std::array{1, 1, 3}, std::array{200, 120, 604}}) {
        const std::vector<std::uint8_t> rgb = Pattern(width, height, stride);
        const std::string png = EncodeStoredPng(rgb.data(), width, height, stride);
        int w = 0;
        int h = 0;
        const std::vector<std::uint8_t> back = ReadWithLibpng(png, w, h);
        ASSERT_EQ(w, width);
        ASSERT_EQ(h, height);
        for (int y = 0; y < height; ++y) {
            const auto* row = rgb.data() + static_cast<std::size_t>(y) * stride;
            ASSERT_TRUE(std::equal(row, row + width * 3, back.data() + y * width * 3)) << y;
        }
    }
}

TEST(PngWriter, RefusesAPictureWithoutPixels) {
    const std::uint8_t pixel[3] = {};
    EXPECT_TRUE(EncodeStoredPng(pixel, 0, 1, 3).empty());
    EXPECT_TRUE(EncodeStoredPng(pixel, 1, 0, 3).empty());
    EXPECT_TRUE(EncodeStoredPng(nullptr, 1, 1, 3).empty());
}
