#include "measure/CompareGolden.h"

#include "image/ScratchBytes.h"
#include "measure/AlignedRows.h"
#include "measure/kernels/CompareKernels.h"

#include <algorithm>
#include <cstring>

namespace ormalux {

namespace {

/// The least and greatest levels of each column over some rows, with as many columns beside it as are
/// forgiven.
class ColumnExtremes
{
public:
    ColumnExtremes(int width, int grow)
        : m_width(std::size_t(width)), m_grow(grow), m_margin(std::size_t(wholeLines(grow))),
          m_stride(std::size_t(wholeLines(width)) + 2 * m_margin), m_bytes(scratchBytes(2 * m_stride))
    {
        if (!m_bytes)
            return;
        std::memset(m_bytes.get(), 255, m_stride);
        std::memset(m_bytes.get() + m_stride, 0, m_stride);
    }
    bool made() const { return m_bytes != nullptr; }
    std::uint8_t* least() const { return m_bytes.get() + m_margin; }
    std::uint8_t* greatest() const { return least() + m_stride; }

    /// Of the rows around y that are known, of those columns that are.
    void collect(const AlignedRows& rows, AlignedRows::Known columns, int y, int height)
    {
        const std::uint8_t *low[2 * maxGrow + 1], *high[2 * maxGrow + 1];
        // A golden picture that is read itself has nothing beside what is known.
        const std::size_t begin = rows.direct() ? std::size_t(columns.begin) : 0;
        const std::size_t end = rows.direct() ? std::size_t(columns.end) : m_width;
        std::size_t n = 0;
        for (int row = std::max(y - m_grow, 0); row <= std::min(y + m_grow, height - 1); ++row) {
            if (rows.direct() && rows.known(row).none())
                continue;
            low[n] = rows.least(row) + begin;
            high[n++] = rows.greatest(row) + begin;
        }
        kernels::columnExtremes(low, rows.direct() ? low : high, n, least() + begin, greatest() + begin,
                                end - begin);
    }

private:
    std::size_t m_width;
    int m_grow;
    std::size_t m_margin;
    std::size_t m_stride;
    ScratchBytes m_bytes;
};

/// The places of a comparison's row.
struct MarkedRow
{
    const std::uint8_t* pixels;
    std::uint8_t* marks;
    std::uint8_t threshold;
};

void markColumns(const AlignedRows& rows, ColumnExtremes& extremes, AlignedRows::Known columns, int y,
                 int height, int grow, const MarkedRow& row)
{
    const int begin = columns.begin;
    // The columns beside those marked are seen, too.
    const AlignedRows::Known all = rows.known(y);
    const AlignedRows::Known seen{std::max(begin - grow, all.begin), std::min(columns.end + grow, all.end)};
    extremes.collect(rows, seen, y, height);
    kernels::markOutliers(row.pixels + begin, extremes.least() + begin, extremes.greatest() + begin,
                          std::size_t(grow), row.threshold, row.marks + begin,
                          std::size_t(columns.end - begin));
}

// What is done most, forgiving one pixel of a golden picture that is read itself: only the ends of the row
// take the long way.
void markRowOfThree(const AlignedRows& rows, ColumnExtremes& extremes, AlignedRows::Known columns, int y,
                    int height, const MarkedRow& row)
{
    const auto levelsOf = [&](int other) {
        return rows.least(other >= 0 && other < height && !rows.known(other).none() ? other : y);
    };
    const int first = columns.begin + 1, end = columns.end - 1;
    markColumns(rows, extremes, {columns.begin, first}, y, height, 1, row);
    const std::uint8_t* const golden[] = {levelsOf(y - 1) + first, levelsOf(y) + first,
                                          levelsOf(y + 1) + first};
    kernels::markOutliersOfThree(row.pixels + first, golden, row.threshold, row.marks + first,
                                 std::size_t(end - first));
    markColumns(rows, extremes, {end, columns.end}, y, height, 1, row);
}

} // namespace

std::int64_t compareGolden(ConstGrayView picture, ConstGrayView golden, const CAlignment& alignment,
                           int threshold, int grow, GrayView marks)
{
    if (picture.empty() || golden.empty() || threshold < 0 || threshold > 255 || grow < 0 || grow > maxGrow)
        return 0;
    AlignedRows rows(golden, alignment, picture.width, picture.height, 2 * grow + 1);
    ColumnExtremes extremes(picture.width, grow);
    if (!rows.valid() || !extremes.made() || !rows.prepare())
        return 0;
    std::int64_t compared = 0;
    int fetched = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (; fetched < std::min(y + grow + 1, picture.height); ++fetched)
            rows.fetch(fetched);
        const AlignedRows::Known columns = rows.known(y);
        std::uint8_t* const out = marks.row(y);
        std::memset(out, 0, std::size_t(columns.begin));
        std::memset(out + columns.end, 0, std::size_t(picture.width - columns.end));
        if (columns.none())
            continue;
        const MarkedRow row{picture.row(y), out, std::uint8_t(threshold)};
        if (rows.direct() && grow == 1 && columns.end - columns.begin > 2)
            markRowOfThree(rows, extremes, columns, y, picture.height, row);
        else
            markColumns(rows, extremes, columns, y, picture.height, grow, row);
        compared += columns.end - columns.begin;
    }
    return compared;
}

} // namespace ormalux
