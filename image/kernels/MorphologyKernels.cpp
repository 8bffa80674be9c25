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

// Bytes first up to, excluding, end, each with its right neighbour, which lies Step further on; first is a
// pixel's first byte. run holds one value a channel.
template <class Best, std::size_t Step>
void scanBytes(const Rows& r, std::size_t first, std::size_t end, std::uint8_t* run)
{
    for (std::size_t i = first; i < end; i += Step)
        for (std::size_t channel = 0; channel < Step; ++channel) {
            const std::size_t right = i + channel + Step;
            run[channel] = Best::of(run[channel], Best::of(r.own[right], r.below[right]));
            r.own[i + channel] = Best::of(run[channel], r.above[right]);
        }
}

template <class Best, std::size_t Step>
void startRun(const Rows& r, std::uint8_t* run)
{
    for (std::size_t channel = 0; channel < Step; ++channel)
        run[channel] = Best::of(r.own[channel], r.below[channel]);
}

// The last pixel has no right neighbour.
template <class Best, std::size_t Step>
void endRow(const Rows& r, std::size_t bytes, const std::uint8_t* run)
{
    for (std::size_t channel = 0; channel < Step; ++channel) {
        const std::size_t i = bytes - Step + channel;
        r.own[i] = Best::of(run[channel], r.above[i]);
    }
}

#if ORMALUX_PLAIN

template <class Best>
void scanGray(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride)
{
    for (std::size_t y = 0; y < height; ++y) {
        const Rows r = rowsAt(pixels, y, height, stride);
        std::uint8_t run;
        startRun<Best, 1>(r, &run);
        scanBytes<Best, 1>(r, 0, width - 1, &run);
        endRow<Best, 1>(r, width, &run);
    }
}

template <class Best, std::size_t Step>
void scanInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride)
{
    for (std::size_t y = 0; y < height; ++y) {
        const Rows r = rowsAt(pixels, y, height, stride);
        std::uint8_t run[Step];
        startRun<Best, Step>(r, run);
        scanBytes<Best, Step>(r, 0, (width - 1) * Step, run);
        endRow<Best, Step>(r, width * Step, run);
    }
}

#else

const hn::ScalableTag<std::uint8_t> d8;
using V8 = hn::VFromD<decltype(d8)>;

// The running best of a whole vector, which starts from every lane of `run`: within blocks of 16 bytes in
// four steps, then from block to block. Leaves the last lane's in all lanes of `run`.
template <class Best>
HWY_NOINLINE V8 runOf(V8 values, V8& run)
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
    run = hn::Set(d8, lanes[hn::Lanes(d8) - 1]);
    return hn::Load(d8, lanes);
}

// What a vector becomes. Where no value beats both the run and the scanned row above, the run need not
// advance: the row above, which never rises, hides these values in the rest of the row too. That is the rule
// after a few rows.
template <class Best>
HWY_INLINE V8 scanned(V8 values, V8 above, bool aboveIsScanned, V8& run)
{
    const V8 kept = Best::of(run, above);
    if (HWY_LIKELY(aboveIsScanned && hn::AllTrue(d8, Best::of(values, kept) == kept)))
        return kept;
    return Best::of(runOf<Best>(values, run), above);
}

template <class Best>
HWY_INLINE void scanRow(const Rows& r, std::size_t width)
{
    const std::size_t lanes = hn::Lanes(d8), last = width - 1;
    std::uint8_t start;
    startRun<Best, 1>(r, &start);
    if (last < lanes) {
        scanBytes<Best, 1>(r, 0, last, &start);
        endRow<Best, 1>(r, width, &start);
        return;
    }
    V8 run = hn::Set(d8, start);
    const auto valuesAt = [&](std::size_t x) {
        return Best::of(hn::LoadU(d8, r.own + x), hn::LoadU(d8, r.below + x));
    };
    std::size_t x = 0;
    for (; x + lanes <= last; x += lanes)
        hn::StoreU(scanned<Best>(valuesAt(x + 1), hn::LoadU(d8, r.above + x + 1), r.above != r.own, run), d8,
                   r.own + x);
    if (x < last) {
        // The rest, as the end of a vector whose first lanes are done and stay.
        const std::size_t begin = last - lanes;
        const auto done = hn::FirstN(d8, x - begin);
        const V8 values = hn::IfThenElse(done, run, valuesAt(begin + 1));
        const V8 best = scanned<Best>(values, hn::LoadU(d8, r.above + begin + 1), r.above != r.own, run);
        hn::StoreU(hn::IfThenElse(done, hn::LoadU(d8, r.own + begin), best), d8, r.own + begin);
    }
    start = hn::GetLane(run);
    endRow<Best, 1>(r, width, &start);
}

template <class Best>
void scanGray(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride)
{
    for (std::size_t y = 0; y < height; ++y)
        scanRow<Best>(rowsAt(pixels, y, height, stride), width);
}

// Stretches of `Step` vectors, in which every channel keeps its lanes; returns where the row's rest begins.
template <class Best, std::size_t Step, class D>
HWY_INLINE std::size_t scanStretches(D d, const Rows& r, std::size_t first, std::size_t end,
                                     std::uint8_t* run)
{
    const std::size_t lanes = hn::Lanes(d), stretch = lanes * Step;
    alignas(64) std::uint8_t pattern[Step * HWY_MAX_BYTES];
    const auto spread = [&] {
        for (std::size_t i = 0; i < stretch; i += Step)
            for (std::size_t channel = 0; channel < Step; ++channel)
                pattern[i + channel] = run[channel];
    };
    spread();
    std::size_t i = first;
    for (; i + stretch <= end; i += stretch) {
        const auto keptAt = [&](std::size_t k) {
            return Best::of(hn::Load(d, pattern + k), hn::LoadU(d, r.above + i + Step + k));
        };
        auto beaten = hn::Zero(d);
        for (std::size_t k = 0; k < stretch; k += lanes) {
            const auto own = hn::LoadU(d, r.own + i + Step + k), below = hn::LoadU(d, r.below + i + Step + k);
            const auto kept = keptAt(k);
            beaten = hn::Or(beaten, hn::Xor(Best::of(Best::of(own, below), kept), kept));
        }
        if (HWY_LIKELY(r.above != r.own && hn::AllTrue(d, beaten == hn::Zero(d)))) {
            for (std::size_t k = 0; k < stretch; k += lanes)
                hn::StoreU(keptAt(k), d, r.own + i + k);
        } else {
            scanBytes<Best, Step>(r, i, i + stretch, run);
            spread();
        }
    }
    return i;
}

template <class Best, std::size_t Step>
void scanInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride)
{
    for (std::size_t y = 0; y < height; ++y) {
        const Rows r = rowsAt(pixels, y, height, stride);
        const std::size_t last = (width - 1) * Step;
        std::uint8_t run[Step];
        startRun<Best, Step>(r, run);
        std::size_t i = scanStretches<Best, Step>(d8, r, 0, last, run);
        i = scanStretches<Best, Step>(hn::CappedTag<std::uint8_t, 16>(), r, i, last, run);
        scanBytes<Best, Step>(r, i, last, run);
        endRow<Best, Step>(r, last + Step, run);
    }
}

#endif

template <class Best>
void scanChannels(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride,
                  std::size_t bytesPerPixel)
{
    if (bytesPerPixel == 2)
        scanInterleaved<Best, 2>(pixels, width, height, stride);
    else if (bytesPerPixel == 3)
        scanInterleaved<Best, 3>(pixels, width, height, stride);
    else if (bytesPerPixel == 4)
        scanInterleaved<Best, 4>(pixels, width, height, stride);
}

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
    scanChannels<Least>(pixels, width, height, stride, bytesPerPixel);
}

void dilateInterleaved(std::uint8_t* pixels, std::size_t width, std::size_t height, std::ptrdiff_t stride,
                       std::size_t bytesPerPixel)
{
    scanChannels<Greatest>(pixels, width, height, stride, bytesPerPixel);
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
