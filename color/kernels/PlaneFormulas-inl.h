// The formulas of the colour planes on vectors of pixels. Read once for every instruction set, after Highway.

#if defined(ORMALUX_PLANE_FORMULAS_INL) == defined(HWY_TARGET_TOGGLE)
#ifdef ORMALUX_PLANE_FORMULAS_INL
#undef ORMALUX_PLANE_FORMULAS_INL
#else
#define ORMALUX_PLANE_FORMULAS_INL
#endif

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

namespace {

using Bytes = hn::ScalableTag<std::uint8_t>;
using Words = hn::Repartition<std::uint16_t, Bytes>;
using Floats = hn::Repartition<float, Bytes>;
using Longs = hn::Repartition<std::int32_t, Bytes>;
using ByteVec = hn::Vec<Bytes>;
using WordVec = hn::Vec<Words>;

/// A formula's value for a single pixel, for the ends of runs and the plain set.
#define ORMALUX_PLAIN_FORMULA(function)                                                                      \
    static std::uint8_t plain(int b, int g, int r)                                                           \
    {                                                                                                        \
        return function(b, g, r);                                                                            \
    }

#if ORMALUX_PLAIN
#define ORMALUX_VECTOR_FORMULA(expression)
#else
#define ORMALUX_VECTOR_FORMULA(expression)                                                                   \
    ByteVec operator()([[maybe_unused]] ByteVec b, [[maybe_unused]] ByteVec g, [[maybe_unused]] ByteVec r)   \
        const                                                                                                \
    {                                                                                                        \
        return expression;                                                                                   \
    }

// Bytes as 16-bit words: those at even places and those at odd ones, which need no crossing of lanes.
HWY_INLINE WordVec evenBytes(ByteVec v)
{
    return hn::And(hn::BitCast(Words(), v), hn::Set(Words(), 255));
}
HWY_INLINE WordVec oddBytes(ByteVec v)
{
    return hn::ShiftRight<8>(hn::BitCast(Words(), v));
}
HWY_INLINE ByteVec joinBytes(WordVec even, WordVec odd)
{
    return hn::BitCast(Bytes(), hn::Or(even, hn::ShiftLeft<8>(odd)));
}

HWY_INLINE ByteVec largest(ByteVec b, ByteVec g, ByteVec r)
{
    return hn::Max(hn::Max(b, g), r);
}
HWY_INLINE ByteVec smallest(ByteVec b, ByteVec g, ByteVec r)
{
    return hn::Min(hn::Min(b, g), r);
}

/// (b + g + r + 1) / 3; 43691 / 2^17 is a third as far as such sums go.
HWY_INLINE ByteVec roundedThird(ByteVec b, ByteVec g, ByteVec r)
{
    const Words d;
    const auto divide = [=](WordVec x, WordVec y, WordVec z) HWY_ATTR {
        const auto sum = hn::Add(hn::Add(x, y), hn::Add(z, hn::Set(d, 1)));
        return hn::ShiftRight<1>(hn::MulHigh(sum, hn::Set(d, 43691)));
    };
    return joinBytes(divide(evenBytes(b), evenBytes(g), evenBytes(r)),
                     divide(oddBytes(b), oddBytes(g), oddBytes(r)));
}

/// 255 x (sum - 3 min) / sum. A correctly rounded quotient of these integers never reaches the next integer:
/// its distance from it is at least 1 / 765, far more than half a unit of the last place.
HWY_INLINE ByteVec saturationOf(ByteVec b, ByteVec g, ByteVec r)
{
    const Words d;
    const Floats df;
    const Longs di;
    const auto low = smallest(b, g, r);
    const auto divide = [=](hn::Vec<Longs> sum, hn::Vec<Longs> part) HWY_ATTR {
        const auto over = hn::Mul(hn::ConvertTo(df, part), hn::Set(df, 255.0f));
        const auto under = hn::ConvertTo(df, hn::Max(sum, hn::Set(di, 1)));
        return hn::ConvertTo(di, hn::Div(over, under));
    };
    const auto half = [=](WordVec x, WordVec y, WordVec z, WordVec m) HWY_ATTR {
        const auto sum = hn::Add(hn::Add(x, y), z);
        const auto part = hn::Sub(sum, hn::Add(m, hn::Add(m, m)));
        const auto sums = hn::BitCast(di, sum), parts = hn::BitCast(di, part);
        const auto ones = hn::Set(di, 0xFFFF);
        const auto even = divide(hn::And(sums, ones), hn::And(parts, ones));
        const auto odd = divide(hn::ShiftRight<16>(sums), hn::ShiftRight<16>(parts));
        return hn::BitCast(d, hn::Or(even, hn::ShiftLeft<16>(odd)));
    };
    return joinBytes(half(evenBytes(b), evenBytes(g), evenBytes(r), evenBytes(low)),
                     half(oddBytes(b), oddBytes(g), oddBytes(r), oddBytes(low)));
}

/// (a + b) / 2, rounded down.
HWY_INLINE ByteVec halfSum(ByteVec a, ByteVec b)
{
    return hn::Sub(hn::AverageRound(a, b), hn::And(hn::Xor(a, b), hn::Set(Bytes(), 1)));
}
#endif

struct Intensity
{
    ORMALUX_VECTOR_FORMULA(roundedThird(b, g, r))
    ORMALUX_PLAIN_FORMULA(formula::intensity)
};
struct Saturation
{
    ORMALUX_VECTOR_FORMULA(saturationOf(b, g, r))
    ORMALUX_PLAIN_FORMULA(formula::saturation)
};
struct Value
{
    ORMALUX_VECTOR_FORMULA(halfSum(largest(b, g, r), smallest(b, g, r)))
    ORMALUX_PLAIN_FORMULA(formula::value)
};
struct Cyan
{
    ORMALUX_VECTOR_FORMULA(hn::Sub(largest(b, g, r), r))
    ORMALUX_PLAIN_FORMULA(formula::cyan)
};
struct Magenta
{
    ORMALUX_VECTOR_FORMULA(hn::Sub(largest(b, g, r), g))
    ORMALUX_PLAIN_FORMULA(formula::magenta)
};
struct Yellow
{
    ORMALUX_VECTOR_FORMULA(hn::Sub(largest(b, g, r), b))
    ORMALUX_PLAIN_FORMULA(formula::yellow)
};
struct Black
{
    ORMALUX_VECTOR_FORMULA(hn::Xor(largest(b, g, r), hn::Set(Bytes(), 255)))
    ORMALUX_PLAIN_FORMULA(formula::black)
};

struct InRange
{
    std::uint8_t low[3], high[3];

    InRange(const std::uint8_t l[3], const std::uint8_t h[3]) : low{l[0], l[1], l[2]}, high{h[0], h[1], h[2]}
    {}
#if !ORMALUX_PLAIN
    ByteVec operator()(ByteVec b, ByteVec g, ByteVec r) const
    {
        const Bytes d;
        const auto outside = [&](ByteVec v, int c) HWY_ATTR {
            return hn::Or(hn::SaturatedSub(hn::Set(d, low[c]), v), hn::SaturatedSub(v, hn::Set(d, high[c])));
        };
        const auto all = hn::Or(hn::Or(outside(b, 0), outside(g, 1)), outside(r, 2));
        return hn::VecFromMask(d, all == hn::Zero(d));
    }
#endif
    std::uint8_t plain(int b, int g, int r) const
    {
        const bool inside =
            low[0] <= b && b <= high[0] && low[1] <= g && g <= high[1] && low[2] <= r && r <= high[2];
        return inside ? 255 : 0;
    }
};

/// A weighted sum of the channels as it comes out in doubles, truncated.
///
/// With X a thousand times the sum, an integer, the value is X / 1000 rounded down, but for some hundred
/// colours with X a multiple of 1000 that rounding in doubles leaves just below it. X = 8 P + E gives X / 8
/// in 16 bits, and 33555 / 2^22 divides that by 125 exactly; pixels with a multiple of 1000 are done again in
/// doubles.
template <class Weights>
struct WeightedSum
{
    ORMALUX_PLAIN_FORMULA(Weights::exact)
#if !ORMALUX_PLAIN
    ByteVec operator()(ByteVec b, ByteVec g, ByteVec r) const
    {
        const Words d;
        WordVec evenRest, oddRest;
        const auto even = divide(evenBytes(b), evenBytes(g), evenBytes(r), evenRest);
        const auto odd = divide(oddBytes(b), oddBytes(g), oddBytes(r), oddRest);
        const auto result = joinBytes(even, odd);
        if (hn::AllFalse(d, hn::Min(evenRest, oddRest) == hn::Zero(d))) [[likely]]
            return result;
        return corrected(b, g, r, result);
    }

private:
    /// X / 1000; rest is 0 where that left no remainder and rounding might have made it one less.
    static WordVec divide(WordVec b, WordVec g, WordVec r, WordVec& rest)
    {
        const Words d;
        const auto times = [](WordVec v, int weight)
                               HWY_ATTR { return hn::Mul(v, hn::Set(Words(), std::uint16_t(weight))); };
        const auto p = hn::Add(hn::Add(times(b, Weights::blue), times(g, Weights::green)),
                               hn::Add(times(r, Weights::red), hn::Set(d, Weights::offset)));
        const auto e = Weights::eighths(b, g, r);
        const auto quotient =
            hn::ShiftRight<6>(hn::MulHigh(hn::Add(p, hn::ShiftRight<3>(e)), hn::Set(d, 33555)));
        const auto remainder = hn::Sub(hn::Add(hn::ShiftLeft<3>(p), e), times(quotient, 1000));
        // Gray pixels all leave no remainder, and need no correction.
        rest = hn::Or(remainder, hn::VecFromMask(d, quotient == hn::Set(d, Weights::alwaysExact)));
        return quotient;
    }

    static HWY_NOINLINE ByteVec corrected(ByteVec b, ByteVec g, ByteVec r, ByteVec result)
    {
        const Bytes d;
        const Words dw;
        HWY_ALIGN std::uint8_t blue[HWY_MAX_BYTES], green[HWY_MAX_BYTES], red[HWY_MAX_BYTES],
            value[HWY_MAX_BYTES];
        WordVec evenRest, oddRest;
        divide(evenBytes(b), evenBytes(g), evenBytes(r), evenRest);
        divide(oddBytes(b), oddBytes(g), oddBytes(r), oddRest);
        const auto zero = hn::Zero(dw);
        const auto exact = joinBytes(hn::And(hn::VecFromMask(dw, evenRest == zero), hn::Set(dw, 255)),
                                     hn::VecFromMask(dw, oddRest == zero));
        HWY_ALIGN std::uint8_t bits[HWY_MAX_BYTES / 8 + 8] = {};
        hn::StoreMaskBits(d, exact == hn::Set(d, 255), bits);
        hn::Store(b, d, blue);
        hn::Store(g, d, green);
        hn::Store(r, d, red);
        hn::Store(result, d, value);
        std::uint64_t places;
        std::memcpy(&places, bits, sizeof places);
        for (; places != 0; places &= places - 1) {
            const int i = std::countr_zero(places);
            value[i] = Weights::exact(blue[i], green[i], red[i]);
        }
        return hn::Load(d, value);
    }
#endif
};

struct LumaWeights
{
    static std::uint8_t exact(int b, int g, int r) { return formula::luma(b, g, r); }
    static constexpr int blue = 12, green = 63, red = 32;
    static constexpr std::uint16_t offset = 2000, alwaysExact = 16;
#if !ORMALUX_PLAIN
    static WordVec eighths(WordVec b, WordVec, WordVec r)
    {
        return hn::Add(r, hn::Add(b, b));
    }
#endif
};
struct BlueDifferenceWeights
{
    static std::uint8_t exact(int b, int g, int r) { return formula::blueDifference(b, g, r); }
    static constexpr int blue = 54, green = -37, red = -19;
    static constexpr std::uint16_t offset = 16000, alwaysExact = 128;
#if !ORMALUX_PLAIN
    static WordVec eighths(WordVec b, WordVec g, WordVec r)
    {
        return hn::Add(hn::Add(hn::Sub(hn::ShiftLeft<3>(b), b), g), hn::ShiftLeft<2>(hn::Add(g, r)));
    }
#endif
};
struct RedDifferenceWeights
{
    static std::uint8_t exact(int b, int g, int r) { return formula::redDifference(b, g, r); }
    static constexpr int blue = -9, green = -46, red = 54;
    static constexpr std::uint16_t offset = 16000, alwaysExact = 128;
#if !ORMALUX_PLAIN
    static WordVec eighths(WordVec b, WordVec, WordVec r)
    {
        return hn::Add(hn::Sub(hn::ShiftLeft<3>(r), r), b);
    }
#endif
};

using Luma = WeightedSum<LumaWeights>;
using BlueDifference = WeightedSum<BlueDifferenceWeights>;
using RedDifference = WeightedSum<RedDifferenceWeights>;

#undef ORMALUX_PLAIN_FORMULA
#undef ORMALUX_VECTOR_FORMULA

} // namespace

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
