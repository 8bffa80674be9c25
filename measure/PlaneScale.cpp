#include "measure/PlaneScale.h"

#include <algorithm>
#include <cmath>

namespace ormalux {

namespace {

using Matrix9 = std::array<std::array<double, 9>, 9>;

/// Moves points so that their middle is 0 and their mean distance from it 1.
struct Normal
{
    double x = 0;
    double y = 0;
    double scale = 1;

    CPlanePoint operator()(CPlanePoint p) const { return {(p.x - x) * scale, (p.y - y) * scale}; }
};

/// False when the points lie in a line, as good as, or are not finite.
template <class Get>
bool normalise(const std::vector<CPlanePair>& pairs, Get get, Normal& normal)
{
    const double count = double(pairs.size());
    normal = {};
    for (const CPlanePair& pair : pairs) {
        normal.x += get(pair).x / count;
        normal.y += get(pair).y / count;
    }
    double distance = 0, xx = 0, xy = 0, yy = 0;
    for (const CPlanePair& pair : pairs)
        distance += std::hypot(get(pair).x - normal.x, get(pair).y - normal.y) / count;
    normal.scale = 1 / distance;
    for (const CPlanePair& pair : pairs) {
        const CPlanePoint p = normal(get(pair));
        xx += p.x * p.x / count;
        xy += p.x * p.y / count;
        yy += p.y * p.y / count;
    }
    const double half = (xx - yy) / 2, root = std::sqrt(half * half + xy * xy);
    const double largest = (xx + yy) / 2 + root, smallest = (xx * yy - xy * xy) / largest;
    return std::isfinite(normal.scale) && smallest > 1e-8 * largest;
}

/// Turns the symmetric matrix to its eigenvalues by Jacobi's rotations; the vectors are the columns.
void diagonalise(Matrix9& a, Matrix9& vectors)
{
    for (int i = 0; i < 9; ++i)
        for (int j = 0; j < 9; ++j)
            vectors[i][j] = i == j;
    for (int sweep = 0; sweep < 60; ++sweep) {
        double off = 0, all = 0;
        for (int i = 0; i < 9; ++i)
            for (int j = 0; j < 9; ++j)
                (i == j ? all : off) += a[i][j] * a[i][j];
        if (!(off > 1e-34 * all))
            return;
        for (int p = 0; p < 8; ++p)
            for (int q = p + 1; q < 9; ++q) {
                if (a[p][q] == 0)
                    continue;
                const double theta = (a[q][q] - a[p][p]) / (2 * a[p][q]);
                const double t = (theta < 0 ? -1 : 1) / (std::abs(theta) + std::sqrt(theta * theta + 1));
                const double c = 1 / std::sqrt(t * t + 1), s = t * c;
                const auto turn = [&](double& x, double& y) {
                    const double before = x;
                    x = c * x - s * y;
                    y = s * before + c * y;
                };
                for (int k = 0; k < 9; ++k)
                    turn(a[k][p], a[k][q]);
                for (int k = 0; k < 9; ++k)
                    turn(a[p][k], a[q][k]);
                for (int k = 0; k < 9; ++k)
                    turn(vectors[k][p], vectors[k][q]);
            }
    }
}

/// The homography of the linear equations; false where they leave more than one.
bool solveLinear(const std::vector<CPlanePair>& pairs, Homography& h)
{
    Matrix9 a{}, vectors;
    for (const auto& [p, q] : pairs) {
        const double rows[2][9] = {{p.x, p.y, 1, 0, 0, 0, -q.x * p.x, -q.x * p.y, -q.x},
                                   {0, 0, 0, p.x, p.y, 1, -q.y * p.x, -q.y * p.y, -q.y}};
        for (const auto& row : rows)
            for (int i = 0; i < 9; ++i)
                for (int j = 0; j < 9; ++j)
                    a[i][j] += row[i] * row[j];
    }
    diagonalise(a, vectors);
    std::array<int, 9> order{0, 1, 2, 3, 4, 5, 6, 7, 8};
    std::sort(order.begin(), order.end(), [&](int i, int j) { return a[i][i] < a[j][j]; });
    if (!(a[order[1]][order[1]] > 1e-10 * a[order[8]][order[8]]))
        return false;
    for (int i = 0; i < 9; ++i)
        h[i] = vectors[i][order[0]];
    return true;
}

double determinant(const Homography& h)
{
    return h[0] * (h[4] * h[8] - h[5] * h[7]) - h[1] * (h[3] * h[8] - h[5] * h[6]) +
           h[2] * (h[3] * h[7] - h[4] * h[6]);
}

/// Solves the eight equations by elimination; false when they are singular.
bool solve8(std::array<std::array<double, 9>, 8>& m, std::array<double, 8>& out)
{
    for (int i = 0; i < 8; ++i) {
        int pivot = i;
        for (int r = i + 1; r < 8; ++r)
            if (std::abs(m[r][i]) > std::abs(m[pivot][i]))
                pivot = r;
        std::swap(m[i], m[pivot]);
        if (!(std::abs(m[i][i]) > 1e-14))
            return false;
        for (int r = i + 1; r < 8; ++r) {
            const double factor = m[r][i] / m[i][i];
            for (int c = i; c < 9; ++c)
                m[r][c] -= factor * m[i][c];
        }
    }
    for (int i = 7; i >= 0; --i) {
        out[i] = m[i][8];
        for (int c = i + 1; c < 8; ++c)
            out[i] -= m[i][c] * out[c];
        out[i] /= m[i][i];
    }
    return true;
}

/// The sum of squared distances; infinite when a point lies beyond the horizon.
double squaredDistances(const std::vector<CPlanePair>& pairs, const Homography& h)
{
    double sum = 0;
    for (const auto& [p, q] : pairs) {
        CPlanePoint at;
        if (!mapPoint(h, p, at))
            return HUGE_VAL;
        sum += (at.x - q.x) * (at.x - q.x) + (at.y - q.y) * (at.y - q.y);
    }
    return sum;
}

/// Gauss and Newton on the distances, the last element held at 1.
void refine(const std::vector<CPlanePair>& pairs, Homography& h)
{
    double best = squaredDistances(pairs, h);
    for (int round = 0; round < 20; ++round) {
        std::array<std::array<double, 9>, 8> m{};
        for (const auto& [p, q] : pairs) {
            const double w = h[6] * p.x + h[7] * p.y + h[8];
            CPlanePoint at{};
            mapPoint(h, p, at);
            const double rows[2][9] = {
                {p.x / w, p.y / w, 1 / w, 0, 0, 0, -at.x * p.x / w, -at.x * p.y / w, q.x - at.x},
                {0, 0, 0, p.x / w, p.y / w, 1 / w, -at.y * p.x / w, -at.y * p.y / w, q.y - at.y}};
            for (const auto& row : rows)
                for (int i = 0; i < 8; ++i)
                    for (int j = 0; j < 9; ++j)
                        m[i][j] += row[i] * row[j];
        }
        std::array<double, 8> change;
        if (!solve8(m, change))
            return;
        Homography next = h;
        for (int i = 0; i < 8; ++i)
            next[i] += change[i];
        const double sum = squaredDistances(pairs, next);
        if (!(sum < best))
            return;
        h = next;
        best = sum;
    }
}

/// From the normalised points back to the given ones.
Homography denormalised(const Homography& h, const Normal& from, const Normal& to)
{
    Homography out;
    for (int row = 0; row < 3; ++row) {
        out[3 * row] = h[3 * row] * from.scale;
        out[3 * row + 1] = h[3 * row + 1] * from.scale;
        out[3 * row + 2] = h[3 * row + 2] - out[3 * row] * from.x - out[3 * row + 1] * from.y;
    }
    for (int column = 0; column < 3; ++column) {
        out[column] = out[column] / to.scale + to.x * out[6 + column];
        out[3 + column] = out[3 + column] / to.scale + to.y * out[6 + column];
    }
    return out;
}

} // namespace

bool fitHomography(const std::vector<CPlanePair>& pairs, Homography& map)
{
    Normal from, to;
    if (pairs.size() < 4 ||
        !normalise(
            pairs, [](const CPlanePair& p) { return p.picture; }, from) ||
        !normalise(
            pairs, [](const CPlanePair& p) { return p.plane; }, to))
        return false;
    std::vector<CPlanePair> normal;
    normal.reserve(pairs.size());
    for (const CPlanePair& pair : pairs)
        normal.push_back({from(pair.picture), to(pair.plane)});
    Homography h;
    if (!solveLinear(normal, h) || !(std::abs(determinant(h)) > 1e-9) || !(std::abs(h[8]) > 1e-9))
        return false;
    const double scale = 1 / h[8];
    for (double& value : h)
        value *= scale;
    if (squaredDistances(normal, h) == HUGE_VAL)
        return false;
    refine(normal, h);
    map = denormalised(h, from, to);
    return true;
}

bool mapPoint(const Homography& map, CPlanePoint from, CPlanePoint& to)
{
    const double w = map[6] * from.x + map[7] * from.y + map[8];
    const CPlanePoint at{(map[0] * from.x + map[1] * from.y + map[2]) / w,
                         (map[3] * from.x + map[4] * from.y + map[5]) / w};
    if (!(w > 1e-9) || !std::isfinite(at.x) || !std::isfinite(at.y))
        return false;
    to = at;
    return true;
}

double localScale(const Homography& map, CPlanePoint at)
{
    const double w = map[6] * at.x + map[7] * at.y + map[8];
    return w > 1e-9 ? std::sqrt(std::abs(determinant(map)) / (w * w * w)) : 0;
}

} // namespace ormalux
