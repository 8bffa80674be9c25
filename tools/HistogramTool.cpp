#include "tools/HistogramTool.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "tools/Program.h"
#include "tools/Script.h"

#include <cmath>
#include <memory>
#include <numeric>

namespace ormalux {

LevelStatistics statisticsOf(const LevelCounts& counts)
{
    LevelStatistics found;
    double sum = 0, squares = 0;
    for (int level = 0; level < 256; ++level) {
        const double count = double(counts[std::size_t(level)]);
        if (count <= 0)
            continue;
        found.lowest = found.pixels > 0 ? found.lowest : level;
        found.highest = level;
        found.pixels += (long long)(count);
        sum += count * level;
        squares += count * level * level;
    }
    if (found.pixels == 0)
        return found;
    const double pixels = double(found.pixels);
    found.mean = sum / pixels;
    found.deviation = std::sqrt(std::max(squares / pixels - found.mean * found.mean, 0.0));
    return found;
}

long long countBetween(const LevelCounts& counts, int low, int high)
{
    return low > high ? 0 : std::accumulate(counts.begin() + low, counts.begin() + high + 1, 0ll);
}

LevelCounts HistogramTool::run(const CKestImage& picture, const RECT& area)
{
    LevelCounts counts{};
    const bool whole = area.left == 0 && area.top == 0 && area.right == picture.GetWidth() - 1 &&
                       area.bottom == picture.GetHeight() - 1;
    if (whole) {
        picture.Histogram(counts.data());
        return counts;
    }
    const std::unique_ptr<unsigned char[]> pixels(
        picture.GetImagePtr(area.left, area.top, area.right, area.bottom));
    CKestImage part;
    part.SetImagePtrLink(area.right - area.left + 1, area.bottom - area.top + 1, pixels.get());
    part.Histogram(counts.data());
    return counts;
}

std::array<LevelCounts, 3> HistogramTool::channels(const CKestImage24& picture, const RECT& area)
{
    std::array<LevelCounts, 3> counts{};
    const ConstColorView view = picture.view();
    if (view.empty() || area.left < 0 || area.top < 0 || area.right >= view.width ||
        area.bottom >= view.height)
        return counts;
    for (int y = area.top; y <= area.bottom; ++y) {
        const std::uint8_t* p = view.pixels + paddedStride(view.width) * y + 3 * area.left;
        for (int x = area.left; x <= area.right; ++x, p += 3) {
            ++counts[0][p[2]];
            ++counts[1][p[1]];
            ++counts[2][p[0]];
        }
    }
    return counts;
}

ResultList HistogramTool::list(const LevelCounts& counts)
{
    ResultList list{{"level", "count", "percent"}, {}};
    const double total = double(countBetween(counts, 0, 255));
    for (int level = 0; level < 256; ++level) {
        const long long count = counts[std::size_t(level)];
        if (count > 0)
            list.rows.push_back({{(long long)(level), count, 100.0 * double(count) / total}, {}});
    }
    return list;
}

CString HistogramTool::script(const ToolScene& scene) const
{
    return callScript(scene.width, scene.height,
                      "SetROIPlacement(" + areaArguments(scene.area) +
                          "); // ROI 크기가 nImageWidth, nImageHeight와 같으면 안해도 된다.\n"
                          "long histogram[256] = {0};\n"
                          "image.Histogram(histogram)");
}

CString HistogramTool::program(const ToolScene& scene) const
{
    return completeProgram(
        scene, "    image.SetROIPlacement(" + areaArguments(scene.area) +
                   ");\n"
                   "    long histogram[256] = {};\n"
                   "    image.Histogram(histogram);\n"
                   "    long total = 0;\n"
                   "    for (const long count : histogram)\n"
                   "        total += count;\n"
                   "    std::printf(\"level,count,percent\\n\");\n"
                   "    for (int level = 0; level < 256; ++level)\n"
                   "        if (histogram[level] > 0)\n"
                   "            std::printf(\"%d,%ld,%f\\n\", level, histogram[level],\n"
                   "                        100.0 * double(histogram[level]) / double(total));\n");
}

QList<QJsonObject> HistogramTool::recipeSteps(const ToolScene& scene) const
{
    QJsonObject step{{"step", "histogram"}};
    addArea(step, scene);
    return {step};
}

} // namespace ormalux
