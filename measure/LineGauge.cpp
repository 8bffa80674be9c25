#include "measure/LineGauge.h"

#include "image/WorkPool.h"
#include "measure/EdgeTable.h"
#include "measure/Geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormalux {

namespace {

/// Columns further apart than this are measured one by one, nearer ones 64 at a time.
constexpr std::int64_t sparseStep = 16;

struct DirectionSum
{
    double sum = 0;
    std::int64_t count = 0;

    void add(double direction, std::int64_t n)
    {
        sum = n == 1 ? sum + direction : addRepeatedly(sum, direction, n);
        count += n;
    }
};

/// From how many lines on, this one included, the walk meets lines and mirror lines that are like these.
std::int64_t linesAlike(const EdgeTable& table, std::int64_t line, std::int64_t mirror)
{
    constexpr std::int64_t endless = std::numeric_limits<std::int64_t>::max();
    const std::int64_t first = table.firstLine(), last = table.lastLine();
    const std::int64_t ahead = line >= last ? endless : std::max<std::int64_t>(first - line, 0) + 1;
    const std::int64_t behind = mirror <= first ? endless : std::max<std::int64_t>(mirror - last, 0) + 1;
    return std::min(ahead, behind);
}

/// Adds the directions of the pairs (line, ends - line) from first on; a line without a pair is followed by
/// the next one, others by the one a step further.
void addBand(EdgeTable& table, std::int64_t first, std::int64_t end, std::int64_t ends, std::int64_t step,
             DirectionSum& directions)
{
    for (std::int64_t line = first; line < end;) {
        const std::int64_t alike = std::min(linesAlike(table, line, ends - line), end - line);
        POINT a, b;
        if (!table.find(line, a) || !table.find(ends - line, b)) {
            line += alike;
            continue;
        }
        const std::int64_t pairs = (alike + step - 1) / step;
        directions.add(directionDegrees(std::int64_t(b.x) - a.x, std::int64_t(b.y) - a.y), pairs);
        line += pairs * step;
    }
}

} // namespace

double addRepeatedly(double sum, double value, std::int64_t n)
{
    while (n-- > 0) {
        const double before = sum;
        sum += value;
        if (sum == before)
            break;
        // Two equal increments in a row stay equal up to the next power of two: nothing but it changes
        // rounding.
        const double increment = (sum + value) - sum;
        const double following = (sum + increment + value) - (sum + increment);
        const double room = std::floor((std::ldexp(1.0, std::ilogb(sum) + 1) - sum) / increment) - 2;
        if (n < 16 || increment != following || !(room >= 1))
            continue;
        const std::int64_t skipped = std::min(n, std::int64_t(std::min(room, 1e15)));
        sum += double(skipped) * increment;
        n -= skipped;
    }
    return sum;
}

bool fitEdgeLine(const ConstGrayView& view, const LineGaugeTask& task, LineFit& fit)
{
    if (view.empty())
        return false;
    EdgeTable table(view, task);
    const RECT& area = task.area;
    const std::int64_t first = task.scanColumns ? area.left : area.top;
    const std::int64_t extent =
        (task.scanColumns ? std::int64_t(area.right) : std::int64_t(area.bottom)) - first;
    const std::int64_t center = first + extent / 2;
    POINT edge;
    if (!table.valid() || !table.find(center, edge))
        return false;
    // Deliberate: rows are measured one by one, whatever the step.
    const std::int64_t step = task.scanColumns ? std::max<std::int64_t>(task.step, 1) : 1;
    if (step <= sparseStep)
        table.measureAll();
    // Deliberate: the centre line pairs with itself and counts as 0, and of an even extent the first line has
    // no counterpart; callers rely on these very angles.
    DirectionSum directions;
    const int bands = task.bands > 0 ? task.bands : stepBandCount();
    for (int i = 0; i < bands; ++i) {
        const Band band = bandOf(i, bands, extent);
        addBand(table, first + band.first, first + band.end, 2 * center, step, directions);
    }
    const double mean = directions.sum / double(directions.count);
    fit.center = edge;
    fit.angle = mean - 90;
    if (task.scanColumns) {
        fit.first = rotated(area.left, edge.y, -(mean - 90), int(center), edge.y);
        fit.second = rotated(area.right, edge.y, -(mean - 90), int(center), edge.y);
    } else {
        fit.first = rotated(edge.x, area.top, -mean, edge.x, int(center));
        fit.second = rotated(edge.x, area.bottom, -mean, edge.x, int(center));
    }
    return true;
}

} // namespace ormalux
