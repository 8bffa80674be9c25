#include "image/kernels/CollectKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/CollectKernels.cpp"
#include "platform/Simd.h"

#include "image/kernels/ByteLoops-inl.h"

#include <algorithm>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {

#if HWY_TARGET == HWY_AVX3_DL

// The pixels of a piece of a row that are collected: their places in it and their values, side by side.
struct Picked
{
    static constexpr std::size_t piece = 256;

    HWY_ALIGN std::uint8_t places[piece + 64];
    HWY_ALIGN std::uint8_t values[piece + 64];
    std::size_t number = 0;
};

HWY_INLINE void pick(const std::uint8_t* pixels, std::size_t count, std::uint8_t low, std::uint8_t high,
                     Picked& picked)
{
    const hn::CappedTag<std::uint8_t, 64> d;
    const auto first = hn::Set(d, low), span = hn::Set(d, std::uint8_t(high - low));
    picked.number = 0;
    for (std::size_t i = 0; i < count; i += 64) {
        const auto inside = hn::FirstN(d, count - i);
        const auto v = hn::MaskedLoad(inside, d, pixels + i);
        const auto in = hn::And(inRange(v, first, span), inside);
        // Compressing straight to memory is many times slower on some machines.
        hn::StoreU(hn::Compress(hn::Iota(d, std::uint8_t(i)), in), d, picked.places + picked.number);
        hn::StoreU(hn::Compress(v, in), d, picked.values + picked.number);
        picked.number += hn::CountTrue(d, in);
    }
}

// Writes eight records, position, value and 0 in three 64-bit lanes each: of the places and values from the
// given one on, with the position of place 0.
HWY_INLINE void writeEight(const Picked& picked, std::size_t from, std::uint64_t origin, std::uint64_t* lanes)
{
    const hn::ScalableTag<std::uint64_t> d;
    const hn::Rebind<std::uint32_t, decltype(d)> d32;
    const hn::Rebind<std::uint8_t, decltype(d)> d8;
    const auto widened = [&](const std::uint8_t* bytes) HWY_ATTR {
        return hn::PromoteTo(d, hn::PromoteTo(d32, hn::LoadU(d8, bytes + from)));
    };
    const auto position = widened(picked.places) + hn::Set(d, origin);
    const auto value = widened(picked.values);
    HWY_ALIGN static constexpr std::uint64_t records[24] = {0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3,
                                                            4, 4, 4, 5, 5, 5, 6, 6, 6, 7, 7, 7};
    HWY_ALIGN static constexpr std::uint64_t parts[24] = {0, 1, 2, 0, 1, 2, 0, 1, 2, 0, 1, 2,
                                                          0, 1, 2, 0, 1, 2, 0, 1, 2, 0, 1, 2};
    for (std::size_t k = 0; k < 24; k += 8) {
        const auto record = hn::IndicesFromVec(d, hn::Load(d, records + k));
        const auto part = hn::Load(d, parts + k);
        const auto lane = hn::IfThenElse(part == hn::Set(d, 1), hn::TableLookupLanes(value, record),
                                         hn::TableLookupLanes(position, record));
        hn::StoreU(hn::IfThenZeroElse(part == hn::Set(d, 2), lane), d, lanes + k);
    }
}

std::size_t collectRange(const std::uint8_t* row, std::size_t width, std::uint8_t low, std::uint8_t high,
                         std::int32_t x, std::int32_t y, _stPixel* records)
{
    static_assert(sizeof(_stPixel) == 3 * sizeof(std::uint64_t));
    _stPixel* record = records;
    for (std::size_t i = 0; i < width; i += Picked::piece) {
        Picked picked;
        pick(row + i, std::min(width - i, Picked::piece), low, high, picked);
        const std::uint64_t origin = std::uint32_t(x + std::int32_t(i)) | std::uint64_t(std::uint32_t(y))
                                                                              << 32;
        std::size_t k = 0;
        for (; k + 8 <= picked.number; k += 8)
            writeEight(picked, k, origin, reinterpret_cast<std::uint64_t*>(record + k));
        std::uint64_t rest[24];
        writeEight(picked, k, origin, rest);
        std::memcpy(static_cast<void*>(record + k), rest, (picked.number - k) * sizeof(_stPixel));
        record += picked.number;
    }
    return std::size_t(record - records);
}

#else

std::size_t collectRange(const std::uint8_t* row, std::size_t width, std::uint8_t low, std::uint8_t high,
                         std::int32_t x, std::int32_t y, _stPixel* records)
{
    _stPixel* record = records;
    std::size_t i = 0;
#if !ORMALUX_PLAIN
    const hn::CappedTag<std::uint8_t, 64> d;
    const auto first = hn::Set(d, low), span = hn::Set(d, std::uint8_t(high - low));
    for (; i + hn::Lanes(d) <= width; i += hn::Lanes(d)) {
        std::uint64_t met = 0;
        hn::StoreMaskBits(d, inRange(hn::LoadU(d, row + i), first, span),
                          reinterpret_cast<std::uint8_t*>(&met));
        for (; met; met &= met - 1) {
            const std::size_t at = i + hwy::Num0BitsBelowLS1Bit_Nonzero64(met);
            *record++ = _stPixel{x + std::int32_t(at), y, row[at], 0.0};
        }
    }
#endif
    for (; i < width; ++i)
        if (low <= row[i] && row[i] <= high)
            *record++ = _stPixel{x + std::int32_t(i), y, row[i], 0.0};
    return std::size_t(record - records);
}

#endif

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
