#pragma once

#include "platform/Export.h"

#include <cstdint>
#include <memory>
#include <type_traits>

namespace ormalux {

/// The kinds of job, in the order in which their workers' records are made and their threads ended. Every
/// kind has workers of its own; their threads start when it is first worth it.
enum class Job
{
    EdgeLevelRows,
    EdgeLevelColumns,
    RotateMove,
    RotateFill,
    HalfTurn,
    MirrorHorizontal,
    MirrorVertical,
    DoubleThreshold,
    Threshold,
    AdaptiveThreshold,
    GraySum,
    PixelCollection,
    OcrMatch,
    PatternMatch,
    RangedMatch,
    Convolution,
    LineGaugeFirst,
    LineGaugeSecond,
    ColorErosion,
    ColorDilation,
    HistogramCount,
    Count
};

/// One worker's share of a job: the indices first up to, excluding, end.
struct Band
{
    int index; ///< which band, 0 .. bandCount() - 1
    std::int64_t first;
    std::int64_t end;

    std::int64_t size() const { return end - first; }
};

/// The number of bands that every job is cut into: the processors that the module found when it loaded; 1 in
/// a forked child, where no workers share the job.
ORMALUX_API int bandCount();

/// The number of bands in which the steps of measurements that skip lines start anew, on which their results
/// depend: bandCount(), but a forked child keeps its parent's.
int stepBandCount();

/// For tests and the benchmark: cuts jobs into n bands from now on; 0 restores the number found at load. Not
/// to be called while operations run.
void setBandCount(int n);

/// The band with the given index of bands of total / bands indices each; the last one takes the remainder.
ORMALUX_API Band bandOf(int index, int bands, std::int64_t total);

/// What a whole job takes on one core, estimated: it decides whether waking workers pays.
struct JobCost
{
    std::int64_t nanoseconds;
};

namespace pool_detail {
using Body = void (*)(void* context, const Band& band);
void run(Job job, std::int64_t total, JobCost cost, Body body, void* context);
} // namespace pool_detail

/// Runs body(const Band&) once for every band and returns when all are done; empty bands run too.
///
/// Who runs a band is left open: the caller takes every band that no worker has claimed, and a cheap job
/// stays on the calling thread. A body writes its own band or its own accumulator only, and what the bands
/// made is joined by the caller in band order, so no result depends on timing. Callers of one kind wait for
/// each other. A body may run a job of a kind that never runs this one (a range match runs pattern matches).
/// A body must not throw.
template <class F>
void runBands(Job job, std::int64_t total, JobCost cost, F&& body)
{
    pool_detail::run(
        job, total, cost,
        [](void* context, const Band& band) { (*static_cast<std::remove_reference_t<F>*>(context))(band); },
        const_cast<void*>(static_cast<const void*>(std::addressof(body))));
}

} // namespace ormalux
