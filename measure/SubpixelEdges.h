#pragma once

#include "measure/EdgeMeasure.h"
#include "measure/EdgeProfile.h"

#include <span>
#include <vector>

namespace ormalux {

/// Whether every setting is a number within its range.
bool validSettings(const CEdgeSettings& settings);

/// Finds edges along scans; one object takes its memory once for all of them.
///
/// The profile's steps are smoothed by a Gaussian, of which the spline of the samples is a part. An edge is a
/// run of smoothed steps in one direction between two valleys of less than half its peak; its contrast is
/// their sum within 3 sigma + 1 about the peak, which smoothing leaves as it is. Its position u solves
/// sum(step[i] * q(t[i] - u)) = 0 on the steps not smoothed, where q(t) = t up to the inner reach and falls
/// to 0 at the outer one: the centre of the steps, which does not depend on where between two pixels an edge
/// lies as long as all its steps lie within the inner reach (the peak of a Gaussian would be off by up to
/// 0.05 pixels). On a blurred edge both reaches grow to at most threefold, next to another edge they shrink.
class EdgeFinder
{
public:
    EdgeFinder(const ConstGrayView& view, const CEdgeSettings& settings);

    /// The selected edges in the order of the scan; valid until the next call. None for settings out of
    /// range. Throws std::bad_alloc.
    std::span<const CEdgePoint> find(const ScanLine& scan);
    /// The edge of a scan that makes at most one point: the first, the last, or else the strongest. Null:
    /// none.
    const CEdgePoint* findOne(const ScanLine& scan);

private:
    /// Smoothed steps of one sign between two valleys.
    struct Run
    {
        int first;
        int end;
        int peak;
        double contrast; ///< signed
    };
    struct Centre
    {
        double at;
        double variance;
    };
    void findAll(const ScanLine& scan);
    bool runAbout(int peak, Run& run) const;
    int valley(int peak, int direction) const;
    double neighbour(const Run& run, int direction, int reach) const;
    double locate(const Run& run) const;
    Centre centre(const Run& run) const;
    double outerReach(const Run& run, const Centre& centre, double widening) const;
    bool wanted(float step) const
    {
        return m_settings.polarity == CEdgePolarity::Any ||
               (step > 0) == (m_settings.polarity == CEdgePolarity::DarkBright);
    }

    ConstGrayView m_view;
    CEdgeSettings m_settings;
    bool m_valid;
    double m_inner = 0;
    double m_outer = 0;
    double m_sharpVariance = 0;
    int m_beside = 0; ///< steps about a peak that count for its contrast
    EdgeProfile m_profile;
    std::vector<float> m_kernel; ///< from its middle on
    std::vector<float> m_room;
    const float* m_smooth = nullptr; ///< the smoothed steps of the scan, within m_room
    int m_count = 0;
    std::vector<CEdgePoint> m_edges;
};

} // namespace ormalux
