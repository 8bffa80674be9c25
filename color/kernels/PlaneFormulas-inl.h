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

#undef ORMALUX_PLAIN_FORMULA
#undef ORMALUX_VECTOR_FORMULA

} // namespace

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
