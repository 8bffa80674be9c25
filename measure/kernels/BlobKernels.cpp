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

// Of the pixels from a word's bit i on, which one vector holds.
template <class D, class V>
HWY_INLINE void packVector(D d, V pixels, V lowest, V limit, std::size_t i, std::uint64_t& word)
{
    const auto above = hn::Sub(pixels, lowest);
    hn::StoreMaskBits(d, hn::Eq(hn::Min(above, limit), above),
                      reinterpret_cast<std::uint8_t*>(&word) + i / 8);
}

HWY_INLINE std::uint64_t packWord(const std::uint8_t* pixels, std::size_t count, std::uint8_t low,
                                  std::uint8_t span)
{
    const hn::ScalableTag<std::uint8_t> d;
    const auto lowest = hn::Set(d, low);
    const auto limit = hn::Set(d, span);
    std::uint64_t word = 0;
    if (count == 64) {
        for (std::size_t i = 0; i < 64; i += hn::Lanes(d))
            packVector(d, hn::LoadU(d, pixels + i), lowest, limit, i, word);
        return word;
    }
#if HWY_TARGET == HWY_AVX3_DL
    packVector(d, hn::MaskedLoad(hn::FirstN(d, count), d, pixels), lowest, limit, 0, word);
#else
    // A masked load of bytes would read them all.
    HWY_ALIGN std::uint8_t part[64] = {};
    std::memcpy(part, pixels, count);
    for (std::size_t i = 0; i < 64; i += hn::Lanes(d))
        packVector(d, hn::Load(d, part + i), lowest, limit, i, word);
#endif
    return word & ~std::uint64_t(0) >> (64 - count);
}

#endif

HWY_INLINE std::uint32_t rootOf(std::uint32_t* parents, std::uint32_t label)
{
    while (parents[label] != label) {
        parents[label] = parents[parents[label]];
        label = parents[label];
    }
    return label;
}

// Joins a run of this row, whose label is a root or none, with one of the row above.
HWY_INLINE void join(std::uint32_t* parents, std::uint32_t& above, std::uint32_t& here)
{
    const std::uint32_t a = rootOf(parents, above);
    const std::uint32_t b = kernels::labelOr(here, a);
    const std::uint32_t older = a < b ? a : b;
    parents[a < b ? b : a] = older;
    above = older;
    here = older;
}

// Calls take(i, bit) for the set bits of a word in order, and up to three times more with bit 64: four at
// once, since the number of bits is hard to predict. Returns the number of bits.
template <class Take>
HWY_INLINE std::int32_t forEachBit(std::uint64_t word, Take&& take)
{
    const std::int32_t count = std::popcount(word);
    for (std::int32_t i = 0; i < count; i += 4)
        for (std::int32_t k = i; k < i + 4; ++k, word &= word - 1)
            take(k, std::countr_zero(word));
    return count;
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

std::int32_t joinRow(const RunRow& above, const RunRow& row, std::size_t words, std::uint32_t* parents)
{
    std::int32_t run = 0; // the next to start
    std::int32_t end = 0; // the next to end
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
        run += forEachBit(starts, [&](std::int32_t i, int bit) {
            row.begins[firstRun + i] = column + bit;
            row.labels[firstRun + i] = kernels::noLabel;
        });
        end += forEachBit(lasts, [&](std::int32_t i, int bit) { row.ends[end + i] = column + bit + 1; });

        // Every run of contact pixels lies within one run of this row and one of the row above.
        const std::uint64_t contact = objects & above.objects[w];
        std::uint64_t contacts = contact & ~(contact << 1 | carriedContact);
        carriedContact = contact >> 63;
        for (; contacts != 0; contacts &= contacts - 1) {
            const std::uint64_t upTo = upToLowest(contacts);
            const std::int32_t here = firstRun + std::popcount(starts & upTo) - 1;
            const std::int32_t there = above.firstRun[w] + std::popcount(above.starts[w] & upTo) - 1;
            join(parents, above.labels[there], row.labels[here]);
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

std::int32_t joinRow(const RunRow& above, const RunRow& row, std::size_t words, std::uint32_t* parents)
{
    return ORMALUX_SIMD_CALL(joinRow)(above, row, words, parents);
}

} // namespace ormalux::kernels
#endif
