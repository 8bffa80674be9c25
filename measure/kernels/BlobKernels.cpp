#include "measure/kernels/BlobKernels.h"

#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/kernels/BlobKernels.cpp"
#include "platform/Simd.h"

HWY_BEFORE_NAMESPACE();
namespace ormalux::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
using kernels::GrayRows;
using kernels::RunRow;
using kernels::RunTable;

namespace {

#if ORMALUX_PLAIN

// The word of the first count pixels, at most 64.
HWY_INLINE std::uint64_t packWord(const std::uint8_t* pixels, std::size_t count, std::uint8_t low,
                                  std::uint8_t span)
{
    std::uint64_t word = 0;
    for (std::size_t bit = 0; bit < count; ++bit)
        word |= std::uint64_t(std::uint8_t(pixels[bit] - low) <= span) << bit;
    return word;
}

#else

// The word of 64 pixels that may all be read.
HWY_INLINE std::uint64_t packWhole(const std::uint8_t* pixels, std::uint8_t low, std::uint8_t span)
{
    const hn::ScalableTag<std::uint8_t> d;
    const auto lowest = hn::Set(d, low);
    const auto limit = hn::Set(d, span);
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < 64; i += hn::Lanes(d)) {
        const auto above = hn::Sub(hn::LoadU(d, pixels + i), lowest);
        hn::StoreMaskBits(d, hn::Eq(hn::Min(above, limit), above),
                          reinterpret_cast<std::uint8_t*>(&word) + i / 8);
    }
    return word;
}

HWY_INLINE std::uint64_t packWord(const std::uint8_t* pixels, std::size_t count, std::uint8_t low,
                                  std::uint8_t span)
{
    if (count == 64)
        return packWhole(pixels, low, span);
    HWY_ALIGN std::uint8_t part[64] = {};
#if HWY_TARGET == HWY_AVX3_DL
    const hn::ScalableTag<std::uint8_t> d;
    hn::Store(hn::MaskedLoad(hn::FirstN(d, count), d, pixels), d, part);
#else
    std::memcpy(part, pixels, count);
#endif
    return packWhole(part, low, span) & ~std::uint64_t(0) >> (64 - count);
}

#endif

HWY_INLINE std::int32_t rootOf(std::int32_t* parents, std::int32_t run)
{
    while (parents[run] != run) {
        parents[run] = parents[parents[run]];
        run = parents[run];
    }
    return run;
}

HWY_INLINE void unite(std::int32_t* parents, std::int32_t a, std::int32_t b)
{
    a = rootOf(parents, a);
    b = rootOf(parents, b);
    const std::int32_t older = a < b ? a : b;
    const std::int32_t younger = a < b ? b : a;
    parents[younger] = older;
}

// Bits up to and including the lowest set one.
HWY_INLINE std::uint64_t upToLowest(std::uint64_t word)
{
    return word ^ (word - 1);
}

} // namespace

void packLevels(const GrayRows& gray, std::uint8_t low, std::uint8_t high, std::uint64_t* words,
                std::size_t wordStride)
{
    const std::uint8_t span = std::uint8_t(high - low);
    for (std::size_t y = 0; y < gray.rows; ++y, words += wordStride) {
        const std::uint8_t* pixels = gray.pixels + std::ptrdiff_t(y) * gray.stride;
        std::size_t x = 0;
        for (; x + 64 <= gray.width; x += 64)
            words[x / 64] = packWord(pixels + x, 64, low, span);
        if (x < gray.width)
            words[x / 64] = packWord(pixels + x, gray.width - x, low, span);
    }
}

std::int32_t joinRow(const RunRow& above, const RunRow& row, std::size_t words, std::int32_t run,
                     const RunTable& table)
{
    std::int32_t end = run; // the number of the next run to end
    std::uint64_t carried = 0, carriedContact = 0;
    for (std::size_t w = 0; w < words; ++w) {
        const std::uint64_t objects = row.objects[w];
        if (objects == 0) {
            carried = carriedContact = 0;
            continue;
        }
        const std::int32_t column = std::int32_t(w * 64);
        const std::uint64_t starts = objects & ~(objects << 1 | carried);
        const std::uint64_t lasts = objects & ~(objects >> 1 | row.objects[w + 1] << 63);
        carried = objects >> 63;
        row.starts[w] = starts;
        row.firstRun[w] = run;
        const std::int32_t firstRun = run;
        for (std::uint64_t rest = starts; rest != 0; rest &= rest - 1, ++run) {
            table.begins[run] = column + std::countr_zero(rest);
            table.parents[run] = run;
        }
        for (std::uint64_t rest = lasts; rest != 0; rest &= rest - 1)
            table.ends[end++] = column + std::countr_zero(rest) + 1;

        // Every run of contact pixels lies within one run of this row and one of the row above.
        const std::uint64_t contact = objects & above.objects[w];
        std::uint64_t contacts = contact & ~(contact << 1 | carriedContact);
        carriedContact = contact >> 63;
        for (; contacts != 0; contacts &= contacts - 1) {
            const std::uint64_t upTo = upToLowest(contacts);
            const std::int32_t here = firstRun + std::popcount(starts & upTo) - 1;
            const std::int32_t there = above.firstRun[w] + std::popcount(above.starts[w] & upTo) - 1;
            unite(table.parents, there, here);
        }
    }
    return run;
}

} // namespace ormalux::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ormalux::kernels {

ORMALUX_SIMD_TABLE(packLevels);
ORMALUX_SIMD_TABLE(joinRow);

void packLevels(const GrayRows& gray, std::uint8_t low, std::uint8_t high, std::uint64_t* words,
                std::size_t wordStride)
{
    ORMALUX_SIMD_CALL(packLevels)(gray, low, high, words, wordStride);
}

std::int32_t joinRow(const RunRow& above, const RunRow& row, std::size_t words, std::int32_t run,
                     const RunTable& table)
{
    return ORMALUX_SIMD_CALL(joinRow)(above, row, words, run, table);
}

} // namespace ormalux::kernels
#endif
