#include "measure/kernels/ProfileKernels.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/kernels/ProfileKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
using kernels::SplineWalk;

/// So many places are counted from the first of them, in 32 bits.
constexpr std::size_t pieceLength = 64;
constexpr int fractionBits = 24;
constexpr std::int32_t fractionMask = (1 << fractionBits) - 1;
constexpr float fractionUnit = 1.0f / (1 << fractionBits);

/// A piece of a walk, from the pixel above and to the left of its first place on.
struct SplinePiece
{
    SplinePiece(const std::uint8_t* pixels, std::ptrdiff_t stride, const SplineWalk& walk)
        : corner(pixels + ((walk.y >> SplineWalk::shift) - 1) * stride + (walk.x >> SplineWalk::shift) - 1),
          x(fraction(walk.x)), y(fraction(walk.y)), stepX(rounded(walk.stepX)), stepY(rounded(walk.stepY))
    {}
    static std::int32_t fraction(std::int64_t place)
    {
        return std::int32_t(std::uint32_t(place) >> (SplineWalk::shift - fractionBits));
    }
    static std::int32_t rounded(std::int64_t step)
    {
        constexpr int drop = SplineWalk::shift - fractionBits;
        return std::int32_t((step + (1 << (drop - 1))) >> drop);
    }

    const std::uint8_t* corner;
    std::int32_t x;
    std::int32_t y;
    std::int32_t stepX;
    std::int32_t stepY;
};

inline void advance(SplineWalk& walk, std::size_t count)
{
    walk.x += std::int64_t(count) * walk.stepX;
    walk.y += std::int64_t(count) * walk.stepY;
}

/// The weights of the cubic B-spline at the fraction u of a pixel.
struct SplineWeights
{
    explicit SplineWeights(float u)
    {
        const float square = u * u, cube = square * u, rest = 1.0f - u;
        weight[0] = rest * rest * rest * (1.0f / 6);
        weight[1] = cube * 0.5f - square + 2.0f / 3;
        weight[3] = cube * (1.0f / 6);
        weight[2] = 1.0f - weight[0] - weight[1] - weight[3];
    }
    float weight[4];
};

inline void samplePiecePlainly(const SplinePiece& piece, std::ptrdiff_t stride, std::size_t count,
                               float* samples)
{
    for (std::size_t i = 0; i < count; ++i) {
        const std::int32_t x = piece.x + std::int32_t(i) * piece.stepX;
        const std::int32_t y = piece.y + std::int32_t(i) * piece.stepY;
        const SplineWeights across(float(x & fractionMask) * fractionUnit);
        const SplineWeights down(float(y & fractionMask) * fractionUnit);
        const std::uint8_t* row = piece.corner + (y >> fractionBits) * stride + (x >> fractionBits);
        float sum = 0;
        for (int r = 0; r < 4; ++r, row += stride) {
            float line = float(row[0]) * across.weight[0];
            for (int c = 1; c < 4; ++c)
                line = line + float(row[c]) * across.weight[c];
            sum = r == 0 ? line * down.weight[r] : sum + line * down.weight[r];
        }
        samples[i] = sum;
    }
}

#if ORMALUX_PLAIN

void sampleSpline(const std::uint8_t* pixels, std::ptrdiff_t stride, const SplineWalk& start,
                  std::size_t count, float* samples)
{
    SplineWalk walk = start;
    for (std::size_t done = 0; done < count; done += pieceLength, advance(walk, pieceLength))
        samplePiecePlainly(SplinePiece(pixels, stride, walk), stride, std::min(count - done, pieceLength),
                           samples + done);
}

void smoothSteps(const float* steps, std::size_t count, const float* weights, int radius, float* smooth)
{
    for (std::size_t i = 0; i < count; ++i) {
        float sum = steps[i] * weights[0];
        for (int k = 1; k <= radius; ++k)
            sum = sum + (steps[std::ptrdiff_t(i) - k] + steps[i + std::size_t(k)]) * weights[k];
        smooth[i] = sum;
    }
}

#else

using Floats = hn::ScalableTag<float>;
using Wholes = hn::RebindToSigned<Floats>;

/// Four bytes from every offset.
inline hn::VFromD<Wholes> fourBytes(const std::uint8_t* pixels, hn::VFromD<Wholes> offsets)
{
    const Wholes d;
#if HWY_TARGET <= HWY_AVX2
    return hn::GatherOffset(d, reinterpret_cast<const std::int32_t*>(pixels), offsets);
#else
    alignas(16) std::int32_t at[hn::MaxLanes(d)], four[hn::MaxLanes(d)];
    hn::Store(offsets, d, at);
    for (std::size_t i = 0; i < hn::Lanes(d); ++i)
        std::memcpy(four + i, pixels + at[i], sizeof four[i]);
    return hn::Load(d, four);
#endif
}

/// SplineWeights of every lane. Products and sums stay apart, so that no set fuses them.
struct WideWeights
{
    explicit WideWeights(hn::VFromD<Floats> u)
    {
        const Floats d;
        const auto one = hn::Set(d, 1.0f), sixth = hn::Set(d, 1.0f / 6);
        const auto square = hn::Mul(u, u), cube = hn::Mul(square, u), rest = hn::Sub(one, u);
        first = hn::Mul(hn::Mul(hn::Mul(rest, rest), rest), sixth);
        second = hn::Add(hn::Sub(hn::Mul(cube, hn::Set(d, 0.5f)), square), hn::Set(d, 2.0f / 3));
        fourth = hn::Mul(cube, sixth);
        third = hn::Sub(hn::Sub(hn::Sub(one, first), second), fourth);
    }
    hn::VFromD<Floats> first, second, third, fourth;
};

inline hn::VFromD<Floats> wideLine(hn::VFromD<Wholes> bytes, const WideWeights& weights)
{
    const Floats d;
    const Wholes whole;
    const auto mask = hn::Set(whole, 255);
    const auto level = [&](auto v) { return hn::ConvertTo(d, hn::And(v, mask)); };
    auto sum = hn::Mul(level(bytes), weights.first);
    sum = hn::Add(sum, hn::Mul(level(hn::ShiftRight<8>(bytes)), weights.second));
    sum = hn::Add(sum, hn::Mul(level(hn::ShiftRight<16>(bytes)), weights.third));
    return hn::Add(sum, hn::Mul(level(hn::ShiftRight<24>(bytes)), weights.fourth));
}

/// The places first, first + 1, ...; those from count on are the last one once more.
inline hn::VFromD<Floats> widePlaces(const SplinePiece& piece, std::int32_t stride, std::int32_t first,
                                     std::int32_t count)
{
    const Floats d;
    const Wholes whole;
    const auto i = hn::Min(hn::Add(hn::Iota(whole, 0), hn::Set(whole, first)), hn::Set(whole, count - 1));
    const auto x = hn::Add(hn::Mul(i, hn::Set(whole, piece.stepX)), hn::Set(whole, piece.x));
    const auto y = hn::Add(hn::Mul(i, hn::Set(whole, piece.stepY)), hn::Set(whole, piece.y));
    const auto offsets = hn::Add(hn::Mul(hn::ShiftRight<fractionBits>(y), hn::Set(whole, stride)),
                                 hn::ShiftRight<fractionBits>(x));
    const auto fraction = [&](auto place) {
        return hn::Mul(hn::ConvertTo(d, hn::And(place, hn::Set(whole, fractionMask))),
                       hn::Set(d, fractionUnit));
    };
    const WideWeights across(fraction(x)), down(fraction(y));
    const std::uint8_t* row = piece.corner;
    auto sum = hn::Mul(wideLine(fourBytes(row, offsets), across), down.first);
    row += stride;
    sum = hn::Add(sum, hn::Mul(wideLine(fourBytes(row, offsets), across), down.second));
    row += stride;
    sum = hn::Add(sum, hn::Mul(wideLine(fourBytes(row, offsets), across), down.third));
    row += stride;
    return hn::Add(sum, hn::Mul(wideLine(fourBytes(row, offsets), across), down.fourth));
}

void sampleSpline(const std::uint8_t* pixels, std::ptrdiff_t stride, const SplineWalk& start,
                  std::size_t count, float* samples)
{
    const Floats d;
    const std::size_t lanes = hn::Lanes(d);
    const bool nearRows = stride > -(1 << 24) && stride < (1 << 24); // offsets fit 32 bits
    SplineWalk walk = start;
    for (std::size_t done = 0; done < count; done += pieceLength, advance(walk, pieceLength)) {
        const SplinePiece piece(pixels, stride, walk);
        const std::size_t length = std::min(count - done, pieceLength);
        if (!nearRows) {
            samplePiecePlainly(piece, stride, length, samples + done);
            continue;
        }
        std::size_t i = 0;
        for (; i + lanes <= length; i += lanes)
            hn::StoreU(widePlaces(piece, std::int32_t(stride), std::int32_t(i), std::int32_t(length)), d,
                       samples + done + i);
        if (i < length) {
            HWY_ALIGN float last[hn::MaxLanes(d)];
            hn::Store(widePlaces(piece, std::int32_t(stride), std::int32_t(i), std::int32_t(length)), d,
                      last);
            std::memcpy(samples + done + i, last, (length - i) * sizeof(float));
        }
    }
}

void smoothSteps(const float* steps, std::size_t count, const float* weights, int radius, float* smooth)
{
    const Floats d;
    for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
        auto sum = hn::Mul(hn::LoadU(d, steps + i), hn::Set(d, weights[0]));
        for (int k = 1; k <= radius; ++k) {
            const auto pair = hn::Add(hn::LoadU(d, steps + i - k), hn::LoadU(d, steps + i + k));
            sum = hn::Add(sum, hn::Mul(pair, hn::Set(d, weights[k])));
        }
        hn::StoreU(sum, d, smooth + i);
    }
}

#endif

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(sampleSpline);
ORMALUX_SIMD_TABLE(smoothSteps);

void sampleSpline(const std::uint8_t* pixels, std::ptrdiff_t stride, const SplineWalk& walk,
                  std::size_t count, float* samples)
{
    ORMALUX_SIMD_CALL(sampleSpline)(pixels, stride, walk, count, samples);
}

void smoothSteps(const float* steps, std::size_t count, const float* weights, int radius, float* smooth)
{
    ORMALUX_SIMD_CALL(smoothSteps)(steps, count, weights, radius, smooth);
}

} // namespace ormalux::kernels
#endif
