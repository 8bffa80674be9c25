// Blue, green, red bytes into a vector a channel. Read once for every instruction set, after Highway.

#if defined(ORMALUX_LOAD_COLORS_INL) == defined(HWY_TARGET_TOGGLE)
#ifdef ORMALUX_LOAD_COLORS_INL
#undef ORMALUX_LOAD_COLORS_INL
#else
#define ORMALUX_LOAD_COLORS_INL
#endif

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_AVX3_DL && HWY_COMPILER_GCC && !HWY_COMPILER_CLANG
namespace {

// Highway has no byte permute across two registers, but the compiler's own vectors have: two for each
// channel.
using WideBytes [[gnu::vector_size(64)]] = std::uint8_t;

/// For every channel: which of the first 128 bytes goes to which pixel; then, where the pixel's byte lies
/// behind them, which of the last 64, counted from 64 on, and else the pixel's own place.
struct ChannelPlaces
{
    std::array<std::uint8_t, 64> front[3], back[3];
};

constexpr ChannelPlaces channelPlaces = [] {
    ChannelPlaces places{};
    for (std::size_t channel = 0; channel < 3; ++channel)
        for (std::size_t i = 0; i < 64; ++i) {
            const std::size_t byte = 3 * i + channel;
            places.front[channel][i] = std::uint8_t(byte < 128 ? byte : 0);
            places.back[channel][i] = std::uint8_t(byte < 128 ? i : byte - 64);
        }
    return places;
}();

HWY_INLINE WideBytes loadWide(const std::uint8_t* bytes)
{
    WideBytes v;
    std::memcpy(&v, bytes, sizeof v);
    return v;
}

template <class D>
HWY_INLINE void loadColors(D, const std::uint8_t* bgr, hn::Vec<D>& b, hn::Vec<D>& g, hn::Vec<D>& r)
{
    const WideBytes first = loadWide(bgr), second = loadWide(bgr + 64), third = loadWide(bgr + 128);
    const auto channel = [&](std::size_t c, hn::Vec<D>& v) HWY_ATTR {
        const WideBytes front = __builtin_shuffle(first, second, loadWide(channelPlaces.front[c].data()));
        v.raw = reinterpret_cast<decltype(v.raw)>(
            __builtin_shuffle(front, third, loadWide(channelPlaces.back[c].data())));
    };
    channel(0, b);
    channel(1, g);
    channel(2, r);
}

} // namespace
#elif !ORMALUX_PLAIN
namespace {

/// Sixteen pixels fill three blocks of sixteen bytes. For every channel and block: which of the block's bytes
/// goes to which pixel, 128 where none does. Repeated for the widest vector.
constexpr auto channelPlaces = [] {
    std::array<std::array<std::array<std::uint8_t, 64>, 3>, 3> places{};
    for (std::size_t channel = 0; channel < 3; ++channel)
        for (std::size_t block = 0; block < 3; ++block)
            for (std::size_t i = 0; i < 64; ++i) {
                const std::size_t byte = 3 * (i % 16) + channel;
                places[channel][block][i] = byte / 16 == block ? std::uint8_t(byte % 16) : std::uint8_t(128);
            }
    return places;
}();

/// Blocks of sixteen bytes, 48 bytes apart.
template <class D>
HWY_INLINE hn::Vec<D> loadEveryThirdBlock(D d, const std::uint8_t* bytes)
{
    if constexpr (hn::MaxLanes(D()) <= 16) {
        return hn::LoadU(d, bytes);
    } else {
        const hn::Half<D> half;
        return hn::Combine(d, loadEveryThirdBlock(half, bytes + 3 * hn::MaxLanes(half)),
                           loadEveryThirdBlock(half, bytes));
    }
}

/// As LoadInterleaved3, whose tables the compiler would build anew for every vector: these come from memory.
template <class D>
HWY_INLINE void loadColors(D d, const std::uint8_t* bgr, hn::Vec<D>& b, hn::Vec<D>& g, hn::Vec<D>& r)
{
    const auto first = loadEveryThirdBlock(d, bgr);
    const auto second = loadEveryThirdBlock(d, bgr + 16);
    const auto third = loadEveryThirdBlock(d, bgr + 32);
    const auto channel = [&](std::size_t c) HWY_ATTR {
        const auto& places = channelPlaces[c];
        const auto part = [&](auto block, std::size_t n) HWY_ATTR {
            return hn::TableLookupBytesOr0(block, hn::LoadU(d, places[n].data()));
        };
        return hn::Or(hn::Or(part(first, 0), part(second, 1)), part(third, 2));
    };
    b = channel(0);
    g = channel(1);
    r = channel(2);
}

} // namespace
#endif

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
