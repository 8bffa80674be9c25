#include "image/kernels/MirrorKernels.h"

#include <algorithm>
#include <utility>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/MirrorKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

namespace {

#if !ORMALUX_PLAIN
template <class D>
hn::Vec<D> turned(D d, hn::Vec<D> v)
{
    alignas(16) static constexpr std::uint8_t order[16] = {15, 14, 13, 12, 11, 10, 9, 8,
                                                           7,  6,  5,  4,  3,  2,  1, 0};
    return hn::ReverseBlocks(d, hn::TableLookupBytes(v, hn::LoadDup128(d, order)));
}
#endif

void swapTriple(std::uint8_t* a, std::uint8_t* b)
{
    std::swap(a[0], b[0]);
    std::swap(a[1], b[1]);
    std::swap(a[2], b[2]);
}

// Exchanges the pixels from a on with those before bEnd, each turned round. The loads of one step precede its
// stores, so the two sides may overlap within the step.
template <class D>
void swapStep(D d, std::uint8_t* a, std::uint8_t* bEnd)
{
#if ORMALUX_PLAIN
    (void)d;
    std::swap(*a, bEnd[-1]);
#else
    std::uint8_t* const b = bEnd - hn::Lanes(d);
    const auto fromA = hn::LoadU(d, a);
    const auto fromB = hn::LoadU(d, b);
    hn::StoreU(turned(d, fromB), d, a);
    hn::StoreU(turned(d, fromA), d, b);
#endif
}

template <class D>
void swapTriplesStep(D d, std::uint8_t* a, std::uint8_t* bEnd)
{
#if ORMALUX_PLAIN
    (void)d;
    swapTriple(a, bEnd - 3);
#else
    std::uint8_t* const b = bEnd - 3 * hn::Lanes(d);
    hn::Vec<D> a0, a1, a2, b0, b1, b2;
    hn::LoadInterleaved3(d, a, a0, a1, a2);
    hn::LoadInterleaved3(d, b, b0, b1, b2);
    hn::StoreInterleaved3(turned(d, b0), turned(d, b1), turned(d, b2), d, a);
    hn::StoreInterleaved3(turned(d, a0), turned(d, a1), turned(d, a2), d, b);
#endif
}

} // namespace

void reverse(std::uint8_t* pixels, std::size_t count)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t begin = 0, end = count;
    for (; end - begin >= 2 * lanes; begin += lanes, end -= lanes)
        swapStep(d, pixels + begin, pixels + end);
    if (end - begin > lanes) {
        swapStep(d, pixels + begin, pixels + end);
        return;
    }
#if !ORMALUX_PLAIN
    const hn::CappedTag<std::uint8_t, 16> narrow;
    for (; end - begin >= 32; begin += 16, end -= 16)
        swapStep(narrow, pixels + begin, pixels + end);
    if (end - begin >= 16) {
        swapStep(narrow, pixels + begin, pixels + end);
        return;
    }
#endif
    for (; end - begin >= 2; ++begin, --end)
        std::swap(pixels[begin], pixels[end - 1]);
}

void reverseTriples(std::uint8_t* pixels, std::size_t count)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t begin = 0, end = count;
    for (; end - begin >= 2 * lanes; begin += lanes, end -= lanes)
        swapTriplesStep(d, pixels + 3 * begin, pixels + 3 * end);
    for (; end - begin >= 2; ++begin, --end)
        swapTriple(pixels + 3 * begin, pixels + 3 * (end - 1));
}

void swapReversed(std::uint8_t* a, std::uint8_t* b, std::size_t count)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        swapStep(d, a + i, b + (count - i));
    for (; i < count; ++i)
        std::swap(a[i], b[count - 1 - i]);
}

void swapReversedTriples(std::uint8_t* a, std::uint8_t* b, std::size_t count)
{
    const hn::ScalableTag<std::uint8_t> d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        swapTriplesStep(d, a + 3 * i, b + 3 * (count - i));
    for (; i < count; ++i)
        swapTriple(a + 3 * i, b + 3 * (count - 1 - i));
}

void swapBytes(std::uint8_t* a, std::uint8_t* b, std::size_t count)
{
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const hn::ScalableTag<std::uint8_t> d;
    const hn::CappedTag<std::uint8_t, 16> narrow;
    const std::size_t lanes = hn::Lanes(d);
    const auto swapAt = [&](auto tag, std::size_t at) {
        const auto fromA = hn::LoadU(tag, a + at);
        hn::StoreU(hn::LoadU(tag, b + at), tag, a + at);
        hn::StoreU(fromA, tag, b + at);
    };
    // Up to where wide accesses to one run, and in most pictures to both, do not straddle cache lines.
    const std::size_t head = std::min((0 - reinterpret_cast<std::uintptr_t>(a)) % lanes, count);
    for (; i + 16 <= head; i += 16)
        swapAt(narrow, i);
    for (; i < head; ++i)
        std::swap(a[i], b[i]);
    for (; i + 2 * lanes <= count; i += 2 * lanes) {
        swapAt(d, i);
        swapAt(d, i + lanes);
    }
    for (; i + 16 <= count; i += 16)
        swapAt(narrow, i);
#endif
    for (; i < count; ++i)
        std::swap(a[i], b[i]);
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(reverse);
ORMALUX_SIMD_TABLE(reverseTriples);
ORMALUX_SIMD_TABLE(swapReversed);
ORMALUX_SIMD_TABLE(swapReversedTriples);
ORMALUX_SIMD_TABLE(swapBytes);

void reverse(std::uint8_t* pixels, std::size_t count)
{
    ORMALUX_SIMD_CALL(reverse)(pixels, count);
}

void reverseTriples(std::uint8_t* pixels, std::size_t count)
{
    ORMALUX_SIMD_CALL(reverseTriples)(pixels, count);
}

void swapReversed(std::uint8_t* a, std::uint8_t* b, std::size_t count)
{
    ORMALUX_SIMD_CALL(swapReversed)(a, b, count);
}

void swapReversedTriples(std::uint8_t* a, std::uint8_t* b, std::size_t count)
{
    ORMALUX_SIMD_CALL(swapReversedTriples)(a, b, count);
}

void swapBytes(std::uint8_t* a, std::uint8_t* b, std::size_t count)
{
    ORMALUX_SIMD_CALL(swapBytes)(a, b, count);
}

} // namespace ormalux::kernels
#endif
