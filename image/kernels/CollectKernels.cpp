#include "image/kernels/CollectKernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/kernels/CollectKernels.cpp"
#include "platform/Simd.h"

#include "image/kernels/ByteLoops-inl.h"

#include <algorithm>

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

// Eight records, position, value and 0 in three 64-bit lanes each, as three vectors.
struct EightRecords
{
    __m512i lanes[3];
};

// The records of the places and values from the given one on, with the position of place 0.
HWY_INLINE EightRecords eightRecords(const Picked& picked, std::size_t from, std::uint64_t origin)
{
    const auto widened = [&](const std::uint8_t* bytes) {
        return _mm512_cvtepu8_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes + from)));
    };
    const __m512i position =
        _mm512_add_epi64(widened(picked.places), _mm512_set1_epi64(std::int64_t(origin)));
    const __m512i value = widened(picked.values);
    // From 8 on an index means the values; every third lane is 0.
    const __m512i first = _mm512_setr_epi64(0, 8, 0, 1, 9, 0, 2, 10);
    const __m512i second = _mm512_setr_epi64(0, 3, 11, 0, 4, 12, 0, 5);
    const __m512i third = _mm512_setr_epi64(13, 0, 6, 14, 0, 7, 15, 0);
    return {{_mm512_maskz_permutex2var_epi64(0b11011011, position, first, value),
             _mm512_maskz_permutex2var_epi64(0b10110110, position, second, value),
             _mm512_maskz_permutex2var_epi64(0b01101101, position, third, value)}};
}

// Writes the picked pixels' records and returns where the next one goes.
HWY_INLINE _stPixel* writeRecords(const Picked& picked, std::uint64_t origin, _stPixel* record)
{
    static_assert(sizeof(_stPixel) == 3 * sizeof(std::uint64_t));
    std::uint8_t* to = reinterpret_cast<std::uint8_t*>(record);
    std::size_t i = 0;
    for (; i + 8 <= picked.number; i += 8, to += 8 * sizeof(_stPixel)) {
        const EightRecords records = eightRecords(picked, i, origin);
        for (int k = 0; k < 3; ++k)
            _mm512_storeu_si512(to + 64 * k, records.lanes[k]);
    }
    const EightRecords records = eightRecords(picked, i, origin);
    const std::uint32_t wanted = (1u << 3 * (picked.number - i)) - 1;
    for (int k = 0; k < 3; ++k)
        _mm512_mask_storeu_epi64(to + 64 * k, __mmask8(wanted >> 8 * k), records.lanes[k]);
    return record + picked.number;
}

std::size_t collectRange(const std::uint8_t* row, std::size_t width, std::uint8_t low, std::uint8_t high,
                         std::int32_t x, std::int32_t y, _stPixel* records)
{
    _stPixel* record = records;
    for (std::size_t i = 0; i < width; i += Picked::piece) {
        Picked picked;
        pick(row + i, std::min(width - i, Picked::piece), low, high, picked);
        const std::uint32_t column = std::uint32_t(x + std::int32_t(i));
        record = writeRecords(picked, column | std::uint64_t(std::uint32_t(y)) << 32, record);
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
