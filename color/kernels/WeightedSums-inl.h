// The colour planes that are weighted sums, on vectors of pixels. Read once for every instruction set, behind
// PlaneFormulas-inl.h.

#if defined(ORMALUX_WEIGHTED_SUMS_INL) == defined(HWY_TARGET_TOGGLE)
#ifdef ORMALUX_WEIGHTED_SUMS_INL
#undef ORMALUX_WEIGHTED_SUMS_INL
#else
#define ORMALUX_WEIGHTED_SUMS_INL
#endif

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

namespace {

#if !ORMALUX_PLAIN
/// v times the weight, modulo 2^16. The compiler must not see the weight: it would replace one multiplication
/// by up to five shifts and additions, which take longer.
HWY_INLINE WordVec times(WordVec v, int weight)
{
    auto hidden = std::uint16_t(weight);
    asm("" : "+r"(hidden));
    return hn::Mul(v, hn::Set(Words(), hidden));
}
#endif

/// A weighted sum of the channels as it comes out in doubles, truncated.
///
/// With X a thousand times the sum, an integer, the value is X / 1000 rounded down, but for some hundred
/// colours with X a multiple of 1000 that rounding in doubles leaves just below it. No X is below
/// 16000, X / 4 - 4000 fits 16 bits, and 33555 / 2^23 divides that by 250 exactly. Multiples of 1000 among
/// the values that have such colours are looked at once more in doubles.
template <class Weights>
struct WeightedSum
{
#if !ORMALUX_PLAIN
    ByteVec value; ///< X / 1000
    ByteVec rest;  ///< 0 where that left nothing over

    HWY_INLINE WeightedSum(ByteVec b, ByteVec g, ByteVec r)
    {
        const Words d;
        const auto evenQuarter = Weights::quarter(evenBytes(b), evenBytes(g), evenBytes(r));
        const auto oddQuarter = Weights::quarter(oddBytes(b), oddBytes(g), oddBytes(r));
        const auto divisor = hn::Set(d, 33555);
        const auto even = hn::ShiftRight<7>(hn::MulHigh(evenQuarter, divisor));
        const auto odd = hn::ShiftRight<7>(hn::MulHigh(oddQuarter, divisor));
        value = hn::Add(joinBytes(even, odd), hn::Set(Bytes(), 16));
        const auto quarterRest =
            joinBytes(hn::Sub(evenQuarter, times(even, 250)), hn::Sub(oddQuarter, times(odd, 250)));
        rest = hn::Or(quarterRest, hn::And(Weights::lowBits(b, g, r), hn::Set(Bytes(), 3)));
    }

    /// The pixels whose value may be one too large.
    HWY_INLINE hn::Mask<Bytes> doubtful() const
    {
        return hn::Or(rest, Weights::neverShort(value)) == hn::Zero(Bytes());
    }
#endif
};

#if !ORMALUX_PLAIN
/// A fourth of a difference, rounded down.
HWY_INLINE WordVec fourth(WordVec difference)
{
    const hn::RebindToSigned<Words> d;
    return hn::BitCast(Words(), hn::ShiftRight<2>(hn::BitCast(d, difference)));
}
#endif

// Weights: quarter is X / 4 - 4000 rounded down, lowBits is X in its two lowest bits, neverShort is not 0
// where no colour of the value falls short in doubles.

/// X = 257 R + 504 G + 98 B + 16000.
struct LumaWeights
{
    static std::uint8_t exact(int b, int g, int r) { return formula::luma(b, g, r); }
#if !ORMALUX_PLAIN
    static HWY_INLINE WordVec quarter(WordVec b, WordVec g, WordVec r)
    {
        const auto sum = hn::Add(hn::Add(times(r, 64), times(g, 126)), times(b, 24));
        return hn::Add(sum, hn::ShiftRight<2>(hn::Add(r, hn::Add(b, b))));
    }
    static HWY_INLINE ByteVec lowBits(ByteVec b, ByteVec, ByteVec r)
    {
        return hn::Add(r, hn::Add(b, b));
    }
    // Black lies below.
    static HWY_INLINE ByteVec neverShort(ByteVec v)
    {
        return hn::SaturatedSub(hn::Set(Bytes(), 50), v);
    }
#endif
};

/// X = 439 B - 291 G - 148 R + 128000.
struct BlueDifferenceWeights
{
    static std::uint8_t exact(int b, int g, int r) { return formula::blueDifference(b, g, r); }
#if !ORMALUX_PLAIN
    static HWY_INLINE WordVec quarter(WordVec b, WordVec g, WordVec r)
    {
        const auto green = hn::Sub(g, b), red = hn::Sub(r, b);
        return hn::Add(hn::Add(times(green, -73), times(red, -37)),
                       hn::Add(fourth(green), hn::Set(Words(), 28000)));
    }
    static HWY_INLINE ByteVec lowBits(ByteVec b, ByteVec g, ByteVec)
    {
        return hn::Sub(g, b);
    }
    // The grays lie above.
    static HWY_INLINE ByteVec neverShort(ByteVec v)
    {
        return hn::SaturatedSub(v, hn::Set(Bytes(), 124));
    }
#endif
};

/// X = 439 R - 368 G - 71 B + 128000.
struct RedDifferenceWeights
{
    static std::uint8_t exact(int b, int g, int r) { return formula::redDifference(b, g, r); }
#if !ORMALUX_PLAIN
    static HWY_INLINE WordVec quarter(WordVec b, WordVec g, WordVec r)
    {
        const auto green = hn::Sub(g, b), blue = hn::Sub(b, r);
        return hn::Add(hn::Add(times(green, -92), times(blue, -110)),
                       hn::Add(fourth(blue), hn::Set(Words(), 28000)));
    }
    static HWY_INLINE ByteVec lowBits(ByteVec b, ByteVec, ByteVec r)
    {
        return hn::Sub(b, r);
    }
    // The grays lie above.
    static HWY_INLINE ByteVec neverShort(ByteVec v)
    {
        return hn::SaturatedSub(v, hn::Set(Bytes(), 127));
    }
#endif
};

} // namespace

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
