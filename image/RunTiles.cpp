#include "image/RotationTile.h"

#include "image/kernels/RotateKernels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ormalux {

namespace {

// Below, two neighbours' columns might differ by 2 for rounding alone; above, runs grow too short.
constexpr double leastSine = 0.0005, greatestSine = 0.3;

// Runs are copied by whole pieces; what is copied too much is overwritten by the next run or cleared as a
// gap.
constexpr int piece = 16;

void copyPieces(const std::uint8_t* from, std::uint8_t* to, int count)
{
    for (int i = 0; i < count; i += piece)
        std::memcpy(to + i, from + i, piece);
}

/// What is known of a target row that has got its runs.
struct RowState
{
    int y = 0;
    int filled = 0; ///< up to here every pixel was reached, but for the gaps
    int gapCount = 0;
    std::int32_t* gaps = nullptr; ///< pairs of first and end
};

std::size_t gapBytes(int width)
{
    return (std::size_t(width) / 2 + 3) * 2 * sizeof(std::int32_t);
}

/// Puts the runs of a target row, which come from left to right: with a negative sine from rising source
/// rows, so that later runs overwrite, with a positive one from falling rows, so that what is there stays.
void putRuns(const RunTable& runs, const RotationPath& path, const PixelBlock& source, std::uint8_t* row,
             RowState& state)
{
    const ColumnRange sourceRows = path.sourceRows(state.y, state.y + 1);
    kernels::rotationRuns(path, sourceRows, state.y, runs);
    std::int32_t* const gaps = state.gaps;
    const int runCount = sourceRows.end - sourceRows.first;
    const int width = source.width;
    const int staying = path.sa() > 0 ? ~0 : 0;
    int filled = 0, gapCount = 0;
    const auto put = [&](const std::uint8_t* from, int target, int count, int floor) {
        const int first = std::max(target, floor), end = target + count;
        if (first >= end)
            return;
        // Without a branch, which would be taken at random.
        gaps[2 * gapCount] = filled;
        gaps[2 * gapCount + 1] = first;
        gapCount += first > filled;
        from += first - target;
        const int copied = (end - first + piece - 1) / piece * piece;
        if (copied <= width - first && end >= filled)
            copyPieces(from, row + first, end - first);
        else
            std::memcpy(row + first, from, std::size_t(end - first));
        filled = std::max(filled, end);
    };
    for (int i = 0; i < runCount; ++i) {
        const int count = runs.count[i], together = runs.together[i], target = runs.target[i];
        if (count <= 0)
            continue;
        const std::uint8_t* const from = source.bytes + runs.from[i];
        const int floor = filled & staying;
        put(from, target, together, floor);
        if (together == count) [[likely]]
            continue;
        // Of pixels that are folded together the later one stays.
        const int again = target + together - 1, rest = count - together;
        if (runs.last[i] - again == rest - 1) {
            put(from + together, again, rest, floor);
            continue;
        }
        const RotationRow motion = path.sourceRow(runs.from[i] / width);
        const double dx = path.dx(runs.from[i] % width);
        for (int k = together; k < count; ++k)
            put(from + k, int(motion.column(dx + k)), 1, floor);
    }
    state.filled = filled;
    state.gapCount = gapCount;
}

/// Fills a tile's gaps row by row; those at its ends stay 0.
class GapCloser
{
public:
    GapCloser(const PixelBlock& target, const HoleFill& fill, std::int64_t firstPixel)
        : m_target(target), m_fill(fill), m_reached{firstPixel, firstPixel}
    {}

    void close(const RowState& row)
    {
        if (row.filled == 0)
            return;
        const std::int64_t base = std::int64_t(row.y) * m_target.width;
        const bool leading = row.gapCount > 0 && row.gaps[0] == 0;
        closeOne(m_reached.end, leading ? base + row.gaps[1] : base);
        for (int gap = leading ? 1 : 0; gap < row.gapCount; ++gap)
            closeOne(base + row.gaps[2 * gap], base + row.gaps[2 * gap + 1]);
        m_reached.end = base + row.filled;
    }

    Reached finish(std::int64_t endPixel) const
    {
        clear(m_reached.end, endPixel);
        return m_any ? m_reached : Reached{};
    }

private:
    void clear(std::int64_t first, std::int64_t end) const
    {
        if (first < end)
            std::memset(m_target.bytes + first, 0, std::size_t(end - first));
    }

    void closeOne(std::int64_t first, std::int64_t end)
    {
        if (m_any && end - first == 1) {
            std::uint8_t* const hole = m_target.bytes + first;
            *hole = std::uint8_t((hole[-1] + hole[1]) >> 1);
            return;
        }
        clear(first, end);
        if (m_any)
            m_fill.fill(first, end);
        else
            m_reached.first = end;
        m_any = true;
    }

    PixelBlock m_target;
    const HoleFill& m_fill;
    Reached m_reached;
    bool m_any = false;
};

} // namespace

bool RunTiles::suit(const PixelBlock& image, const RotationPath& path)
{
    const double sine = std::abs(path.sa());
    return image.bytesPerPixel == 1 && image.stride == image.rowBytes() && path.exactDistances() &&
           path.ca() > 0 && sine >= leastSine && sine <= greatestSine;
}

std::size_t RunTiles::scratchBytes(int) const
{
    return RunTable::bytesFor(std::size_t(m_source.height)) + gapBytes(m_target.width);
}

Reached RunTiles::make(TileRows rows, std::byte* scratch) const
{
    const RunTable runs(std::size_t(m_source.height), scratch);
    RowState row;
    row.gaps = reinterpret_cast<std::int32_t*>(scratch + RunTable::bytesFor(std::size_t(m_source.height)));
    GapCloser closer(m_target, m_fill, std::int64_t(rows.top) * m_target.width);
    for (row.y = rows.top; row.y < rows.end; ++row.y) {
        putRuns(runs, m_path, m_source, m_target.row(row.y), row);
        // Gaps come last: a pixel beside one may have been overwritten meanwhile.
        closer.close(row);
    }
    return closer.finish(std::int64_t(rows.end) * m_target.width);
}

} // namespace ormalux
