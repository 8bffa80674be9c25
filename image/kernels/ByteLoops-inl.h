// Shared by kernel files, which include it below platform/Simd.h: read again for every instruction set.

#if defined(ORMALUX_BYTE_LOOPS_INL) == defined(HWY_TARGET_TOGGLE)
#ifdef ORMALUX_BYTE_LOOPS_INL
#undef ORMALUX_BYTE_LOOPS_INL
#else
#define ORMALUX_BYTE_LOOPS_INL
#endif

#include <cstddef>
#include <cstdint>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/// The lanes with low <= v <= low + span.
template <class V>
HWY_INLINE auto inRange(V v, V low, V span)
{
    const auto above = v - low;
    return hn::Min(above, span) == above;
}

/// Replaces every byte by op(bytes), where op works on each lane alone.
///
/// The stores in the middle are aligned: stores that cross cache lines cost twice. Both ends are computed
/// before the middle is stored and overlap it.
template <class Op>
HWY_INLINE void mapBytes(std::uint8_t* pixels, std::size_t count, Op op)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    if (count == 0)
        return;
    if (count < lanes) {
        HWY_ALIGN std::uint8_t few[HWY_MAX_BYTES] = {};
        std::memcpy(few, pixels, count);
        hn::Store(op(hn::Load(d, few)), d, few);
        std::memcpy(pixels, few, count);
        return;
    }
    const auto head = op(hn::LoadU(d, pixels));
    const auto tail = op(hn::LoadU(d, pixels + count - lanes));
    std::size_t i = (lanes - reinterpret_cast<std::uintptr_t>(pixels) % lanes) % lanes;
    for (; i + 4 * lanes <= count; i += 4 * lanes) {
        const auto a = op(hn::Load(d, pixels + i));
        const auto b = op(hn::Load(d, pixels + i + lanes));
        const auto c = op(hn::Load(d, pixels + i + 2 * lanes));
        const auto e = op(hn::Load(d, pixels + i + 3 * lanes));
        hn::Store(a, d, pixels + i);
        hn::Store(b, d, pixels + i + lanes);
        hn::Store(c, d, pixels + i + 2 * lanes);
        hn::Store(e, d, pixels + i + 3 * lanes);
    }
    for (; i + lanes <= count; i += lanes)
        hn::Store(op(hn::Load(d, pixels + i)), d, pixels + i);
    hn::StoreU(head, d, pixels);
    hn::StoreU(tail, d, pixels + count - lanes);
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
