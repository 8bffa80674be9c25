#include "view/NearestPixels.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace ormalux {

namespace {

constexpr std::array<std::uint32_t, 256> grayTable()
{
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t level = 0; level < 256; ++level)
        table[level] = 0xff000000u | level * 0x010101u;
    return table;
}
constexpr auto grays = grayTable();

std::uint32_t colorAt(const std::uint8_t* pixel)
{
    return 0xff000000u | std::uint32_t(pixel[2]) << 16 | std::uint32_t(pixel[1]) << 8 | pixel[0];
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

void copyRow(const PixelSource& source, const std::uint8_t* row, std::span<const int> columns, bool run,
             std::uint32_t* out)
{
    const std::size_t n = columns.size();
    if (source.bitCount == 8) {
        if (run) {
            const std::uint8_t* in = row + columns.front();
            for (std::size_t i = 0; i < n; ++i)
                out[i] = 0xff000000u | in[i] * 0x010101u;
        } else {
            for (std::size_t i = 0; i < n; ++i)
                out[i] = grays[row[columns[i]]];
        }
        return;
    }
    for (std::size_t i = 0; i < n; ++i)
        out[i] = colorAt(row + std::ptrdiff_t(3) * columns[i]);
}

} // namespace

void copyNearest(const PixelSource& source, std::span<const int> columns, std::span<const int> rows,
                 std::uint32_t* out, std::ptrdiff_t outStride)
{
    std::size_t left = 0;
    const std::span<const int> shown = shownPart(columns, left);
    if (source.empty() || shown.empty())
        return;
    // Steady single steps read the row in order, which the compiler vectorises.
    const bool run = isRun(shown);
    const std::uint32_t* previous = nullptr;
    int previousRow = noPixel;
    for (std::size_t y = 0; y < rows.size(); ++y) {
        if (rows[y] == noPixel)
            continue;
        std::uint32_t* const target = out + std::ptrdiff_t(y) * outStride + std::ptrdiff_t(left);
        if (previous && rows[y] == previousRow)
            std::memcpy(target, previous, shown.size() * sizeof *target);
        else
            copyRow(source, source.row(rows[y]), shown, run, target);
        previous = target;
        previousRow = rows[y];
    }
}

} // namespace ormalux
