#include "view/NearestPixels.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <vector>

namespace ormalux {

namespace {

constexpr std::uint32_t opaque = 0xff000000u;

constexpr std::array<std::uint32_t, 256> grayTable()
{
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t level = 0; level < 256; ++level)
        table[level] = opaque | level * 0x010101u;
    return table;
}
constexpr auto grays = grayTable();

std::uint32_t colorAt(const std::uint8_t* pixel)
{
    return opaque | std::uint32_t(pixel[2]) << 16 | std::uint32_t(pixel[1]) << 8 | pixel[0];
}

/// The same in one load, which takes the first byte of the next pixel along: not for the last of a row.
std::uint32_t innerColorAt(const std::uint8_t* pixel)
{
    if constexpr (std::endian::native == std::endian::little) {
        std::uint32_t bytes;
        std::memcpy(&bytes, pixel, sizeof bytes);
        return opaque | bytes;
    } else {
        return colorAt(pixel);
    }
}

/// The entries that name a pixel.
std::span<const int> shownPart(std::span<const int> entries, std::size_t& before)
{
    const auto shows = [](int entry) { return entry != noPixel; };
    const auto first = std::ranges::find_if(entries, shows);
    const auto last = std::find_if_not(first, entries.end(), shows);
    before = std::size_t(first - entries.begin());
    return {first, last};
}

bool isRun(std::span<const int> columns)
{
    return std::ranges::adjacent_find(columns, [](int a, int b) { return b != a + 1; }) == columns.end();
}

/// Four at a time: the loop would otherwise take longer than the pixels.
template <class PixelAt>
void gather(std::span<const std::size_t> offsets, std::uint32_t* out, PixelAt pixelAt)
{
    const std::size_t n = offsets.size();
    const std::size_t* const from = offsets.data();
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4) {
        const std::uint32_t pixels[4] = {pixelAt(from[i]), pixelAt(from[i + 1]), pixelAt(from[i + 2]),
                                         pixelAt(from[i + 3])};
        std::memcpy(out + i, pixels, sizeof pixels);
    }
    for (; i < n; ++i)
        out[i] = pixelAt(from[i]);
}

/// offsets are those of the pixels' bytes in the row; run: each pixel follows the one before.
void copyGrayRow(const std::uint8_t* row, std::span<const std::size_t> offsets, bool run, std::uint32_t* out)
{
    if (!run)
        return gather(offsets, out, [row](std::size_t at) { return grays[row[at]]; });
    const std::uint8_t* const in = row + offsets.front();
    for (std::size_t i = 0; i < offsets.size(); ++i) // read in order, which the compiler vectorises
        out[i] = opaque | in[i] * 0x010101u;
}

/// The row's last pixel, at lastOffset, stands at one end of the offsets, if at all.
void copyColorRow(const std::uint8_t* row, std::span<const std::size_t> offsets, bool run,
                  std::size_t lastOffset, std::uint32_t* out)
{
    std::size_t first = 0;
    std::size_t end = offsets.size();
    for (; first < end && offsets[first] == lastOffset; ++first)
        out[first] = colorAt(row + lastOffset);
    for (; end > first && offsets[end - 1] == lastOffset; --end)
        out[end - 1] = colorAt(row + lastOffset);
    if (!run)
        return gather(offsets.subspan(first, end - first), out + first,
                      [row](std::size_t at) { return innerColorAt(row + at); });
    const std::uint8_t* const in = row + offsets.front();
    for (std::size_t i = first; i < end; ++i)
        out[i] = innerColorAt(in + 3 * i);
}

} // namespace

void copyNearest(const PixelSource& source, std::span<const int> columns, std::span<const int> rows,
                 std::uint32_t* out, std::ptrdiff_t outStride)
{
    std::size_t left = 0;
    const std::span<const int> shown = shownPart(columns, left);
    if (source.empty() || shown.empty())
        return;
    const bool run = isRun(shown);
    const std::size_t step = std::size_t(source.bitCount) / 8;
    const std::size_t lastOffset = std::size_t(source.width - 1) * step;
    std::vector<std::size_t> offsets(shown.size());
    std::ranges::transform(shown, offsets.begin(), [step](int column) { return std::size_t(column) * step; });
    const std::uint32_t* previous = nullptr;
    int previousRow = noPixel;
    for (std::size_t y = 0; y < rows.size(); ++y) {
        if (rows[y] == noPixel)
            continue;
        std::uint32_t* const target = out + std::ptrdiff_t(y) * outStride + std::ptrdiff_t(left);
        if (previous && rows[y] == previousRow)
            std::memcpy(target, previous, shown.size() * sizeof *target);
        else if (source.bitCount == 8)
            copyGrayRow(source.row(rows[y]), offsets, run, target);
        else
            copyColorRow(source.row(rows[y]), offsets, run, lastOffset, target);
        previous = target;
        previousRow = rows[y];
    }
}

} // namespace ormalux
