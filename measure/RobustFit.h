#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

/// What robust fits of lines and circles share.
namespace ormalux {

struct FitPoint
{
    double x;
    double y;
    double weight = 1;
};

/// The least distance at which a point loses all weight: what a clean edge of pixels wavers by is no outlier.
/// Where all points lie nearer to the plain fit, nobody has to look for those that agree.
inline constexpr double leastCutoff = 0.06;

/// Up to count points, evenly spaced over the order of the points.
inline std::vector<FitPoint> evenlyChosen(const std::vector<FitPoint>& points, std::size_t count)
{
    if (points.size() <= count)
        return points;
    std::vector<FitPoint> chosen;
    for (std::size_t i = 0; i < count; ++i)
        chosen.push_back(points[i * (points.size() - 1) / (count - 1)]);
    return chosen;
}

/// The model with the least median of residuals among those offered.
template <class Model>
class MedianVote
{
public:
    explicit MedianVote(const std::vector<FitPoint>& judges) : m_judges(judges), m_residuals(judges.size()) {}

    void offer(const Model& model)
    {
        const std::size_t half = m_judges.size() / 2;
        // Most models lose by a count, without a median.
        std::size_t nearer = 0;
        for (std::size_t i = 0; i < m_judges.size(); ++i) {
            m_residuals[i] = std::abs(model.distance(m_judges[i]));
            nearer += m_residuals[i] < m_least;
        }
        if (nearer <= half)
            return;
        std::nth_element(m_residuals.begin(), m_residuals.begin() + half, m_residuals.end());
        m_least = m_residuals[half];
        m_best = model;
        m_any = true;
    }
    bool any() const { return m_any; }
    const Model& best() const { return m_best; }

private:
    const std::vector<FitPoint>& m_judges;
    std::vector<double> m_residuals;
    double m_least = HUGE_VAL;
    Model m_best{};
    bool m_any = false;
};

template <class Model>
double largestResidual(const Model& model, const std::vector<FitPoint>& points)
{
    double largest = 0;
    for (const FitPoint& p : points)
        largest = std::max(largest, std::abs(model.distance(p)));
    return largest;
}

/// Where a point loses all weight: so many normal deviations from the model, estimated by the median.
template <class Model>
double tukeyCutoff(const Model& model, const std::vector<FitPoint>& points, std::vector<double>& residuals)
{
    residuals.clear();
    for (const FitPoint& p : points)
        residuals.push_back(std::abs(model.distance(p)));
    const auto middle = residuals.begin() + std::ptrdiff_t(residuals.size() / 2);
    std::nth_element(residuals.begin(), middle, residuals.end());
    return std::max(leastCutoff, 4.685 * 1.4826 * *middle);
}

/// Tukey's biweight of every point; returns how many have any.
template <class Model>
int weigh(const Model& model, std::vector<FitPoint>& points, double cutoff)
{
    int used = 0;
    for (FitPoint& p : points) {
        const double z = model.distance(p) / cutoff;
        p.weight = std::abs(z) < 1 ? (1 - z * z) * (1 - z * z) : 0;
        used += p.weight > 0;
    }
    return used;
}

/// Weighs and fits in turn until the model rests; false when a fit fails. fit(points, model) improves the
/// model on the weighted points, model.change(before) is in pixels.
template <class Model, class Fit>
bool fitByWeights(Model& model, std::vector<FitPoint>& points, Fit fit)
{
    std::vector<double> residuals;
    residuals.reserve(points.size());
    double cutoff = 0;
    constexpr int settled = 3;
    for (int round = 0; round < 60; ++round) {
        if (round < settled) // then the rounds are sure to come to rest
            cutoff = tukeyCutoff(model, points, residuals);
        weigh(model, points, cutoff);
        const Model before = model;
        if (!fit(points, model))
            return false;
        if (round >= settled && model.change(before) < 1e-6)
            break;
    }
    weigh(model, points, cutoff);
    return true;
}

/// The root mean square of the residuals of the points with weight.
template <class Model>
double rmsOf(const Model& model, const std::vector<FitPoint>& points, int& used)
{
    double squares = 0;
    used = 0;
    for (const FitPoint& p : points)
        if (p.weight > 0) {
            squares += model.distance(p) * model.distance(p);
            ++used;
        }
    return used > 0 ? std::sqrt(squares / used) : 0;
}

/// Whether so many scans with an edge make a line or a circle.
inline bool enoughEdges(std::size_t found, int scans)
{
    return found >= 3 && found * 4 >= std::size_t(scans);
}

} // namespace ormalux
