#include "color/ColorLevels.h"

#include "color/kernels/ChannelKernels.h"
#include "image/HistogramTables.h"
#include "image/kernels/CountKernels.h"
#include "image/kernels/PointKernels.h"

#include <algorithm>

namespace ormalux {

namespace {

/// Pixels taken apart, few enough to stay in the nearest cache.
struct Block
{
    static constexpr std::int64_t capacity = 4096;
    std::uint8_t channels[3][capacity];
};

/// Calls body(block, bgr, count) for count pixels after count pixels.
template <class Byte, class Body>
void eachBlock(Byte* bgr, std::int64_t count, Body body)
{
    alignas(64) Block block;
    for (std::int64_t i = 0; i < count; i += Block::capacity) {
        const std::size_t n = std::size_t(std::min(Block::capacity, count - i));
        kernels::splitChannels(bgr + 3 * i, n, block.channels[0], block.channels[1], block.channels[2]);
        body(block, bgr + 3 * i, n);
    }
}

LookupTable unchanged()
{
    LookupTable table;
    for (std::size_t level = 0; level < table.size(); ++level)
        table[level] = std::uint8_t(level);
    return table;
}

} // namespace

void applyTables(const ColorView& image, const ChannelTables& tables)
{
    if (image.empty())
        return;
    eachBlock(image.pixels, image.pixelCount(), [&](Block& block, std::uint8_t* bgr, std::size_t n) {
        for (std::size_t c = 0; c < 3; ++c)
            kernels::lookUp(block.channels[c], n, tables[c].data());
        kernels::joinChannels(block.channels[0], block.channels[1], block.channels[2], n, bgr);
    });
}

std::array<LevelCounts, 3> countChannelLevels(const ConstColorView& image)
{
    std::array<LevelCounts, 3> counts{};
    if (!image.empty())
        eachBlock(image.pixels, image.pixelCount(),
                  [&](const Block& block, const std::uint8_t*, std::size_t n) {
                      for (std::size_t c = 0; c < 3; ++c)
                          kernels::countValues(block.channels[c], n, counts[c].data());
                  });
    return counts;
}

std::array<std::uint64_t, 3> sumChannels(const ConstColorView& image, int x1, int y1, int x2, int y2)
{
    std::array<std::uint64_t, 3> sums{};
    for (int y = y1; y <= y2; ++y)
        eachBlock(image.at(x1, y), std::int64_t(x2) - x1 + 1,
                  [&](const Block& block, const std::uint8_t*, std::size_t n) {
                      for (std::size_t c = 0; c < 3; ++c)
                          sums[c] += kernels::sumBytes(block.channels[c], n);
                  });
    return sums;
}

ChannelTables buildBalanceTables(const std::array<std::uint64_t, 3>& sums)
{
    const std::uint64_t total = sums[0] + sums[1] + sums[2];
    ChannelTables tables;
    for (std::size_t c = 0; c < 3; ++c) {
        tables[c] = unchanged();
        if (sums[c] > 0)
            for (std::uint64_t level = 0; level < 256; ++level)
                tables[c][level] = std::uint8_t(std::min<std::uint64_t>(255, level * total / (3 * sums[c])));
    }
    return tables;
}

ChannelTables buildColorContrastTables(const std::array<LevelCounts, 3>& counts, std::int64_t total)
{
    ChannelTables tables;
    for (std::size_t c = 0; c < 3; ++c)
        tables[c] = buildAutoContrastTable(counts[c], total).value_or(unchanged());
    return tables;
}

} // namespace ormalux
