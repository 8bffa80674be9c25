#include "measure/RobustLine.h"

#include "measure/RobustFit.h"
#include "measure/SubpixelEdges.h"

#include <numbers>

namespace ormalux {

namespace {

constexpr std::size_t voters = 64;
constexpr std::size_t pairEnds = 10;

/// A line through a point with a unit direction.
struct LineModel
{
    double x = 0;
    double y = 0;
    double dx = 1;
    double dy = 0;

    double distance(const FitPoint& p) const { return (p.y - y) * dx - (p.x - x) * dy; }
    double change(const LineModel& before) const
    {
        const FitPoint here{x, y}, there{x + 100 * dx, y + 100 * dy};
        return std::abs(before.distance(here)) + std::abs(before.distance(there));
    }
};

/// Total least squares of the weighted points.
bool fitLine(const std::vector<FitPoint>& points, LineModel& model)
{
    double sum = 0, x = 0, y = 0;
    for (const FitPoint& p : points) {
        sum += p.weight;
        x += p.weight * p.x;
        y += p.weight * p.y;
    }
    if (!(sum > 0))
        return false;
    x /= sum;
    y /= sum;
    double xx = 0, xy = 0, yy = 0;
    for (const FitPoint& p : points) {
        xx += p.weight * (p.x - x) * (p.x - x);
        xy += p.weight * (p.x - x) * (p.y - y);
        yy += p.weight * (p.y - y) * (p.y - y);
    }
    // The direction of the larger eigenvalue, from the column that loses no digits.
    const double half = (xx - yy) / 2, root = std::sqrt(half * half + xy * xy);
    double dx = half >= 0 ? half + root : xy, dy = half >= 0 ? xy : root - half;
    const double size = std::sqrt(dx * dx + dy * dy);
    if (!(size > 0))
        return false;
    model = {x, y, dx / size, dy / size};
    return true;
}

/// The line of the pair of points that most points lie near.
bool findLine(const std::vector<FitPoint>& points, LineModel& model)
{
    const std::vector<FitPoint> judges = evenlyChosen(points, voters), ends = evenlyChosen(points, pairEnds);
    MedianVote<LineModel> vote(judges);
    for (std::size_t i = 0; i < ends.size(); ++i)
        for (std::size_t j = i + 1; j < ends.size(); ++j) {
            const double dx = ends[j].x - ends[i].x, dy = ends[j].y - ends[i].y;
            const double size = std::sqrt(dx * dx + dy * dy);
            if (size > 0)
                vote.offer({ends[i].x, ends[i].y, dx / size, dy / size});
        }
    model = vote.best();
    return vote.any();
}

/// A box with its directions: u along it, v to the right of that.
struct Frame
{
    explicit Frame(const CEdgeBox& box)
        : x(box.center_x), y(box.center_y), cosine(std::cos(box.angle * std::numbers::pi / 180)),
          sine(std::sin(box.angle * std::numbers::pi / 180))
    {}
    double imageX(double u, double v) const { return x + u * cosine + v * sine; }
    double imageY(double u, double v) const { return y - u * sine + v * cosine; }

    double x;
    double y;
    double cosine;
    double sine;
};

bool validBox(const CEdgeBox& box)
{
    const double farthest = EdgeProfile::farthest;
    return box.scans >= 3 && box.scans <= 10000 && box.length > 0 && box.length <= farthest &&
           box.width > 0 && box.width <= farthest && std::abs(box.center_x) <= farthest &&
           std::abs(box.center_y) <= farthest && std::abs(box.angle) <= 1e6;
}

/// The edges in the box's own coordinates.
std::vector<FitPoint> edgesInBox(const ConstGrayView& view, const CEdgeBox& box,
                                 const CEdgeSettings& settings, const Frame& frame)
{
    std::vector<FitPoint> points;
    points.reserve(std::size_t(box.scans));
    EdgeFinder finder(view, settings);
    const double half = box.width / 2;
    for (int scan = 0; scan < box.scans; ++scan) {
        const double u = ((scan + 0.5) / box.scans - 0.5) * box.length;
        const CEdgePoint* edge = finder.findOne(
            {frame.imageX(u, -half), frame.imageY(u, -half), frame.imageX(u, half), frame.imageY(u, half)});
        if (edge)
            points.push_back({u, edge->position - half});
    }
    return points;
}

/// The ends of the line within [-length / 2, length / 2] x [-width / 2, width / 2], from its point on.
void clip(const LineModel& model, const CEdgeBox& box, double& from, double& to)
{
    from = -HUGE_VAL;
    to = HUGE_VAL;
    const auto between = [&](double place, double slope, double half) {
        if (slope == 0)
            return;
        const double a = (-half - place) / slope, b = (half - place) / slope;
        from = std::max(from, std::min(a, b));
        to = std::min(to, std::max(a, b));
    };
    between(model.x, model.dx, box.length / 2);
    between(model.y, model.dy, box.width / 2);
    if (!(from <= to))
        from = to = 0;
}

} // namespace

bool measureLine(const ConstGrayView& view, const CEdgeBox& box, const CEdgeSettings& settings,
                 CEdgeLine& line)
{
    if (view.empty() || !validBox(box) || !validSettings(settings))
        return false;
    const Frame frame(box);
    std::vector<FitPoint> points = edgesInBox(view, box, settings, frame);
    LineModel model;
    if (!enoughEdges(points.size(), box.scans) || !fitLine(points, model))
        return false;
    if (largestResidual(model, points) > leastCutoff && !findLine(points, model))
        return false;
    if (!fitByWeights(model, points, fitLine))
        return false;
    int used;
    const double rms = rmsOf(model, points, used);
    if (used < 3)
        return false;
    if (model.dx < 0 || (model.dx == 0 && model.dy < 0)) {
        model.dx = -model.dx;
        model.dy = -model.dy;
    }
    double along = 0, from, to;
    for (const FitPoint& p : points)
        if (p.weight > 0)
            along += ((p.x - model.x) * model.dx + (p.y - model.y) * model.dy) / used;
    model.x += along * model.dx;
    model.y += along * model.dy;
    clip(model, box, from, to);
    const auto u = [&](double t) { return model.x + t * model.dx; };
    const auto v = [&](double t) { return model.y + t * model.dy; };
    const double dx = model.dx * frame.cosine + model.dy * frame.sine;
    const double dy = model.dy * frame.cosine - model.dx * frame.sine;
    double angle = std::atan2(-dy, dx) * 180 / std::numbers::pi;
    angle += angle > 90 ? -180 : angle <= -90 ? 180 : 0;
    line = {frame.imageX(u(0), v(0)),
            frame.imageY(u(0), v(0)),
            angle,
            frame.imageX(u(from), v(from)),
            frame.imageY(u(from), v(from)),
            frame.imageX(u(to), v(to)),
            frame.imageY(u(to), v(to)),
            rms,
            box.scans,
            used};
    return true;
}

} // namespace ormalux
