#include "views/area_reduction.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#if (defined(__GNUC__) || defined(__clang__)) && (defined(__x86_64__) || defined(_M_X64))
#define TABROW_X86_KERNELS 1
#include <immintrin.h>
#endif

namespace {

double Fraction(double value) {
    return value - std::trunc(value);
}

// Adds one source row to the accumulators of a target row: `lanes` doubles per target column,
// bytesPerPixel sums and the weight sum last.
void AccumulateRowPlain(const std::uint8_t* row, const AreaAxis& columns, double rowWeight,
                        unsigned bytesPerPixel, double* acc) {
    const unsigned lanes = bytesPerPixel + 1;
    for (const AreaSpan& span : columns.spans) {
        const double* weights = columns.weights.data() + span.weightOffset;
        const std::uint8_t* p = row + static_cast<std::size_t>(span.first) * bytesPerPixel;
        for (unsigned j = 0; j < span.count; ++j, p += bytesPerPixel) {
            for (unsigned c = 0; c < bytesPerPixel; ++c)
                acc[c] += p[c] * weights[j] * rowWeight;
            acc[bytesPerPixel] += weights[j] * rowWeight;
        }
        acc += lanes;
    }
}

#ifdef TABROW_X86_KERNELS

// Three samples and the weight sum in one pair of two-lane registers: every lane does exactly
// the plain loop's multiply, multiply, add. A pixel is loaded as four bytes, so the caller
// makes sure one byte beyond the row's last pixel can be read.
void AccumulateRgbSpansSse2(const std::uint8_t* row, const AreaSpan* spans, std::size_t count,
                            const double* allWeights, double rowWeight, double* acc) {
    const __m128d weightOfRow = _mm_set1_pd(rowWeight);
    const __m128d one = _mm_set1_pd(1.0);
    const __m128i zero = _mm_setzero_si128();
    for (std::size_t t = 0; t < count; ++t) {
        const AreaSpan& span = spans[t];
        const double* weights = allWeights + span.weightOffset;
        const std::uint8_t* p = row + static_cast<std::size_t>(span.first) * 3;
        __m128d rg = _mm_loadu_pd(acc);
        __m128d bw = _mm_loadu_pd(acc + 2);
        for (unsigned j = 0; j < span.count; ++j, p += 3) {
            std::int32_t bytes;
            std::memcpy(&bytes, p, 4);
            __m128i wide = _mm_unpacklo_epi8(_mm_cvtsi32_si128(bytes), zero);
            wide = _mm_unpacklo_epi16(wide, zero);
            const __m128d sRg = _mm_cvtepi32_pd(wide);
            const __m128d sB1 =
                _mm_unpacklo_pd(_mm_cvtepi32_pd(_mm_shuffle_epi32(wide, 0xEE)), one);
            const __m128d w = _mm_set1_pd(weights[j]);
            rg = _mm_add_pd(rg, _mm_mul_pd(_mm_mul_pd(sRg, w), weightOfRow));
            bw = _mm_add_pd(bw, _mm_mul_pd(_mm_mul_pd(sB1, w), weightOfRow));
        }
        _mm_storeu_pd(acc, rg);
        _mm_storeu_pd(acc + 2, bw);
        acc += 4;
    }
}

void AccumulateRgbSse2(const std::uint8_t* row, const AreaAxis& columns, double rowWeight,
                       double* acc) {
    AccumulateRgbSpansSse2(row, columns.spans.data(), columns.spans.size(), columns.weights.data(),
                           rowWeight, acc);
}

// A pixel's three samples and 1.0 for the weight lane.
__attribute__((target("avx2"), always_inline)) inline __m256d SampleAvx2(const std::uint8_t* p) {
    std::int32_t bytes;
    std::memcpy(&bytes, p, 4);
    const __m256d s = _mm256_cvtepi32_pd(_mm_cvtepu8_epi32(_mm_cvtsi32_si128(bytes)));
    return _mm256_blend_pd(s, _mm256_set1_pd(1.0), 8);
}

// The same with all four lanes in one register, and no fused multiply-add, which would round
// once where the plain loop rounds twice. A column between a span's first and last has the
// weight 1 and a row inside a footprint may have it too: multiplying by 1 changes nothing, so
// those multiplications are left out. Four spans go side by side, as their sums are
// independent and the additions can overlap.
template <bool kRowWeightIsOne>
__attribute__((target("avx2"), always_inline)) inline __m256d AddSample(__m256d sum, __m256d sample,
                                                                        __m256d rowWeight) {
    return _mm256_add_pd(sum, kRowWeightIsOne ? sample : _mm256_mul_pd(sample, rowWeight));
}

// A span's first or last column, with its own weight.
template <bool kRowWeightIsOne>
__attribute__((target("avx2"), always_inline)) inline __m256d AddEdge(__m256d sum,
                                                                      const std::uint8_t* p,
                                                                      double weight,
                                                                      __m256d rowWeight) {
    return AddSample<kRowWeightIsOne>(sum, _mm256_mul_pd(SampleAvx2(p), _mm256_set1_pd(weight)),
                                      rowWeight);
}

template <bool kRowWeightIsOne>
__attribute__((target("avx2"))) void AccumulateRgbAvx2Rows(const std::uint8_t* row,
                                                           const AreaAxis& columns,
                                                           double rowWeight, double* acc) {
    constexpr std::size_t kSide = 4;
    const __m256d weightOfRow = _mm256_set1_pd(rowWeight);
    const AreaSpan* spans = columns.spans.data();
    const std::size_t count = columns.spans.size();
    std::size_t t = 0;
    for (; t + kSide <= count; t += kSide) {
        __m256d sums[kSide];
        const std::uint8_t* pixels[kSide];
        const double* weights[kSide];
        unsigned common = spans[t].count;
        for (std::size_t k = 0; k < kSide; ++k) {
            const AreaSpan& span = spans[t + k];
            sums[k] = _mm256_loadu_pd(acc + 4 * (t + k));
            pixels[k] = row + static_cast<std::size_t>(span.first) * 3;
            weights[k] = columns.weights.data() + span.weightOffset;
            common = std::min(common, span.count);
            sums[k] = AddEdge<kRowWeightIsOne>(sums[k], pixels[k], weights[k][0], weightOfRow);
        }
        unsigned j = 1;
        for (; j + 1 < common; ++j) {
            for (std::size_t k = 0; k < kSide; ++k)
                sums[k] =
                    AddSample<kRowWeightIsOne>(sums[k], SampleAvx2(pixels[k] + 3 * j), weightOfRow);
        }
        for (std::size_t k = 0; k < kSide; ++k) {
            const unsigned n = spans[t + k].count;
            for (unsigned i = j; i < n; ++i) {
                sums[k] = i + 1 == n ? AddEdge<kRowWeightIsOne>(sums[k], pixels[k] + 3 * i,
                                                                weights[k][i], weightOfRow)
                                     : AddSample<kRowWeightIsOne>(
                                           sums[k], SampleAvx2(pixels[k] + 3 * i), weightOfRow);
            }
            _mm256_storeu_pd(acc + 4 * (t + k), sums[k]);
        }
    }
    if (t < count)
        AccumulateRgbSpansSse2(row, spans + t, count - t, columns.weights.data(), rowWeight,
                               acc + 4 * t);
}

void AccumulateRgbAvx2(const std::uint8_t* row, const AreaAxis& columns, double rowWeight,
                       double* acc) {
    if (rowWeight == 1.0)
        AccumulateRgbAvx2Rows<true>(row, columns, rowWeight, acc);
    else
        AccumulateRgbAvx2Rows<false>(row, columns, rowWeight, acc);
}

bool HasAvx2() {
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
}

#endif

using RgbKernel = void (*)(const std::uint8_t*, const AreaAxis&, double, double*);

RgbKernel ChooseRgbKernel(AreaKernel kernel) {
#ifdef TABROW_X86_KERNELS
    switch (kernel) {
        case AreaKernel::kBest:
            return HasAvx2() ? AccumulateRgbAvx2 : AccumulateRgbSse2;
        case AreaKernel::kSse2:
            return AccumulateRgbSse2;
        case AreaKernel::kAvx2:
            return HasAvx2() ? AccumulateRgbAvx2 : nullptr;
        case AreaKernel::kPlain:
            break;
    }
#else
    (void)kernel;
#endif
    return nullptr;
}

}  // namespace

AreaAxis BuildAreaAxis(unsigned source, unsigned target) {
    AreaAxis axis;
    axis.spans.resize(target);
    const double scale = static_cast<double>(source) / static_cast<double>(target);
    for (unsigned i = 0; i < target; ++i) {
        const double start = i * scale;
        const double end = (i + 1) * scale;
        const unsigned first = static_cast<unsigned>(std::trunc(start));
        const double past = std::trunc(end + 0.99999999999);
        const unsigned last = static_cast<unsigned>(std::min<double>(past, source)) - 1;
        AreaSpan& span = axis.spans[i];
        span.first = first;
        span.count = last - first + 1;
        span.weightOffset = axis.weights.size();
        // The last index takes the fraction of the end even when that fraction is only the
        // rounding residue of (i + 1) * scale, such as 3.6e-15 at 29.000000000000004: the whole
        // last source index then counts for next to nothing. The reduction has always weighed
        // it so, and thumbnails are compared against what it made.
        const double endFraction = Fraction(end);
        for (unsigned k = first; k <= last; ++k) {
            double weight = 1.0;
            if (k == first)
                weight = 1.0 - Fraction(start);
            else if (k == last && endFraction != 0.0)
                weight = endFraction;
            axis.weights.push_back(weight);
        }
    }
    return axis;
}

bool IsAreaKernelAvailable(AreaKernel kernel) {
    return kernel == AreaKernel::kBest || kernel == AreaKernel::kPlain ||
           ChooseRgbKernel(kernel) != nullptr;
}

void ReduceByArea(const ImageView& source, const ImageTarget& target, unsigned bytesPerPixel,
                  AreaKernel kernel) {
    const AreaAxis columns = BuildAreaAxis(source.width, target.width);
    const AreaAxis rows = BuildAreaAxis(source.height, target.height);
    const unsigned lanes = bytesPerPixel + 1;
    std::vector<double> acc(static_cast<std::size_t>(target.width) * lanes);
    const RgbKernel fast = bytesPerPixel == 3 ? ChooseRgbKernel(kernel) : nullptr;
    // The fast kernels read one byte past a pixel; the buffer's very last row gets a copy with
    // room for it.
    std::vector<std::uint8_t> lastRow;
    if (fast != nullptr) {
        lastRow.assign(static_cast<std::size_t>(source.width) * 3 + 1, 0);
        std::memcpy(lastRow.data(), source.pixels + (source.height - 1) * source.stride,
                    static_cast<std::size_t>(source.width) * 3);
    }
    for (unsigned ty = 0; ty < target.height; ++ty) {
        std::fill(acc.begin(), acc.end(), 0.0);
        const AreaSpan& span = rows.spans[ty];
        for (unsigned k = 0; k < span.count; ++k) {
            const unsigned y = span.first + k;
            const double rowWeight = rows.weights[span.weightOffset + k];
            const std::uint8_t* row = source.pixels + y * source.stride;
            if (fast == nullptr)
                AccumulateRowPlain(row, columns, rowWeight, bytesPerPixel, acc.data());
            else
                fast(y + 1 == source.height ? lastRow.data() : row, columns, rowWeight, acc.data());
        }
        std::uint8_t* out = target.pixels + ty * target.stride;
        const double* sums = acc.data();
        for (unsigned tx = 0; tx < target.width; ++tx, sums += lanes) {
            for (unsigned c = 0; c < bytesPerPixel; ++c)
                *out++ = static_cast<std::uint8_t>(static_cast<int>(sums[c] / sums[bytesPerPixel]));
        }
    }
}

void ReduceByWholeBlocks(const ImageView& source, const ImageTarget& target,
                         unsigned bytesPerPixel) {
    const std::size_t rowBytes = static_cast<std::size_t>(target.width) * bytesPerPixel;
    if (source.width == target.width && source.height == target.height) {
        for (unsigned y = 0; y < target.height; ++y)
            std::memcpy(target.pixels + y * target.stride, source.pixels + y * source.stride,
                        rowBytes);
        return;
    }
    const unsigned ratioX = source.width / target.width;
    const unsigned ratioY = source.height / target.height;
    const unsigned n = std::min(ratioX, ratioY);
    const std::uint32_t divisor = n * n;
    std::vector<std::uint32_t> sums(rowBytes);
    for (unsigned ty = 0; ty < target.height; ++ty) {
        std::fill(sums.begin(), sums.end(), 0u);
        for (unsigned k = 0; k < n; ++k) {
            const std::uint8_t* row = source.pixels + (ty * ratioY + k) * source.stride;
            std::uint32_t* sum = sums.data();
            for (unsigned tx = 0; tx < target.width; ++tx, sum += bytesPerPixel) {
                const std::uint8_t* p = row + static_cast<std::size_t>(tx) * ratioX * bytesPerPixel;
                for (unsigned j = 0; j < n; ++j, p += bytesPerPixel)
                    for (unsigned c = 0; c < bytesPerPixel; ++c)
                        sum[c] += p[c];
            }
        }
        std::uint8_t* out = target.pixels + ty * target.stride;
        for (std::size_t i = 0; i < rowBytes; ++i)
            out[i] = static_cast<std::uint8_t>(sums[i] / divisor);
    }
}

const char* AreaReductionKernel() {
#ifdef TABROW_X86_KERNELS
    return HasAvx2() ? "avx2" : "sse2";
#else
    return "plain";
#endif
}
