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

/// One target row in the making. Its runs come from left to right: with a negative sine from rising source
/// rows, so that later runs overwrite, with a positive one from falling rows, so that what is there stays.
class RowOfRuns
{
public:
    RowOfRuns(std::uint8_t* row, int width, bool rising, std::int32_t* gaps)
        : m_row(row), m_width(width), m_rising(rising), m_gaps(gaps)
    {}

    static std::size_t gapBytes(int width) { return (std::size_t(width) / 2 + 2) * 2 * sizeof(std::int32_t); }

    /// The pixels up to here are there, but for the gaps.
    int filled() const { return m_filled; }
    int gapCount() const { return m_gapCount; }

    /// Begins the runs of the next source row.
    void beginSourceRow() { m_floor = m_rising ? 0 : m_filled; }

    void put(const std::uint8_t* from, int target, int count)
    {
        const int first = std::max(target, m_floor);
        const int end = target + count;
        if (first >= end)
            return;
        if (first > m_filled) {
            m_gaps[2 * m_gapCount] = m_filled;
            m_gaps[2 * m_gapCount + 1] = first;
            ++m_gapCount;
        }
        from += first - target;
        const int copied = (end - first + piece - 1) / piece * piece;
        if (copied <= m_width - first && end >= m_filled)
            copyPieces(from, m_row + first, end - first);
        else
            std::memcpy(m_row + first, from, std::size_t(end - first));
        m_filled = std::max(m_filled, end);
    }

private:
    std::uint8_t* m_row;
    int m_width;
    bool m_rising;
    std::int32_t* m_gaps; // pairs of first and end
    int m_gapCount = 0;
    int m_filled = 0;
    int m_floor = 0;
};

/// Puts a run in which some neighbours share their target column, piece by piece: the later one stays.
void putFolded(RowOfRuns& target, const RotationPath& path, const RotationRow& row,
               const std::uint8_t* source, int first, int end)
{
    const auto column = [&](int x) { return int(row.column(path.dx(x))); };
    while (first < end) {
        const int start = column(first);
        // The longest run without a fold; columns less their sources only fall.
        int together = 1, folded = end - first + 1;
        while (folded - together > 1) {
            const int middle = together + (folded - together) / 2;
            (column(first + middle - 1) - start == middle - 1 ? together : folded) = middle;
        }
        target.put(source + first, start, together);
        first += together;
    }
}

void putRuns(RowOfRuns& target, const RotationPath& path, const PixelBlock& source, int y,
             const RunTable& runs)
{
    const bool rising = path.sa() < 0;
    const ColumnRange from = path.sourceRows(y, y + 1);
    kernels::rotationRuns(path, from, y, runs);
    for (int i = 0; i < from.end - from.first; ++i) {
        const int count = runs.end[i] - runs.first[i];
        if (count <= 0)
            continue;
        const int sourceY = rising ? from.first + i : from.end - 1 - i;
        target.beginSourceRow();
        if (runs.last[i] - runs.target[i] == count - 1)
            target.put(source.row(sourceY) + runs.first[i], runs.target[i], count);
        else
            putFolded(target, path, path.sourceRow(sourceY), source.row(sourceY), runs.first[i], runs.end[i]);
    }
}

} // namespace

bool RunTiles::suit(const PixelBlock& image, const RotationPath& path)
{
    const double sine = std::abs(path.sa());
    return image.bytesPerPixel == 1 && image.stride == image.rowBytes() && path.exactDistances() &&
           path.ca() > 0 && sine >= leastSine && sine <= greatestSine;
}

std::size_t RunTiles::scratchBytes(int) const
{
    return RunTable::bytesFor(std::size_t(m_source.height)) + RowOfRuns::gapBytes(m_target.width);
}

Reached RunTiles::make(TileRows rows, std::byte* scratch) const
{
    const RunTable runs(std::size_t(m_source.height), scratch);
    auto* const gaps =
        reinterpret_cast<std::int32_t*>(scratch + RunTable::bytesFor(std::size_t(m_source.height)));
    const bool rising = m_path.sa() < 0;
    const std::int64_t width = m_target.width;
    Reached reached{rows.top * width, rows.top * width};
    bool any = false;
    const auto close = [&](std::int64_t first, std::int64_t end) {
        if (first < end)
            std::memset(m_target.bytes + first, 0, std::size_t(end - first));
        if (any)
            m_fill.fill(first, end);
        else
            reached.first = end;
        any = true;
    };
    for (int y = rows.top; y < rows.end; ++y) {
        RowOfRuns row(m_target.row(y), m_target.width, rising, gaps);
        putRuns(row, m_path, m_source, y, runs);
        if (row.filled() == 0)
            continue;
        // Gaps come last: a pixel beside one may have been overwritten meanwhile.
        const std::int64_t base = y * width;
        const bool leading = row.gapCount() > 0 && gaps[0] == 0;
        close(reached.end, leading ? base + gaps[1] : base);
        for (int gap = leading ? 1 : 0; gap < row.gapCount(); ++gap)
            close(base + gaps[2 * gap], base + gaps[2 * gap + 1]);
        reached.end = base + row.filled();
    }
    std::memset(m_target.bytes + reached.end, 0, std::size_t(rows.end * width - reached.end));
    return any ? reached : Reached{};
}

} // namespace ormalux
