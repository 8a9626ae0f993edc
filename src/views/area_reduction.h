#pragma once
// Reduction of a picture by area (the resize operation's mode 15), apart from its error report
// so that smooth text and thumbnails share one implementation.
//
// Each target sample is the sum, over the source rows of its footprint from the top and within
// each row over its columns from the left, of sample * columnWeight * rowWeight in doubles,
// divided by the sum of columnWeight * rowWeight taken in the same order, and truncated. The
// fast paths keep that order for every sample, so they give the same bytes as the plain loop.

#include <cstddef>
#include <cstdint>
#include <vector>

struct ImageView {
    const std::uint8_t* pixels = nullptr;
    unsigned width = 0;
    unsigned height = 0;
    std::size_t stride = 0;
};

struct ImageTarget {
    std::uint8_t* pixels = nullptr;
    unsigned width = 0;
    unsigned height = 0;
    std::size_t stride = 0;
};

// The source samples that one target column (or row) covers and their weights.
struct AreaSpan {
    unsigned first = 0;
    unsigned count = 0;
    std::size_t weightOffset = 0;  // into AreaAxis::weights
};

struct AreaAxis {
    std::vector<AreaSpan> spans;
    std::vector<double> weights;
};

// Target index i covers the source interval [i * scale, (i + 1) * scale), scale = source /
// target. The source indices are trunc(i * scale) to trunc((i + 1) * scale + 0.99999999999) - 1.
// The first gets 1 minus the fraction of its start, the last the fraction of the end (1 only
// when that fraction is exactly 0), those between 1. The last index is kept inside the source.
AreaAxis BuildAreaAxis(unsigned source, unsigned target);

// The loops that add up three-sample pixels; the best one the processor has is the default.
enum class AreaKernel { kBest, kPlain, kSse2, kAvx2 };
bool IsAreaKernelAvailable(AreaKernel kernel);

// Both need target sizes no larger than the source and at least 1; bytesPerPixel 1 to 8.
void ReduceByArea(const ImageView& source, const ImageTarget& target, unsigned bytesPerPixel,
                  AreaKernel kernel = AreaKernel::kBest);
void ReduceByWholeBlocks(const ImageView& source, const ImageTarget& target,
                         unsigned bytesPerPixel);

// Which kernel the area path uses for three-sample pixels: a name for benchmarks and tests.
const char* AreaReductionKernel();
