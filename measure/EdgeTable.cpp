#include "measure/EdgeTable.h"

#include "image/WorkPool.h"
#include "measure/LineWalk.h"
#include "measure/kernels/GaugeKernels.h"

#include <algorithm>
#include <new>

namespace ormalux {

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
        runBands(Job::LineGaugeFirst, count, JobCost{count * (rows / 16 + 10)},
                 [&](const Band& band) { measureColumns(m_first + band.first, m_first + band.end); });
        return;
    }
    const std::int64_t columns =
        std::min<std::int64_t>(std::int64_t(area.right) - area.left + 1, m_view.width);
    runBands(Job::LineGaugeSecond, count, JobCost{count * (columns / 16 + 20)},
             [&](const Band& band) { measureRows(m_first + band.first, m_first + band.end); });
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

void EdgeTable::measureRows(std::int64_t first, std::int64_t end)
{
    const GaugeLine scan = gaugeLine(m_view, m_task.area.left, 0, m_task.area.right, 0);
    const auto rule = edgeRule(m_task.polarity, m_task.threshold);
    std::int64_t line = first;
    // Every line goes down one row at the same column. The last row is tilted out of the picture.
    const std::int64_t alike = std::min<std::int64_t>(end, m_view.height - 1);
    const LineWalk walk(scan.from, scan.to);
    if (rule && !walk.steep() && scan.to.x < m_view.width) {
        const auto turn = std::size_t(walk.stepOfSideways(1)), count = std::size_t(walk.count());
        for (; line < alike; ++line) {
            const std::uint8_t* from = m_view.row(int(line)) + scan.from.x;
            const auto step = kernels::strongestStepOfTurn(from, from + m_view.stride, turn, count, *rule);
            m_places[std::size_t(line - m_first)] =
                step.contrast ? Place{scan.from.x + LONG(step.index), LONG(line + (step.index >= turn))}
                              : Place{none, 0};
        }
    }
    for (; line < end; ++line)
        m_places[std::size_t(line - m_first)] = measure(line);
}

void EdgeTable::measureColumns(std::int64_t first, std::int64_t end)
{
    const GaugeLine scan = gaugeLine(m_view, 0, m_task.area.top, 0, m_task.area.bottom);
    const auto rule = edgeRule(m_task.polarity, m_task.threshold);
    std::int64_t line = first;
    // The last column is tilted out of the picture, and so is a line that is one row high in the last row.
    const std::int64_t together = std::min<std::int64_t>(end, m_view.width - 1);
    if (rule && scan.to.y < m_view.height)
        for (; line < together; line = std::min(line + kernels::maxColumns, together))
            measureTogether(scan, *rule, line, std::min(line + kernels::maxColumns, together));
    for (; line < end; ++line)
        m_places[std::size_t(line - m_first)] = measure(line);
}

void EdgeTable::measureTogether(const GaugeLine& scan, kernels::StepRule rule, std::int64_t first,
                                std::int64_t end)
{
    const int rowCount = scan.to.y - scan.from.y + 1;
    const int shiftRow = (rowCount - 1) / 2 + 1;
    std::uint8_t contrasts[kernels::maxColumns];
    std::int32_t rows[kernels::maxColumns];
    kernels::strongestStepsInColumns(m_view.row(scan.from.y) + first, m_view.stride, int(end - first),
                                     rowCount, shiftRow, rule, contrasts, rows);
    for (std::int64_t i = 0; i < end - first; ++i) {
        Place& place = m_places[std::size_t(first + i - m_first)];
        place = contrasts[i] ? Place{LONG(first + i + (rows[i] >= shiftRow)), scan.from.y + rows[i]}
                             : Place{none, 0};
    }
}

} // namespace ormalux
