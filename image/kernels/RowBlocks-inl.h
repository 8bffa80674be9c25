// Included by kernel files once for every instruction set, below platform/Simd.h.

#include <cstring>

#if defined(ORMALUX_ROW_BLOCKS) == defined(HWY_TARGET_TOGGLE)
#ifdef ORMALUX_ROW_BLOCKS
#undef ORMALUX_ROW_BLOCKS
#else
#define ORMALUX_ROW_BLOCKS
#endif

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {

#if ORMALUX_PLAIN

// pixel(y, x) gives what becomes of a pixel.
template <class Pixel>
void eachPixel(std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count, Pixel pixel)
{
    for (int y = 0; y < count; ++y)
        for (std::ptrdiff_t x = 0; x < std::ptrdiff_t(width); ++x)
            out[y * stride + x] = std::uint8_t(pixel(y, x));
}

#else

// block(x, out, stride) filters the columns x up to x + lanes of `count` rows, at most 32. The last block
// overlaps the one before; a picture narrower than a vector goes through a block of its own.
template <class Block>
HWY_INLINE void eachBlock(std::uint8_t* out, std::ptrdiff_t stride, std::size_t width, int count, Block block)
{
    const std::size_t lanes = hwy::HWY_NAMESPACE::Lanes(hwy::HWY_NAMESPACE::ScalableTag<std::uint8_t>());
    if (width < lanes) {
        alignas(64) std::uint8_t narrow[32 * HWY_MAX_BYTES];
        block(0, narrow, std::ptrdiff_t(lanes));
        for (int y = 0; y < count; ++y)
            std::memcpy(out + y * stride, narrow + std::size_t(y) * lanes, width);
        return;
    }
    std::size_t x = 0;
    for (; x + lanes <= width; x += lanes)
        block(x, out + x, stride);
    if (x < width)
        block(width - lanes, out + width - lanes, stride);
}

#endif

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
