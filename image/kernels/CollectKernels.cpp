#include "image/kernels/CollectKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/CollectKernels.cpp"
#include "platform/Simd.h"

#include "image/kernels/ByteLoops-inl.h"

#include <bit>

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {

HWY_INLINE _stPixel* collectPlain(const std::uint8_t* row, std::size_t begin, std::size_t end,
                                  std::uint8_t low, std::uint8_t high, std::int32_t x, std::int32_t y,
                                  _stPixel* record)
{
    for (std::size_t i = begin; i < end; ++i)
        if (low <= row[i] && row[i] <= high)
            *record++ = _stPixel{x + std::int32_t(i), y, row[i], 0.0};
    return record;
}

std::size_t collectRange(const std::uint8_t* row, std::size_t width, std::uint8_t low, std::uint8_t high,
                         std::int32_t x, std::int32_t y, _stPixel* records)
{
    _stPixel* record = records;
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const hn::CappedTag<std::uint8_t, 64> d;
    const std::size_t lanes = hn::Lanes(d);
    const auto first = hn::Set(d, low), span = hn::Set(d, std::uint8_t(high - low));
    for (; i + lanes <= width; i += lanes) {
        const auto v = hn::LoadU(d, row + i);
        std::uint64_t met = 0;
        hn::StoreMaskBits(d, inRange(v, first, span), reinterpret_cast<std::uint8_t*>(&met));
        for (; met; met &= met - 1) {
            const std::size_t at = i + std::size_t(std::countr_zero(met));
            *record++ = _stPixel{x + std::int32_t(at), y, row[at], 0.0};
        }
    }
#endif
    record = collectPlain(row, i, width, low, high, x, y, record);
    return std::size_t(record - records);
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(collectRange);

std::size_t collectRange(const std::uint8_t* row, std::size_t width, std::uint8_t low, std::uint8_t high,
                         std::int32_t x, std::int32_t y, _stPixel* records)
{
    return ORMALUX_SIMD_CALL(collectRange)(row, width, low, high, x, y, records);
}

} // namespace ormalux::kernels
#endif
