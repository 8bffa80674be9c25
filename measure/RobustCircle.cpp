#include "measure/RobustCircle.h"

#include "measure/RobustFit.h"
#include "measure/SubpixelEdges.h"

#include <numbers>

namespace ormalux {

namespace {

constexpr std::size_t voters = 64;
constexpr std::size_t corners = 12;

struct CircleModel
{
    double x = 0;
    double y = 0;
    double radius = 0;

    double distance(const FitPoint& p) const
    {
        const double dx = p.x - x, dy = p.y - y;
        return std::sqrt(dx * dx + dy * dy) - radius;
    }
    double change(const CircleModel& before) const
    {
        return std::abs(x - before.x) + std::abs(y - before.y) + std::abs(radius - before.radius);
    }
};

/// Solves the symmetric system of three equations; false when it has no single solution.
bool solve3(const double (&m)[3][3], const double (&b)[3], double (&out)[3])
{
    const auto minor = [&](int r1, int c1, int r2, int c2) {
        return m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
    };
    const double c0 = minor(1, 1, 2, 2), c1 = -minor(1, 0, 2, 2), c2 = minor(1, 0, 2, 1);
    const double determinant = m[0][0] * c0 + m[0][1] * c1 + m[0][2] * c2;
    const double scale = m[0][0] * m[1][1] * m[2][2];
    if (!(std::abs(determinant) > 1e-12 * std::abs(scale)))
        return false;
    const double a00 = c0, a01 = -minor(0, 1, 2, 2), a02 = minor(0, 1, 1, 2);
    const double a11 = minor(0, 0, 2, 2), a12 = -minor(0, 0, 1, 2), a22 = minor(0, 0, 1, 1);
    out[0] = (a00 * b[0] + a01 * b[1] + a02 * b[2]) / determinant;
    out[1] = (a01 * b[0] + a11 * b[1] + a12 * b[2]) / determinant;
    out[2] = (a02 * b[0] + a12 * b[1] + a22 * b[2]) / determinant;
    return true;
}

/// The circle whose equation x^2 + y^2 = 2ax + 2by + c the points fulfil best: a start.
bool fitEquation(const std::vector<FitPoint>& points, CircleModel& model)
{
    double mx = 0, my = 0;
    for (const FitPoint& p : points) {
        mx += p.x / double(points.size());
        my += p.y / double(points.size());
    }
    double m[3][3] = {}, b[3] = {}, s[3];
    for (const FitPoint& p : points) {
        const double row[3] = {p.x - mx, p.y - my, 1}, square = row[0] * row[0] + row[1] * row[1];
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j)
                m[i][j] += row[i] * row[j];
            b[i] += row[i] * square;
        }
    }
    if (!solve3(m, b, s))
        return false;
    const double x = s[0] / 2, y = s[1] / 2;
    model = {mx + x, my + y, std::sqrt(std::max(s[2] + x * x + y * y, 0.0))};
    return true;
}

/// One step of Gauss and Newton towards least weighted orthogonal distances.
bool fitCircle(const std::vector<FitPoint>& points, CircleModel& model)
{
    double m[3][3] = {}, b[3] = {}, s[3];
    for (const FitPoint& p : points) {
        const double dx = p.x - model.x, dy = p.y - model.y, size = std::sqrt(dx * dx + dy * dy);
        if (!(size > 0) || p.weight == 0)
            continue;
        const double row[3] = {dx / size, dy / size, 1};
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j)
                m[i][j] += p.weight * row[i] * row[j];
            b[i] += p.weight * row[i] * (size - model.radius);
        }
    }
    if (!solve3(m, b, s))
        return false;
    model = {model.x + s[0], model.y + s[1], model.radius + s[2]};
    return model.radius > 0;
}

/// The circle of the three points that most points lie near.
bool findCircle(const std::vector<FitPoint>& points, CircleModel& model)
{
    const std::vector<FitPoint> judges = evenlyChosen(points, voters), chosen = evenlyChosen(points, corners);
    MedianVote<CircleModel> vote(judges);
    std::vector<FitPoint> three(3);
    CircleModel offered;
    for (std::size_t i = 0; i < chosen.size(); ++i)
        for (std::size_t j = i + 1; j < chosen.size(); ++j)
            for (std::size_t k = j + 1; k < chosen.size(); ++k) {
                three = {chosen[i], chosen[j], chosen[k]};
                if (fitEquation(three, offered))
                    vote.offer(offered);
            }
    model = vote.best();
    return vote.any();
}

bool validRing(const CEdgeRing& ring)
{
    const double farthest = EdgeProfile::farthest;
    return ring.scans >= 3 && ring.scans <= 10000 && ring.radius1 >= 0 && ring.radius1 <= farthest &&
           ring.radius2 >= 0 && ring.radius2 <= farthest && ring.radius1 != ring.radius2 &&
           std::abs(ring.center_x) <= farthest && std::abs(ring.center_y) <= farthest;
}

/// The edges relative to the centre.
std::vector<FitPoint> edgesOnRays(const ConstGrayView& view, const CEdgeRing& ring,
                                  const CEdgeSettings& settings)
{
    std::vector<FitPoint> points;
    points.reserve(std::size_t(ring.scans));
    EdgeFinder finder(view, settings);
    const double inner = std::min(ring.radius1, ring.radius2), outer = std::max(ring.radius1, ring.radius2);
    for (int scan = 0; scan < ring.scans; ++scan) {
        const double turn = 2 * std::numbers::pi * scan / ring.scans;
        const double dx = std::cos(turn), dy = -std::sin(turn);
        const CEdgePoint* edge = finder.findOne({ring.center_x + inner * dx, ring.center_y + inner * dy,
                                                 ring.center_x + outer * dx, ring.center_y + outer * dy});
        if (edge)
            points.push_back({(inner + edge->position) * dx, (inner + edge->position) * dy});
    }
    return points;
}

} // namespace

bool measureCircle(const ConstGrayView& view, const CEdgeRing& ring, const CEdgeSettings& settings,
                   CEdgeCircle& circle)
{
    if (view.empty() || !validRing(ring) || !validSettings(settings))
        return false;
    std::vector<FitPoint> points = edgesOnRays(view, ring, settings);
    CircleModel model;
    if (!enoughEdges(points.size(), ring.scans))
        return false;
    if ((!fitEquation(points, model) || largestResidual(model, points) > leastCutoff) &&
        !findCircle(points, model))
        return false;
    if (!fitByWeights(model, points, fitCircle))
        return false;
    int used;
    const double rms = rmsOf(model, points, used);
    if (used < 3)
        return false;
    const double width = settings.width;
    const double variance = 1.0 / 12 + EdgeProfile::splineVariance + (width * width - 1) / 12;
    circle = {ring.center_x + model.x,
              ring.center_y + model.y,
              model.radius + variance / (2 * model.radius),
              rms,
              ring.scans,
              used};
    return true;
}

} // namespace ormalux
