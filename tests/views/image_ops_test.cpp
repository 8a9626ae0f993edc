// The image operations against plain reference versions of their arithmetic, on random images
// of many sizes, and their boundaries and error reports.

#include "views/image_ops.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <optional>
#include <random>
#include <thread>
#include <vector>

#include "views/area_reduction.h"
#include "views/image_library.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes RandomImage(unsigned width, unsigned height, unsigned bpp, std::mt19937& random) {
    Bytes image(static_cast<std::size_t>(width) * height * bpp);
    for (auto& sample : image)
        sample = static_cast<std::uint8_t>(random() & 0xFF);
    return image;
}

// What one target column (or row) c of the area path covers, as the reduction is defined:
// source indices trunc(c * s) to trunc((c + 1) * s + 0.99999999999) - 1, the first weighing 1
// minus the fraction of c * s, the last the fraction of (c + 1) * s or 1 when that is exactly 0,
// any between them 1. A residue such as 3.6e-15 is a fraction like any other.
struct Footprint {
    unsigned first = 0;
    unsigned last = 0;
    double firstWeight = 1;
    double lastWeight = 1;

    double Weight(unsigned k) const {
        return k == first ? firstWeight : k == last ? lastWeight : 1.0;
    }
};

std::vector<Footprint> Footprints(unsigned source, unsigned target) {
    const double s = static_cast<double>(source) / target;
    std::vector<Footprint> out(target);
    for (unsigned c = 0; c < target; ++c) {
        const double from = c * s;
        const double to = (c + 1) * s;
        out[c].first = static_cast<unsigned>(std::trunc(from));
        out[c].last = static_cast<unsigned>(std::trunc(to + 0.99999999999)) - 1;
        out[c].firstWeight = 1.0 - (from - std::trunc(from));
        const double toFraction = to - std::trunc(to);
        out[c].lastWeight = toFraction == 0.0 ? 1.0 : toFraction;
    }
    return out;
}

// Area reduction as the formula reads: per target sample, over the footprint's rows and
// then its columns, sample times column weight times row weight.
Bytes ReferenceResize(const Bytes& source, unsigned sw, unsigned sh, unsigned bpp, unsigned tw,
                      unsigned th) {
    Bytes target(static_cast<std::size_t>(tw) * th * bpp);
    if (sw % tw == 0 && sh % th == 0) {
        const unsigned n = std::min(sw / tw, sh / th);
        for (unsigned ty = 0; ty < th; ++ty)
            for (unsigned tx = 0; tx < tw; ++tx)
                for (unsigned c = 0; c < bpp; ++c) {
                    std::uint32_t sum = 0;
                    for (unsigned y = 0; y < n; ++y)
                        for (unsigned x = 0; x < n; ++x)
                            sum +=
                                source[((ty * (sh / th) + y) * sw + tx * (sw / tw) + x) * bpp + c];
                    target[(ty * tw + tx) * bpp + c] = static_cast<std::uint8_t>(sum / (n * n));
                }
        return target;
    }
    const auto columns = Footprints(sw, tw);
    const auto rows = Footprints(sh, th);
    for (unsigned ty = 0; ty < th; ++ty)
        for (unsigned tx = 0; tx < tw; ++tx)
            for (unsigned c = 0; c < bpp; ++c) {
                double sum = 0;
                double weights = 0;
                for (unsigned y = rows[ty].first; y <= rows[ty].last; ++y)
                    for (unsigned x = columns[tx].first; x <= columns[tx].last; ++x) {
                        const double cw = columns[tx].Weight(x);
                        const double rw = rows[ty].Weight(y);
                        sum += source[(y * sw + x) * bpp + c] * cw * rw;
                        weights += cw * rw;
                    }
                target[(ty * tw + tx) * bpp + c] =
                    static_cast<std::uint8_t>(static_cast<int>(sum / weights));
            }
    return target;
}

Bytes ReferenceGamma(Bytes image, double gamma) {
    const double exponent = gamma == 0 ? 1.0 : 1.0 / gamma;
    for (auto& sample : image)
        sample =
            static_cast<std::uint8_t>(static_cast<int>(std::pow(sample / 256.0, exponent) * 256.0));
    return image;
}

Bytes ReferenceSharpen(const Bytes& source, unsigned w, unsigned h, unsigned bpp, int level) {
    const int k = std::clamp(level, 0, 100) * 5;
    Bytes target(source.size());
    auto at = [&](int x, int y, unsigned c) {
        x = std::clamp(x, 0, static_cast<int>(w) - 1);
        y = std::clamp(y, 0, static_cast<int>(h) - 1);
        return static_cast<int>(
            source[(static_cast<unsigned>(y) * w + static_cast<unsigned>(x)) * bpp + c]);
    };
    for (int y = 0; y < static_cast<int>(h); ++y)
        for (int x = 0; x < static_cast<int>(w); ++x)
            for (unsigned c = 0; c < bpp; ++c) {
                int sum = 0;
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dx = -1; dx <= 1; ++dx)
                        sum += at(x + dx, y + dy, c);
                const int p = at(x, y, c);
                const int d = (sum - 9 * p) * k;
                // Floor division by 1024, written without a shift.
                const int shifted = d >= 0 ? d / 1024 : -((-d + 1023) / 1024);
                target[(static_cast<unsigned>(y) * w + static_cast<unsigned>(x)) * bpp + c] =
                    static_cast<std::uint8_t>(std::clamp(p - shifted, 0, 255));
            }
    return target;
}

int Resize(const Bytes& source, unsigned sw, unsigned sh, unsigned bpp, Bytes& target, unsigned tw,
           unsigned th) {
    ResizeRequest r;
    r.source = source.data();
    r.sourceWidth = sw;
    r.sourceHeight = sh;
    r.sourceStride = sw * bpp;
    r.target = target.data();
    r.targetWidth = tw;
    r.targetHeight = th;
    r.targetStride = tw * bpp;
    r.bytesPerPixel = bpp;
    return IS40_ResizeImage(r);
}

// Resizes a random image and compares with the reference; `kernel` empty goes through the
// library's entry point.
void ExpectReferenceResize(const std::array<unsigned, 4>& s, unsigned bpp, std::mt19937& random,
                           std::optional<AreaKernel> kernel = std::nullopt) {
    const Bytes source = RandomImage(s[0], s[1], bpp, random);
    Bytes target(static_cast<std::size_t>(s[2]) * s[3] * bpp);
    if (kernel)
        ReduceByArea({source.data(), s[0], s[1], s[0] * bpp},
                     {target.data(), s[2], s[3], s[2] * bpp}, bpp, *kernel);
    else
        ASSERT_EQ(Resize(source, s[0], s[1], bpp, target, s[2], s[3]), 1);
    EXPECT_EQ(target, ReferenceResize(source, s[0], s[1], bpp, s[2], s[3]))
        << s[0] << "x" << s[1] << " to " << s[2] << "x" << s[3] << " bpp " << bpp << " kernel "
        << (kernel ? static_cast<int>(*kernel) : -1);
}

}  // namespace

TEST(AreaReduction, MatchesTheReferenceOnRandomImagesOfManySizes) {
    std::mt19937 random(7);
    const std::array<unsigned, 4> sizes[] = {
        {3840, 2160, 178, 100}, {1920, 1080, 178, 100}, {17, 13, 5, 4},  {100, 100, 33, 66},
        {7, 9, 7, 3},           {256, 102, 178, 71},    {5, 5, 2, 2},    {64, 48, 16, 12},
        {11, 1, 3, 1},          {1, 11, 1, 4},          {29, 36, 7, 28}, {25, 21, 11, 19}};
    for (const auto& s : sizes)
        for (unsigned bpp : {1u, 3u, 4u})
            if (bpp == 3 || s[0] * s[1] <= 1000000)
                ExpectReferenceResize(s, bpp, random);
    for (int trial = 0; trial < 60; ++trial) {
        const unsigned sw = 1 + random() % 90;
        const unsigned sh = 1 + random() % 90;
        const unsigned tw = 1 + random() % sw;
        const unsigned th = 1 + random() % sh;
        ExpectReferenceResize({sw, sh, tw, th}, 3, random);
    }
}

// The sums and the weight sum round independently, and the quotient is truncated: a constant
// image may come out one lower where the quotient falls a hair short. Never more, never higher.
TEST(AreaReduction, EveryKernelGivesTheReferenceBytes) {
    std::mt19937 random(13);
    const std::array<unsigned, 4> sizes[] = {
        {1920, 1080, 178, 100}, {23, 19, 7, 5}, {2, 2, 1, 1}, {9, 4, 2, 3}};
    // The plain loop and the best one are there on every processor.
    ASSERT_TRUE(IsAreaKernelAvailable(AreaKernel::kPlain));
    ASSERT_TRUE(IsAreaKernelAvailable(AreaKernel::kBest));
    for (AreaKernel kernel : {AreaKernel::kPlain, AreaKernel::kSse2, AreaKernel::kAvx2})
        if (IsAreaKernelAvailable(kernel))
            for (const auto& s : sizes)
                ExpectReferenceResize(s, 3, random, kernel);
}

// Where (c + 1) * s lands a rounding residue past a whole index (29 / 7 * 7 is
// 29.000000000000004), the span ends one index before it and that index, fully covered, weighs
// only the residue: a bright source column there hardly shows.
TEST(AreaReduction, AnEndJustPastAWholeIndexLeavesTheLastIndexTheResidueAsWeight) {
    struct Case {
        unsigned source, target, bright, lit;  // `lit`: the target index holding `bright`
    };
    const Case cases[] = {{29, 7, 28, 6}, {36, 28, 26, 20}, {21, 19, 20, 18}};
    for (const Case& c : cases)
        for (bool across : {true, false}) {
            Bytes line(c.source, 0);
            line[c.bright] = 255;
            Bytes target(c.target, 0xAB);
            const unsigned sw = across ? c.source : 1, sh = across ? 1 : c.source;
            ASSERT_EQ(Resize(line, sw, sh, 1, target, across ? c.target : 1, across ? 1 : c.target),
                      1);
            EXPECT_EQ(target[c.lit], 0) << c.source << " to " << c.target << " across " << across;
            EXPECT_EQ(target, ReferenceResize(line, sw, sh, 1, across ? c.target : 1,
                                              across ? 1 : c.target));
        }
}

TEST(AreaReduction, MovesAConstantImageByAtMostOneDownwards) {
    for (unsigned value : {0u, 1u, 77u, 128u, 254u, 255u}) {
        for (const auto& s : {std::array<unsigned, 4>{3840, 2160, 178, 100},
                              std::array<unsigned, 4>{97, 61, 13, 7}}) {
            const Bytes source(static_cast<std::size_t>(s[0]) * s[1] * 3,
                               static_cast<std::uint8_t>(value));
            Bytes target(static_cast<std::size_t>(s[2]) * s[3] * 3);
            ASSERT_EQ(Resize(source, s[0], s[1], 3, target, s[2], s[3]), 1);
            for (std::uint8_t sample : target) {
                ASSERT_LE(sample, value);
                ASSERT_GE(sample + 1u, value) << "value " << value << " at " << s[0];
            }
        }
    }
}

TEST(AreaReduction, WholeMultiplesAverageSquareBlocksAndEqualSizesCopy) {
    // 4x2 to 2x1: ratios 2 and 2, blocks of 2 by 2.
    const Bytes source = {10, 20, 30, 40, 50, 60, 70, 80};
    Bytes target(2);
    ASSERT_EQ(Resize(source, 4, 2, 1, target, 2, 1), 1);
    EXPECT_EQ(target, (Bytes{(10 + 20 + 50 + 60) / 4, (30 + 40 + 70 + 80) / 4}));

    // Ratios 3 and 1: the block is the smaller, 1 by 1, so only the first column counts.
    const Bytes wide = {9, 1, 1, 6, 1, 1};
    Bytes two(2);
    ASSERT_EQ(Resize(wide, 6, 1, 1, two, 2, 1), 1);
    EXPECT_EQ(two, (Bytes{9, 6}));

    Bytes same(source.size());
    ASSERT_EQ(Resize(source, 4, 2, 1, same, 4, 2), 1);
    EXPECT_EQ(same, source);
}

TEST(AreaReduction, RefusesToEnlargeAndLeavesTheTargetAlone) {
    const Bytes source(10 * 10 * 3, 9);
    Bytes target(11 * 10 * 3, 0xAB);
    EXPECT_EQ(Resize(source, 10, 10, 3, target, 11, 10), 0);
    EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument);
    EXPECT_EQ(target, Bytes(target.size(), 0xAB));
    ResizeRequest r;
    EXPECT_EQ(IS40_ResizeImage(r), 0);
}

TEST(Gamma, MatchesTheTableWithItsFactorOf256) {
    // 1.4: entry 128 is pow(0.5, 1/1.4) * 256 = 156.9..., truncated.
    ASSERT_EQ(ReferenceGamma({128}, 1.4), Bytes{156});
    std::mt19937 random(3);
    for (double gamma : {0.0, 1.0, 0.5, 1.4, 2.2, 7.0}) {
        Bytes image = RandomImage(31, 17, 3, random);
        for (int i = 0; i < 256; ++i)  // every value at least once
            image[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i);
        const Bytes expected = ReferenceGamma(image, gamma);
        ASSERT_EQ(IS40_AdjustGamma(image.data(), 31, 17, 3, 31 * 3, gamma, 0), 1);
        EXPECT_EQ(image, expected) << gamma;
    }
}

TEST(Sharpen, MatchesTheReferenceAndClampsItsLevel) {
    std::mt19937 random(11);
    const unsigned sizes[][2] = {{178, 100}, {2, 2}, {3, 7}, {40, 2}, {33, 21}};
    for (const auto& s : sizes) {
        const Bytes source = RandomImage(s[0], s[1], 3, random);
        for (int level : {-5, 0, 1, 20, 100, 250}) {
            Bytes target(source.size());
            ASSERT_EQ(IS40_SharpenImage(source.data(), s[0], s[1], 3, s[0] * 3, target.data(),
                                        s[0] * 3, level, 7),
                      1);
            EXPECT_EQ(target, ReferenceSharpen(source, s[0], s[1], 3, level))
                << s[0] << "x" << s[1] << " level " << level;
            if (level <= 0) {
                EXPECT_EQ(target, source);
            }
        }
    }
}

TEST(Sharpen, RefusesTheSameBufferAndWidePixels) {
    Bytes image(12, 1);
    EXPECT_EQ(IS40_SharpenImage(image.data(), 2, 2, 3, 6, image.data(), 6, 20, 7), 0);
    EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument);
    Bytes target(image.size());
    EXPECT_EQ(IS40_SharpenImage(image.data(), 1, 1, 9, 9, target.data(), 9, 20, 7), 0);
    const Bytes eight(16, 40);  // two pixels of eight samples are the widest taken
    Bytes sharpened(16);
    EXPECT_EQ(IS40_SharpenImage(eight.data(), 2, 1, 8, 16, sharpened.data(), 16, 20, 7), 1);
    EXPECT_EQ(sharpened, eight);
}

TEST(FillSolidRect, FillsOneColumnMoreThanTheRectangleAndClips) {
    Bytes image(20 * 20 * 3, 0);
    const win::RECT rect{0, 0, 10, 10};
    ASSERT_EQ(IS40_FillSolidRect(image.data(), 20, 20, 3, 60, &rect, 0x00332211, 0), 1);
    int filled = 0;
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x) {
            const std::uint8_t* p = &image[static_cast<std::size_t>(y * 20 + x) * 3];
            const bool inside = x <= 10 && y < 10;
            EXPECT_EQ(p[0], inside ? 0x11 : 0) << x << "," << y;
            EXPECT_EQ(p[2], inside ? 0x33 : 0);
            filled += inside;
        }
    EXPECT_EQ(filled, 11 * 10);

    const win::RECT beyond{15, 15, 40, 40};
    ASSERT_EQ(IS40_FillSolidRect(image.data(), 20, 20, 3, 60, &beyond, 0x808080, 0), 1);
    EXPECT_EQ(image[(19 * 20 + 19) * 3], 0x80);
    const win::RECT corner{0, 0, 1, 1};  // two of the samples alike is no grey
    ASSERT_EQ(IS40_FillSolidRect(image.data(), 20, 20, 3, 60, &corner, 0x00333311, 0), 1);
    EXPECT_EQ((Bytes{image[0], image[1], image[2]}), (Bytes{0x11, 0x33, 0x33}));
    const Bytes before = image;
    for (const win::RECT& nothing :
         {win::RECT{25, 0, 30, 5}, win::RECT{3, 2, 3, 12}, win::RECT{3, 2, 8, 2}}) {
        EXPECT_EQ(IS40_FillSolidRect(image.data(), 20, 20, 3, 60, &nothing, 0xFFFFFF, 0), 1);
        EXPECT_EQ(image, before) << nothing.left << "," << nothing.top;
    }
    const win::RECT whole{0, 0, 19, 20};
    ASSERT_EQ(IS40_FillSolidRect(image.data(), 20, 20, 3, 60, &whole, 0x070707, 0), 1);
    EXPECT_EQ(image, Bytes(image.size(), 7));
    EXPECT_EQ(IS40_FillSolidRect(image.data(), 20, 20, 2, 40, &whole, 0, 0), 0);
    EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument);

    // Fills that reach some of the image's edges but not all stay inside their rectangle, in
    // one byte or four a pixel.
    for (unsigned bpp : {1u, 4u})
        for (const win::RECT& part : {win::RECT{0, 0, 19, 10}, win::RECT{0, 10, 19, 20},
                                      win::RECT{0, 0, 9, 20}, win::RECT{10, 0, 19, 20}}) {
            Bytes small(20 * 20 * bpp, 0);
            ASSERT_EQ(IS40_FillSolidRect(small.data(), 20, 20, bpp, 20 * bpp, &part, 0x09090909, 0),
                      1);
            for (int y = 0; y < 20; ++y)
                for (int x = 0; x < 20; ++x) {
                    const bool inside =
                        x >= part.left && x <= part.right && y >= part.top && y < part.bottom;
                    ASSERT_EQ(small[static_cast<std::size_t>(y * 20 + x) * bpp], inside ? 9 : 0)
                        << bpp << ": " << x << "," << y << " of " << part.left << "," << part.top;
                }
        }
}

TEST(Rotate, TurnsAndComesBackAfterFourQuarterTurns) {
    // 3 wide, 2 high, one byte a pixel: a b c / d e f.
    Bytes image = {'a', 'b', 'c', 'd', 'e', 'f'};
    ASSERT_EQ(IS40_QuickRotateImageInPlace(image.data(), 3, 2, 0, 1, 0), 1);
    EXPECT_EQ(image, (Bytes{'d', 'a', 'e', 'b', 'f', 'c'}));  // clockwise: 2 wide, 3 high
    ASSERT_EQ(IS40_QuickRotateImageInPlace(image.data(), 2, 3, 2, 1, 0), 1);
    EXPECT_EQ(image, (Bytes{'a', 'b', 'c', 'd', 'e', 'f'}));
    ASSERT_EQ(IS40_QuickRotateImageInPlace(image.data(), 3, 2, 1, 1, 0), 1);
    EXPECT_EQ(image, (Bytes{'f', 'e', 'd', 'c', 'b', 'a'}));

    std::mt19937 random(5);
    const Bytes original = RandomImage(7, 5, 3, random);
    Bytes turned = original;
    for (int i = 0; i < 4; ++i)
        IS40_QuickRotateImageInPlace(turned.data(), i % 2 == 0 ? 7 : 5, i % 2 == 0 ? 5 : 7, 0, 3,
                                     0);
    EXPECT_EQ(turned, original);
}

TEST(RgbToDib, WritesABottomUpBgrDibWithPaddedRows) {
    const Bytes rgb = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};  // 1 wide, 4 high
    const DibBlock dib = IS40_RGBToDIB(rgb.data(), 1, 4, 3, 0);
    ASSERT_EQ(dib.size(), 40u + 4 * 4);
    EXPECT_EQ(DibWidth(dib), 1);
    EXPECT_EQ(DibHeight(dib), 4);
    EXPECT_EQ(dib[14], 24);
    EXPECT_EQ(dib[20], 16);  // biSizeImage
    EXPECT_EQ((Bytes{dib[40], dib[41], dib[42], dib[43]}), (Bytes{12, 11, 10, 0}));
    EXPECT_EQ((Bytes{dib[52], dib[53], dib[54]}), (Bytes{3, 2, 1}));
    // Eleven pixels are 33 bytes, padded to 36 a row; four are 12, with no padding.
    const Bytes eleven(11 * 2 * 3, 5);
    EXPECT_EQ(IS40_RGBToDIB(eleven.data(), 11, 2, 33, 0).size(), 40u + 2 * 36);
    EXPECT_EQ(IS40_RGBToDIB(eleven.data(), 4, 2, 12, 0).size(), 40u + 2 * 12);
    EXPECT_TRUE(IS40_RGBToDIB(rgb.data(), 60000, 60000, 180000, 0).empty());
    EXPECT_EQ(ImageLibrary().lastError, kImageOutOfMemory);
}

TEST(ErrorReport, BadArgumentsChangeNothingAndAreLoggedWithNameAndTimeFiftyPlusTheNewest) {
    ImageLibraryState& state = ImageLibrary();
    state.errorLog.clear();
    Bytes image = {1, 2, 3};
    EXPECT_EQ(IS40_AdjustGamma(image.data(), 1, 1, 3, 3, -0.5, 0), 0);
    EXPECT_EQ(image, (Bytes{1, 2, 3}));  // a refused call changes nothing
    ASSERT_EQ(state.errorLog.size(), 1u);
    const std::string& message = state.errorLog.back().message;
    EXPECT_EQ(message.rfind("Error 5 in IS40_AdjustGamma (", 0), 0u) << message;
    ASSERT_EQ(message.size(), std::string("Error 5 in IS40_AdjustGamma (12:34:56)").size());
    EXPECT_EQ(message[message.size() - 4], ':');
    EXPECT_EQ(state.errorLog.back().level, 3);
    IS40_AdjustGamma(image.data(), 1, 1, 1, 1, 1.0, 0);
    EXPECT_EQ(state.lastError, 0u);
    EXPECT_EQ(state.errorLog.size(), 1u);  // a success isn't logged

    for (int i = 0; i < 80; ++i)
        ReportImageError(5, nullptr, "detail");
    EXPECT_EQ(state.errorLog.size(), 51u);
    EXPECT_NE(state.errorLog.back().message.find("(unspecified function)"), std::string::npos);
    EXPECT_NE(state.errorLog.back().message.find("[detail]"), std::string::npos);

    // Suppressed: neither logged nor stored, so the last code stays.
    state.suppressDepth = 1;
    IS40_AdjustGamma(image.data(), 1, 1, 1, 1, 1.0, 0);
    EXPECT_EQ(state.lastError, 5u);
    EXPECT_EQ(state.errorLog.size(), 51u);
    state.suppressDepth = 0;
    EXPECT_EQ(state.nestingDepth, 0);
}

TEST(ErrorReport, EveryOperationRefusesMissingBuffersAndImpossibleShapesWithCode5) {
    Bytes image(12, 7);
    Bytes target(12);
    const win::RECT rect{0, 0, 1, 1};
    const std::function<int()> refused[] = {
        [&] { return IS40_AdjustGamma(nullptr, 2, 2, 3, 6, 1.0, 0); },
        [&] { return IS40_AdjustGamma(image.data(), 2, 2, 0, 6, 1.0, 0); },
        [&] { return IS40_QuickRotateImageInPlace(nullptr, 2, 2, 0, 3, 0); },
        [&] { return IS40_QuickRotateImageInPlace(image.data(), 2, 2, 3, 3, 0); },
        [&] { return IS40_QuickRotateImageInPlace(image.data(), 2, 2, 0, 0, 0); },
        [&] { return IS40_FillSolidRect(nullptr, 2, 2, 3, 6, &rect, 0, 0); },
        [&] { return IS40_FillSolidRect(image.data(), 2, 2, 3, 6, nullptr, 0, 0); },
        [&] { return IS40_SharpenImage(nullptr, 2, 2, 3, 6, target.data(), 6, 20, 7); },
        [&] { return IS40_SharpenImage(image.data(), 2, 2, 3, 6, nullptr, 6, 20, 7); },
        [&] { return IS40_SharpenImage(image.data(), 2, 2, 0, 6, target.data(), 6, 20, 7); },
        [&] { return IS40_RGBToDIB(nullptr, 2, 2, 6, 0).empty() ? 0 : 1; },
        [&] { return IS40_RGBToDIB(image.data(), 0, 2, 6, 0).empty() ? 0 : 1; },
        [&] { return IS40_RGBToDIB(image.data(), 2, 0, 6, 0).empty() ? 0 : 1; },
    };
    for (std::size_t i = 0; i < std::size(refused); ++i) {
        EXPECT_EQ(refused[i](), 0) << i;
        EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument) << i;
        EXPECT_EQ(image, Bytes(12, 7)) << i;
    }
}

TEST(ErrorReport, EachThreadHasItsOwnState) {
    Bytes image = {1};
    IS40_AdjustGamma(image.data(), 1, 1, 1, 1, -1.0, 0);
    std::uint32_t other = 99;
    std::thread([&other] { other = ImageLibrary().lastError; }).join();
    EXPECT_EQ(other, 0u);
    EXPECT_EQ(ImageLibrary().lastError, kImageBadArgument);
}
