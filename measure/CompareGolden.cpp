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

    /// Of the rows around y that are known.
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
        extremes.collect(rows, columns, y, picture.height);
        kernels::markOutliers(picture.row(y) + columns.begin, extremes.least() + columns.begin,
                              extremes.greatest() + columns.begin, std::size_t(grow), std::uint8_t(threshold),
                              out + columns.begin, std::size_t(columns.end - columns.begin));
        compared += columns.end - columns.begin;
    }
    return compared;
}

} // namespace ormalux
