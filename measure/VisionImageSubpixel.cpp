#include "image/VisionImage.h"

#include "measure/PlaneRelations.h"
#include "measure/RobustCircle.h"
#include "measure/RobustLine.h"
#include "measure/SubpixelEdges.h"

#include <new>

using namespace ormalux;

namespace {

/// 1 when measure says that it found something; 0 also when memory is short.
template <class Measure>
int found(Measure measure)
{
    try {
        return measure() ? 1 : 0;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

} // namespace

int CKestImage::GetEdges(double x1, double y1, double x2, double y2, const CEdgeSettings& settings,
                         std::vector<CEdgePoint>& edges) const
{
    found([&] {
        EdgeFinder finder(view(), settings);
        const auto more = finder.find({x1, y1, x2, y2});
        edges.insert(edges.end(), more.begin(), more.end());
        return true;
    });
    return int(edges.size());
}

int CKestImage::GetEdgeLine(const CEdgeBox& box, const CEdgeSettings& settings, CEdgeLine& line) const
{
    return found([&] { return measureLine(view(), box, settings, line); });
}

int CKestImage::GetEdgeCircle(const CEdgeRing& ring, const CEdgeSettings& settings, CEdgeCircle& circle) const
{
    return found([&] { return measureCircle(view(), ring, settings, circle); });
}

double CKestImage::GetDistance(const CPlanePoint& a, const CPlanePoint& b)
{
    return distance(a, b);
}

double CKestImage::GetDistance(const CPlanePoint& point, const CPlaneLine& line)
{
    return distance(point, line);
}

double CKestImage::GetDistance(const CPlaneLine& first, const CPlaneLine& second)
{
    return distance(first, second);
}

double CKestImage::GetLineAngle(const CPlaneLine& a, const CPlaneLine& b)
{
    return angleBetween(a, b);
}

int CKestImage::GetIntersection(const CPlaneLine& a, const CPlaneLine& b, CPlanePoint& at)
{
    return intersection(a, b, at) ? 1 : 0;
}
