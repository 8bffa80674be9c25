#include "image/AutoThreshold.h"

#include "image/WorkPool.h"
#include "image/kernels/RiseKernels.h"

#include <algorithm>
#include <atomic>

namespace ormalux {

namespace {

using kernels::EdgeSum;

/// What the bands found: integers, so that the order of adding does not matter.
class SharedEdgeSum
{
public:
    void add(const EdgeSum& edges)
    {
        m_means.fetch_add(edges.means, std::memory_order_relaxed);
        m_number.fetch_add(edges.number, std::memory_order_relaxed);
    }
    EdgeSum get() const { return {m_means.load(), m_number.load()}; }

private:
    std::atomic<std::int64_t> m_means{0};
    std::atomic<std::int64_t> m_number{0};
};

JobCost costOf(const ConstGrayView& view, int step)
{
    constexpr std::int64_t pixelsPerNanosecond = 10;
    return {std::int64_t(view.width) * view.height / step / pixelsPerNanosecond};
}

/// Calls body(band) for the bands of total lines: those in which steps start anew, whoever works on them.
template <class Body>
void inBands(Job job, std::int64_t total, int step, JobCost cost, const Body& body)
{
    const int bands = step > 1 ? stepBandCount() : bandCount();
    runBands(job, bands, cost, [&](const Band& share) {
        for (std::int64_t i = share.first; i < share.end; ++i)
            body(bandOf(int(i), bands, total));
    });
}

void addRows(const ConstGrayView& view, int step, SharedEdgeSum& sum)
{
    inBands(Job::EdgeLevelRows, view.height, step, costOf(view, step), [&](const Band& band) {
        EdgeSum edges;
        for (std::int64_t y = band.first; y < band.end; y += step)
            edges += kernels::rowEdges(view.row(int(y)), std::size_t(view.width));
        sum.add(edges);
    });
}

void addColumns(const ConstGrayView& view, int step, SharedEdgeSum& sum)
{
    inBands(Job::EdgeLevelColumns, view.width, step, costOf(view, std::min(step, 16)), [&](const Band& band) {
        sum.add(kernels::columnEdges(view.pixels + band.first, view.stride, std::size_t(view.height),
                                     std::size_t(band.size()), std::size_t(step)));
    });
}

} // namespace

long autoThreshold(const ConstGrayView& view, char mode, int step)
{
    if (view.empty() || (mode != 'H' && mode != 'V' && mode != 'A'))
        return 0;
    if (step >= view.width)
        step = view.width / 2;
    step = std::max(step, 1);
    SharedEdgeSum sum;
    if (mode != 'V')
        addRows(view, step, sum);
    if (mode != 'H')
        addColumns(view, step, sum);
    const EdgeSum edges = sum.get();
    if (edges.number == 0)
        return 0;
    // Deliberate: the count passes through single precision on its way to the quotient.
    return long(double(edges.means) / double(float(edges.number)));
}

} // namespace ormalux
