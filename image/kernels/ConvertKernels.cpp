#include "image/kernels/ConvertKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/ConvertKernels.cpp"
#include "platform/Simd.h"

#include "image/kernels/LoadColors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

namespace {

using Bytes = hn::ScalableTag<std::uint8_t>;
using BytesV = hn::Vec<Bytes>;

struct Red
{
    static BytesV of(BytesV, BytesV, BytesV red) { return red; }
    static int of(int, int, int red) { return red; }
};

struct Green
{
    static BytesV of(BytesV, BytesV green, BytesV) { return green; }
    static int of(int, int green, int) { return green; }
};

struct Blue
{
    static BytesV of(BytesV blue, BytesV, BytesV) { return blue; }
    static int of(int blue, int, int) { return blue; }
};

// The rounding average is 1 too large for an odd sum.
BytesV half(BytesV a, BytesV b)
{
    const Bytes d;
    return hn::Sub(hn::AverageRound(a, b), hn::And(hn::Xor(a, b), hn::Set(d, 1)));
}

struct HalfRedGreen
{
    static BytesV of(BytesV, BytesV green, BytesV red) { return half(red, green); }
    static int of(int, int green, int red) { return (red + green) >> 1; }
};

struct HalfRedBlue
{
    static BytesV of(BytesV blue, BytesV, BytesV red) { return half(red, blue); }
    static int of(int blue, int, int red) { return (red + blue) >> 1; }
};

struct HalfGreenBlue
{
    static BytesV of(BytesV blue, BytesV green, BytesV) { return half(green, blue); }
    static int of(int blue, int green, int) { return (green + blue) >> 1; }
};

#if !ORMALUX_PLAIN
using Words = hn::Repartition<std::uint16_t, Bytes>;

// n / 3 for n up to 765: 43691 / 2^17 is a third and a trifle.
hn::Vec<Words> third(hn::Vec<Words> sum)
{
    const Words d;
    return hn::ShiftRight<1>(hn::MulHigh(sum, hn::Set(d, 43691)));
}
#endif

struct Mean
{
#if ORMALUX_PLAIN
    static BytesV of(BytesV blue, BytesV, BytesV)
    {
        return blue;
    }
#else
    static BytesV of(BytesV blue, BytesV green, BytesV red)
    {
        const Words words;
        const auto low = hn::Set(words, 255);
        const auto even = [&](BytesV v) { return hn::And(hn::BitCast(words, v), low); };
        const auto odd = [&](BytesV v) { return hn::ShiftRight<8>(hn::BitCast(words, v)); };
        const auto evenMean = third(hn::Add(hn::Add(even(blue), even(green)), even(red)));
        const auto oddMean = third(hn::Add(hn::Add(odd(blue), odd(green)), odd(red)));
        return hn::BitCast(Bytes(), hn::Or(evenMean, hn::ShiftLeft<8>(oddMean)));
    }
#endif
    static int of(int blue, int green, int red)
    {
        return (blue + green + red) / 3;
    }
};

template <class Formula>
void convert(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const Bytes d;
    const std::size_t lanes = hn::Lanes(d);
    for (; i + lanes <= count; i += lanes) {
        BytesV blue, green, red;
        loadColors(d, pixels + 3 * i, blue, green, red);
        hn::StoreU(Formula::of(blue, green, red), d, gray + i);
    }
#endif
    for (; i < count; ++i)
        gray[i] =
            std::uint8_t(Formula::of(int(pixels[3 * i]), int(pixels[3 * i + 1]), int(pixels[3 * i + 2])));
}

} // namespace

void redOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    convert<Red>(pixels, count, gray);
}

void greenOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    convert<Green>(pixels, count, gray);
}

void blueOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    convert<Blue>(pixels, count, gray);
}

void meanOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    convert<Mean>(pixels, count, gray);
}

void halfRedGreenOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    convert<HalfRedGreen>(pixels, count, gray);
}

void halfRedBlueOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    convert<HalfRedBlue>(pixels, count, gray);
}

void halfGreenBlueOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    convert<HalfGreenBlue>(pixels, count, gray);
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(redOf);
ORMALUX_SIMD_TABLE(greenOf);
ORMALUX_SIMD_TABLE(blueOf);
ORMALUX_SIMD_TABLE(meanOf);
ORMALUX_SIMD_TABLE(halfRedGreenOf);
ORMALUX_SIMD_TABLE(halfRedBlueOf);
ORMALUX_SIMD_TABLE(halfGreenBlueOf);

void redOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    ORMALUX_SIMD_CALL(redOf)(pixels, count, gray);
}

void greenOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    ORMALUX_SIMD_CALL(greenOf)(pixels, count, gray);
}

void blueOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    ORMALUX_SIMD_CALL(blueOf)(pixels, count, gray);
}

void meanOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    ORMALUX_SIMD_CALL(meanOf)(pixels, count, gray);
}

void halfRedGreenOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    ORMALUX_SIMD_CALL(halfRedGreenOf)(pixels, count, gray);
}

void halfRedBlueOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    ORMALUX_SIMD_CALL(halfRedBlueOf)(pixels, count, gray);
}

void halfGreenBlueOf(const std::uint8_t* pixels, std::size_t count, std::uint8_t* gray)
{
    ORMALUX_SIMD_CALL(halfGreenBlueOf)(pixels, count, gray);
}

} // namespace ormalux::kernels
#endif
