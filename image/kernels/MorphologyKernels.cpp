#include "image/kernels/MorphologyKernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/MorphologyKernels.cpp"
#include "platform/Simd.h"

// Erosion; dilation is its mirror image. A pixel sees its eroded left neighbour, which has seen its own: the
// row is a running minimum. So an eroded row never rises from left to right, of the three eroded neighbours
// above the right one is the least, and
//
//     eroded[x] = min(run[x + 1], above[x + 1]) with run[x] = min(run[x - 1], own[x], below[x])
//
// where x + 1 stops at the last column. The first row takes itself for the eroded row above, the last one for
// the row below, which changes nothing.

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

struct Least
{
    static std::uint8_t of(std::uint8_t a, std::uint8_t b) { return a < b ? a : b; }
    template <class V>
    static HWY_INLINE V of(V a, V b)
    {
        return hn::Min(a, b);
    }
    /// Shifted vectors are filled with 0: turned over, the least value is the greatest.
    template <class V>
    static HWY_INLINE V turned(V v)
    {
        return hn::Not(v);
    }
};

struct Greatest
{
    static std::uint8_t of(std::uint8_t a, std::uint8_t b) { return a > b ? a : b; }
    template <class V>
    static HWY_INLINE V of(V a, V b)
    {
        return hn::Max(a, b);
    }
    template <class V>
    static HWY_INLINE V turned(V v)
    {
        return v;
    }
};

struct Rows
{
    const std::uint8_t* above; // already scanned
    std::uint8_t* own;
    const std::uint8_t* below;
};

inline Rows rowsAt(std::uint8_t* pixels, std::size_t y, std::size_t height, std::ptrdiff_t stride)
{
    std::uint8_t* own = pixels + std::ptrdiff_t(y) * stride;
    return {y > 0 ? own - stride : own, own, y + 1 < height ? own + stride : own};
}

// Bytes first up to, excluding, end, each with the one `step` further on; run holds one value a channel.
template <class Best>
void scanBytes(const Rows& r, std::size_t first, std::size_t end, std::size_t step, std::uint8_t* run)
{
    for (std::size_t i = first; i < end; ++i) {
        std::uint8_t& best = run[i % step];
        best = Best::of(best, Best::of(r.own[i + step], r.below[i + step]));
        r.own[i] = Best::of(best, r.above[i + step]);
    }
}

template <class Best>
void startRun(const Rows& r, std::size_t step, std::uint8_t* run)
{
    for (std::size_t channel = 0; channel < step; ++channel)
        run[channel] = Best::of(r.own[channel], r.below[channel]);
}

// The last pixel has no right neighbour.
template <class Best>
void endRow(const Rows& r, std::size_t bytes, std::size_t step, const std::uint8_t* run)
{
    for (std::size_t channel = 0; channel < step; ++channel)
        r.own[bytes - step + channel] = Best::of(run[channel], r.above[bytes - step + channel]);
}

#if ORMALUX_PLAIN

template <class Best>
void scanGray(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride)
{
    for (std::size_t y = 0; y < height; ++y) {
        const Rows r = rowsAt(pixels, y, height, stride);
        std::uint8_t run;
        startRun<Best>(r, 1, &run);
        scanBytes<Best>(r, 0, width - 1, 1, &run);
        endRow<Best>(r, width, 1, &run);
    }
}

template <class Best>
void scanInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride,
                     std::size_t step)
{
    for (std::size_t y = 0; y < height; ++y) {
        const Rows r = rowsAt(pixels, y, height, stride);
        std::uint8_t run[4];
        startRun<Best>(r, step, run);
        scanBytes<Best>(r, 0, (width - 1) * step, step, run);
        endRow<Best>(r, width * step, step, run);
    }
}

#else

const hn::ScalableTag<std::uint8_t> d8;
using V8 = hn::VFromD<decltype(d8)>;

// The running best of a whole vector, which starts from every lane of `run`: within blocks of 16 bytes in
// four steps, then from block to block.
template <class Best>
HWY_NOINLINE V8 runOf(V8 values, V8 run)
{
    const hn::CappedTag<std::uint8_t, 16> d16;
    alignas(64) std::uint8_t lanes[HWY_MAX_BYTES];
    V8 v = Best::turned(Best::of(values, run));
    v = hn::Max(v, hn::ShiftLeftBytes<1>(v));
    v = hn::Max(v, hn::ShiftLeftBytes<2>(v));
    v = hn::Max(v, hn::ShiftLeftBytes<4>(v));
    v = hn::Max(v, hn::ShiftLeftBytes<8>(v));
    hn::Store(Best::turned(v), d8, lanes);
    for (std::size_t i = 16; i < hn::Lanes(d8); i += 16)
        hn::Store(Best::of(hn::Load(d16, lanes + i), hn::Set(d16, lanes[i - 1])), d16, lanes + i);
    return hn::Load(d8, lanes);
}

// One row; the run rarely changes after the first pixels of a row, and then a vector needs no steps.
template <class Best>
HWY_INLINE void scanRow(const Rows& r, std::size_t width)
{
    const std::size_t lanes = hn::Lanes(d8), last = width - 1;
    std::uint8_t start;
    startRun<Best>(r, 1, &start);
    if (last < lanes) {
        scanBytes<Best>(r, 0, last, 1, &start);
        endRow<Best>(r, width, 1, &start);
        return;
    }
    V8 run = hn::Set(d8, start);
    const auto advance = [&](V8 values) {
        if (HWY_LIKELY(hn::AllTrue(d8, Best::of(values, run) == run)))
            return run;
        const V8 each = runOf<Best>(values, run);
        alignas(64) std::uint8_t bytes[HWY_MAX_BYTES];
        hn::Store(each, d8, bytes);
        run = hn::Set(d8, bytes[lanes - 1]);
        return each;
    };
    std::size_t x = 0;
    for (; x + lanes <= last; x += lanes) {
        const V8 values = Best::of(hn::LoadU(d8, r.own + x + 1), hn::LoadU(d8, r.below + x + 1));
        hn::StoreU(Best::of(advance(values), hn::LoadU(d8, r.above + x + 1)), d8, r.own + x);
    }
    if (x < last) {
        // The rest, as the end of a vector whose first lanes are done and stay.
        const std::size_t begin = last - lanes;
        const auto done = hn::FirstN(d8, x - begin);
        const V8 values = Best::of(hn::LoadU(d8, r.own + begin + 1), hn::LoadU(d8, r.below + begin + 1));
        const V8 best =
            Best::of(advance(hn::IfThenElse(done, run, values)), hn::LoadU(d8, r.above + begin + 1));
        hn::StoreU(hn::IfThenElse(done, hn::LoadU(d8, r.own + begin), best), d8, r.own + begin);
    }
    start = hn::GetLane(run);
    endRow<Best>(r, width, 1, &start);
}

template <class Best>
void scanGray(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride)
{
    for (std::size_t y = 0; y < height; ++y)
        scanRow<Best>(rowsAt(pixels, y, height, stride), width);
}

// Stretches of `step` vectors, in which every channel keeps its lanes; returns where the row's rest begins.
template <class Best, class D>
HWY_INLINE std::size_t scanStretches(D d, const Rows& r, std::size_t first, std::size_t end, std::size_t step,
                                     std::uint8_t* run)
{
    const std::size_t lanes = hn::Lanes(d), stretch = lanes * step;
    alignas(64) std::uint8_t pattern[4 * HWY_MAX_BYTES];
    const auto fill = [&] {
        for (std::size_t i = 0; i < stretch; i += step)
            for (std::size_t channel = 0; channel < step; ++channel)
                pattern[i + channel] = run[channel];
    };
    fill();
    std::size_t i = first;
    for (; i + stretch <= end; i += stretch) {
        const auto valuesAt = [&](std::size_t k) {
            return Best::of(hn::LoadU(d, r.own + i + step + k), hn::LoadU(d, r.below + i + step + k));
        };
        auto changed = hn::Zero(d);
        for (std::size_t k = 0; k < stretch; k += lanes) {
            const auto kept = hn::Load(d, pattern + k);
            changed = hn::Or(changed, hn::Xor(Best::of(valuesAt(k), kept), kept));
        }
        if (HWY_LIKELY(hn::AllTrue(d, changed == hn::Zero(d)))) {
            for (std::size_t k = 0; k < stretch; k += lanes)
                hn::StoreU(Best::of(hn::Load(d, pattern + k), hn::LoadU(d, r.above + i + step + k)), d,
                           r.own + i + k);
        } else {
            scanBytes<Best>(r, i, i + stretch, step, run);
            fill();
        }
    }
    return i;
}

template <class Best>
void scanInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride,
                     std::size_t step)
{
    for (std::size_t y = 0; y < height; ++y) {
        const Rows r = rowsAt(pixels, y, height, stride);
        const std::size_t last = (width - 1) * step;
        std::uint8_t run[4];
        startRun<Best>(r, step, run);
        std::size_t i = scanStretches<Best>(d8, r, 0, last, step, run);
        i = scanStretches<Best>(hn::CappedTag<std::uint8_t, 16>(), r, i, last, step, run);
        // i counts whole pixels, so that channels keep their place in run.
        scanBytes<Best>(r, i, last, step, run);
        endRow<Best>(r, last + step, step, run);
    }
}

#endif

void erode(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride)
{
    scanGray<Least>(pixels, width, height, stride);
}

void dilate(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride)
{
    scanGray<Greatest>(pixels, width, height, stride);
}

void erodeInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride,
                      std::size_t bytesPerPixel)
{
    scanInterleaved<Least>(pixels, width, height, stride, bytesPerPixel);
}

void dilateInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride,
                       std::size_t bytesPerPixel)
{
    scanInterleaved<Greatest>(pixels, width, height, stride, bytesPerPixel);
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(erode);
ORMALUX_SIMD_TABLE(dilate);
ORMALUX_SIMD_TABLE(erodeInterleaved);
ORMALUX_SIMD_TABLE(dilateInterleaved);

void erode(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride)
{
    ORMALUX_SIMD_CALL(erode)(pixels, width, height, stride);
}

void dilate(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride)
{
    ORMALUX_SIMD_CALL(dilate)(pixels, width, height, stride);
}

void erodeInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride,
                      std::size_t bytesPerPixel)
{
    ORMALUX_SIMD_CALL(erodeInterleaved)(pixels, width, height, stride, bytesPerPixel);
}

void dilateInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride,
                       std::size_t bytesPerPixel)
{
    ORMALUX_SIMD_CALL(dilateInterleaved)(pixels, width, height, stride, bytesPerPixel);
}

} // namespace ormalux::kernels
#endif
