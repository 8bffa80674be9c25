#include "image/VisionImage.h"

#include "measure/LineGauge.h"
#include "measure/PointGauge.h"

#include <algorithm>

using namespace ormalux;

namespace {

GaugeLine automaticLine(const ConstGrayView& view, int x1, int y1, int x2, int y2, int& threshold)
{
    const GaugeLine line = gaugeLine(view, x1, y1, x2, y2);
    threshold = edgeThreshold(view, line.from, line.to);
    return line;
}

int listEdges(const ConstGrayView& view, const GaugeLine& line, int polarity, int threshold, CPixelArray& ar)
{
    if (threshold == 0)
        return 0;
    appendEdges(view, line, polarity, threshold, ar);
    return ar.GetCount();
}

int placeBestEdge(const ConstGrayView& view, const GaugeLine& line, int polarity, int threshold, long* best_x,
                  long* best_y)
{
    EdgePoint edge;
    if (!strongestEdge(view, line, polarity, threshold, edge))
        return 0;
    if (best_x)
        *best_x = edge.at.x;
    if (best_y)
        *best_y = edge.at.y;
    return 1;
}

} // namespace

int CKestImage::GetPointGauge(int x1, int y1, int x2, int y2, int polarity, CPixelArray& ar) const
{
    if (view().empty())
        return 0;
    int threshold;
    const GaugeLine line = automaticLine(view(), x1, y1, x2, y2, threshold);
    return listEdges(view(), line, polarity, threshold, ar);
}

int CKestImage::GetPointGauge(int x1, int y1, int x2, int y2, int polarity, int threshold,
                              CPixelArray& ar) const
{
    if (view().empty())
        return 0;
    return listEdges(view(), gaugeLine(view(), x1, y1, x2, y2), polarity, threshold, ar);
}

int CKestImage::GetPointGauge(int x1, int y1, int x2, int y2, int polarity, long* best_x, long* best_y) const
{
    if (view().empty())
        return 0;
    int threshold;
    const GaugeLine line = automaticLine(view(), x1, y1, x2, y2, threshold);
    return placeBestEdge(view(), line, polarity, threshold, best_x, best_y);
}

int CKestImage::GetPointGauge(int x1, int y1, int x2, int y2, int polarity, int threshold, long* best_x,
                              long* best_y) const
{
    if (view().empty())
        return 0;
    return placeBestEdge(view(), gaugeLine(view(), x1, y1, x2, y2), polarity, threshold, best_x, best_y);
}

int CKestImage::GetLineGauge(int x1, int y1, int x2, int y2, int polarity, int direction, int step,
                             _stLineGaugeResult& result) const
{
    return GetLineGauge(x1, y1, x2, y2, polarity, direction, step, edgeThreshold(view(), {x1, y1}, {x2, y2}),
                        result);
}

int CKestImage::GetLineGauge(int x1, int y1, int x2, int y2, int polarity, int direction, int step,
                             int threshold, _stLineGaugeResult& result) const
{
    if (direction != DIRECTION_VERTICAL && direction != DIRECTION_HORIZENTAL)
        return 0;
    const RECT area{std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
    LineFit fit;
    if (!fitEdgeLine(view(), {area, polarity, direction == DIRECTION_HORIZENTAL, step, threshold}, fit))
        return 0;
    result = {fit.first.x, fit.first.y, fit.second.x, fit.second.y, fit.center.x, fit.center.y, fit.angle};
    return 1;
}
