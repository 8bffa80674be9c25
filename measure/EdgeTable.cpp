#include "measure/EdgeTable.h"

#include "image/WorkPool.h"
#include "measure/kernels/GaugeKernels.h"

#include <algorithm>
#include <new>

namespace ormalux {

using kernels::columnsAtOnce;

EdgeTable::EdgeTable(const ConstGrayView& view, const LineGaugeTask& task) : m_view(view), m_task(task)
{
    const std::int64_t border = (task.scanColumns ? view.width : view.height) - 1;
    m_first = std::clamp<std::int64_t>(task.scanColumns ? task.area.left : task.area.top, 0, border);
    m_last = std::clamp<std::int64_t>(task.scanColumns ? task.area.right : task.area.bottom, 0, border);
    m_places.reset(new (std::nothrow) Place[std::size_t(m_last - m_first + 1)]);
}

void EdgeTable::measureAll()
{
    const std::int64_t count = m_last - m_first + 1;
    const RECT& area = m_task.area;
    if (m_task.scanColumns) {
        const std::int64_t rows =
            std::min<std::int64_t>(std::int64_t(area.bottom) - area.top + 1, m_view.height);
        const std::int64_t blocks = (count + columnsAtOnce - 1) / columnsAtOnce;
        runBands(Job::LineGaugeFirst, blocks, JobCost{blocks * (rows * 4 + 500)}, [&](const Band& band) {
            measureColumns(m_first + band.first * columnsAtOnce,
                           std::min(m_first + band.end * columnsAtOnce, m_last + 1));
        });
        return;
    }
    const std::int64_t columns =
        std::min<std::int64_t>(std::int64_t(area.right) - area.left + 1, m_view.width);
    runBands(Job::LineGaugeSecond, count, JobCost{count * (columns / 16 + 60)}, [&](const Band& band) {
        for (std::int64_t line = m_first + band.first; line < m_first + band.end; ++line)
            m_places[std::size_t(line - m_first)] = measure(line);
    });
}

bool EdgeTable::find(std::int64_t line, POINT& at)
{
    Place& place = m_places[std::size_t(std::clamp(line, m_first, m_last) - m_first)];
    if (place.x == unknown)
        place = measure(std::clamp(line, m_first, m_last));
    at = {place.x, place.y};
    return place.x != none;
}

EdgeTable::Place EdgeTable::measure(std::int64_t line) const
{
    const RECT& area = m_task.area;
    const GaugeLine scan = m_task.scanColumns ? gaugeLine(m_view, line, area.top, line, area.bottom)
                                              : gaugeLine(m_view, area.left, line, area.right, line);
    EdgePoint edge;
    if (!strongestEdge(m_view, scan, m_task.polarity, m_task.threshold, edge))
        return {none, 0};
    return {edge.at.x, edge.at.y};
}

void EdgeTable::measureColumns(std::int64_t first, std::int64_t end)
{
    const GaugeLine scan = gaugeLine(m_view, 0, m_task.area.top, 0, m_task.area.bottom);
    // A block reads one column more than it measures, and a line one row high is tilted out of its row.
    const std::int64_t blocksEnd = std::min<std::int64_t>(end, m_view.width - 1);
    std::int64_t line = first;
    if (blocksEnd >= columnsAtOnce && scan.to.y < m_view.height &&
        edgeRule(m_task.polarity, m_task.threshold))
        for (; line < blocksEnd; line = std::min(line + columnsAtOnce, blocksEnd))
            measureBlock(scan, line, blocksEnd);
    for (; line < end; ++line)
        m_places[std::size_t(line - m_first)] = measure(line);
}

/// Measures the columns from first on, as many as a block has, up to end; the last block starts earlier than
/// asked and leaves out what is not its own.
void EdgeTable::measureBlock(const GaugeLine& scan, std::int64_t first, std::int64_t end)
{
    const std::int64_t start = std::min(first, end - columnsAtOnce);
    const int rowCount = scan.to.y - scan.from.y + 1;
    const int shiftRow = (rowCount - 1) / 2 + 1;
    std::uint8_t contrasts[columnsAtOnce];
    std::int32_t rows[columnsAtOnce];
    kernels::strongestStepsInColumns(m_view.row(scan.from.y) + start, m_view.stride, rowCount, shiftRow,
                                     *edgeRule(m_task.polarity, m_task.threshold), contrasts, rows);
    for (std::int64_t i = first - start; i < columnsAtOnce; ++i) {
        Place& place = m_places[std::size_t(start + i - m_first)];
        place = contrasts[i] ? Place{LONG(start + i + (rows[i] >= shiftRow)), scan.from.y + rows[i]}
                             : Place{none, 0};
    }
}

} // namespace ormalux
