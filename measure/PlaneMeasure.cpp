#include "measure/PlaneMeasure.h"

#include "measure/PlaneRelations.h"
#include "measure/PlaneScale.h"

#include <new>

using namespace ormalux;

CKestPlaneScale::CKestPlaneScale() : m_map{1, 0, 0, 0, 1, 0, 0, 0, 1} {}

int CKestPlaneScale::SetPerPixel(double units)
{
    if (!(units > 1e-300 && units < 1e300))
        return 0;
    m_map = {units, 0, 0, 0, units, 0, 0, 0, 1};
    return 1;
}

int CKestPlaneScale::SetPoints(const std::vector<CPlanePair>& pairs)
{
    try {
        return fitHomography(pairs, m_map) ? 1 : 0;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

int CKestPlaneScale::Map(const CPlanePoint& picture, CPlanePoint& plane) const
{
    return mapPoint(m_map, picture, plane) ? 1 : 0;
}

double CKestPlaneScale::GetScale(const CPlanePoint& picture) const
{
    return localScale(m_map, picture);
}

double CKestPlaneScale::GetDistance(const CPlanePoint& a, const CPlanePoint& b) const
{
    CPlanePoint from, to;
    return mapPoint(m_map, a, from) && mapPoint(m_map, b, to) ? distance(from, to) : -1;
}
