#include "measure/BlobFeatures.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numbers>
#include <utility>

namespace ormalux {

namespace {

__extension__ using Wide = unsigned __int128;
__extension__ using SignedWide = __int128;

/// What the runs of a blob add up to; columns and rows from the region's corner.
struct Sums
{
    Wide xx = 0, xy = 0, yy = 0;
    std::uint64_t x = 0, y = 0, gray = 0;
    std::uint64_t straight = 0, diagonal = 0, mixed = 0;
    std::int32_t left = INT32_MAX, top = 0, right = -1, bottom = -1;

    void add(const kernels::BlobRun& run, const kernels::RunMeasure& measure, int row)
    {
        const std::uint64_t n = std::uint64_t(run.end - run.begin), b = std::uint64_t(run.begin);
        const std::uint64_t pairs = n * (n - 1) / 2, sum = n * b + pairs, level = std::uint64_t(row);
        x += sum;
        y += n * level;
        xx += Wide(n * b) * b + Wide(2 * b) * pairs + squares(n);
        xy += Wide(sum) * level;
        yy += Wide(n * level) * level;
        gray += measure.gray;
        straight += measure.straight;
        diagonal += measure.diagonal;
        mixed += measure.mixed;
        if (right < 0)
            top = row;
        left = std::min(left, run.begin);
        right = std::max(right, run.end - 1);
        bottom = row;
    }
    /// 0 + 1 + 4 + ... + (n - 1)^2.
    static Wide squares(std::uint64_t n)
    {
        constexpr std::uint64_t fits = 1 << 20;
        return n < fits ? Wide((n - 1) * n * (2 * n - 1) / 6) : Wide(n * (n - 1)) * (2 * n - 1) / 6;
    }
};

/// The scratch rows that outlines are found with.
class OutlineRows
{
public:
    OutlineRows(const RunTable& table, Connectivity connectivity)
        : m_table(table), m_corners(connectivity == Connectivity::Eight), m_words(table.words()),
          m_rows(10 * m_words, 0)
    {
        contour(0);
    }

    /// The outline of row y; rows are asked for from the top.
    kernels::OutlineRow outlineOf(int y)
    {
        contour(y + 1);
        const kernels::DiagonalRow above = diagonals(y + 1), own = diagonals(y);
        kernels::diagonalRow(m_table.bits(y), m_table.bits(y + 1), contourAt(y), contourAt(y + 1),
                             m_table.runs(y), runsBelow(y), m_corners, own, m_words);
        const kernels::OutlineRow outline{row(7), row(8), row(9)};
        kernels::outlineRow(contourAt(y + 2), contourAt(y), contourAt(y + 1), above, own, outline, m_words);
        return outline;
    }

private:
    std::uint64_t* row(int i) { return m_rows.data() + std::size_t(i) * m_words; }
    // Three rows in turn: y + 2 stands where y - 1 does.
    std::uint64_t* contourAt(int y) { return row(y % 3); }
    kernels::DiagonalRow diagonals(int y) { return {row(3 + y % 2), row(5 + y % 2)}; }
    const kernels::BlobRun* runsBelow(int y) const
    {
        return y + 1 < m_table.height() ? m_table.runs(y + 1) : m_table.runsEnd(y);
    }
    void contour(int y)
    {
        if (y < m_table.height())
            kernels::contourRow(m_table.bits(y - 1), m_table.bits(y), m_table.bits(y + 1), contourAt(y),
                                m_words);
        else
            std::fill_n(contourAt(y), m_words, 0);
    }

    const RunTable& m_table;
    bool m_corners;
    std::size_t m_words;
    std::vector<std::uint64_t> m_rows;
};

constexpr std::uint32_t leftOut = UINT32_MAX;

std::vector<Sums> sumsOf(const ConstGrayView& image, const BlobFeatureQuery& query, const RunTable& table,
                         const std::vector<std::uint32_t>& rowOf, std::uint32_t rows)
{
    std::vector<Sums> sums(rows);
    if (rows == 0)
        return sums;
    OutlineRows outlines(table, query.connectivity);
    std::vector<kernels::RunMeasure> measures(std::size_t(table.width()) / 2 + 1);
    for (int y = 0; y < table.height(); ++y) {
        const kernels::OutlineRow outline = outlines.outlineOf(y);
        const RunTable::Run* const runs = table.runs(y);
        const std::size_t count = std::size_t(table.runsEnd(y) - runs);
        kernels::measureRuns(image.row(query.region.top + y) + query.region.left, outline, runs, count,
                             measures.data());
        for (std::size_t i = 0; i < count; ++i)
            if (const std::uint32_t row = rowOf[runs[i].blob]; row != leftOut)
                sums[row].add(runs[i], measures[i], y);
    }
    return sums;
}

void measureEllipse(const Sums& sums, std::int64_t area, CBlobFeature& feature)
{
    // Central moments as whole numbers, times the area squared: directions are then exactly level or upright
    // where they ought to be.
    const double scale = 1.0 / (double(area) * double(area));
    const auto moment = [&](Wide square, std::uint64_t a, std::uint64_t b) {
        const auto whole = SignedWide(square * std::uint64_t(area) - Wide(a) * b);
        // Nearly all fit, and wide numbers take their time to become doubles.
        const auto narrow = std::int64_t(whole);
        return (narrow == whole ? double(narrow) : double(whole)) * scale;
    };
    const double xx = moment(sums.xx, sums.x, sums.x), yy = moment(sums.yy, sums.y, sums.y),
                 xy = moment(sums.xy, sums.x, sums.y);
    const double middle = (xx + yy) / 2 + 1.0 / 12, half = std::sqrt((xx - yy) * (xx - yy) + 4 * xy * xy) / 2;
    feature.major = 4 * std::sqrt(middle + half);
    feature.minor = 4 * std::sqrt(std::max(middle - half, 0.0));
    // Rows grow downwards, angles upwards.
    if (xy == 0)
        feature.orientation = xx >= yy ? 0 : 90;
    else
        feature.orientation = 90 / std::numbers::pi * std::atan2(-2 * xy, xx - yy);
}

CBlobFeature featureOf(const Sums& sums, const RunTable::Blob& blob, const BlobRegion& region)
{
    constexpr double root = std::numbers::sqrt2;
    CBlobFeature feature{};
    const double area = double(blob.area);
    feature.area = blob.area;
    feature.centroid_x = region.left + double(sums.x) / area;
    feature.centroid_y = region.top + double(sums.y) / area;
    feature.left = region.left + sums.left;
    feature.top = region.top + sums.top;
    feature.right = region.left + sums.right;
    feature.bottom = region.top + sums.bottom;
    feature.perimeter =
        double(sums.straight) + root * double(sums.diagonal) + (1 + root) / 2 * double(sums.mixed);
    if (feature.perimeter > 0)
        feature.circularity = 4 * std::numbers::pi * area / (feature.perimeter * feature.perimeter);
    measureEllipse(sums, blob.area, feature);
    // Runs are vertices and contacts edges of a plane graph with a face for every hole.
    feature.holes = 1 - blob.runs + blob.contacts;
    feature.mean = double(sums.gray) / area;
    return feature;
}

bool touchesBorder(const Sums& sums, const RunTable& table)
{
    return sums.left == 0 || sums.top == 0 || sums.right == table.width() - 1 ||
           sums.bottom == table.height() - 1;
}

} // namespace

bool blobFeatures(const ConstGrayView& image, const BlobFeatureQuery& query,
                  std::vector<CBlobFeature>& result)
try {
    result.clear();
    if (image.empty() || query.region.empty() || query.levels.none())
        return true;
    RunTable table;
    if (!table.find(image, query.region, query.levels, query.connectivity))
        return false;
    std::vector<std::uint32_t> rowOf(table.blobCount(), leftOut), blobOf;
    for (std::uint32_t blob = 0; blob < table.blobCount(); ++blob)
        if (const std::int64_t area = table.blob(blob).area; area >= query.minArea && area <= query.maxArea) {
            rowOf[blob] = std::uint32_t(blobOf.size());
            blobOf.push_back(blob);
        }
    const std::vector<Sums> sums = sumsOf(image, query, table, rowOf, std::uint32_t(blobOf.size()));
    result.reserve(sums.size());
    for (std::size_t row = 0; row < sums.size(); ++row)
        if (!query.dropBorder || !touchesBorder(sums[row], table))
            result.push_back(featureOf(sums[row], table.blob(blobOf[row]), query.region));
    return true;
} catch (const std::bad_alloc&) {
    result.clear();
    return false;
}

} // namespace ormalux
