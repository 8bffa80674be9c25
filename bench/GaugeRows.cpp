#include "bench/Bench.h"
#include "bench/Pictures.h"

#include "image/VisionImage.h"
#include "image/WorkPool.h"
#include "tests/support/PlainGauge.h"

#include <cmath>
#include <memory>
#include <string>

namespace {

/// A picture with its image and the lines that are gauged in it.
struct Scene
{
    Scene(std::vector<std::uint8_t> levels, int w, int h)
        : pixels(std::move(levels)), image(w, h, pixels.data()), picture{pixels.data(), w, h}
    {
        // A fan through the centre: every slope, most of them neither flat nor upright.
        for (int i = 0; i < 64; ++i) {
            const double t = i * 3.14159265 / 64;
            const int x = int(w * 0.45 * std::cos(t)), y = int(h * 0.45 * std::sin(t));
            fan.push_back({w / 2 - x, h / 2 - y, w / 2 + x, h / 2 + y});
        }
    }

    std::vector<std::uint8_t> pixels;
    CKestImage image;
    plain::Picture picture;
    std::vector<plain::Line> fan;
};

using SharedScene = std::shared_ptr<const Scene>;
using Gauge = bool (*)(const Scene& scene, const plain::Line& line, POINT& best);

bool givenOurs(const Scene& scene, const plain::Line& line, POINT& best)
{
    long x = -1, y = -1;
    const int found =
        scene.image.GetPointGauge(line.x1, line.y1, line.x2, line.y2, BLACK_AND_WHITE, 100, &x, &y);
    best = {LONG(x), LONG(y)};
    return found != 0;
}

bool givenPlain(const Scene& scene, const plain::Line& line, POINT& best)
{
    return plain::bestEdge(scene.picture, line, BLACK_AND_WHITE, 100, best);
}

bool automaticOurs(const Scene& scene, const plain::Line& line, POINT& best)
{
    long x = -1, y = -1;
    const int found = scene.image.GetPointGauge(line.x1, line.y1, line.x2, line.y2, BLACK_AND_WHITE, &x, &y);
    best = {LONG(x), LONG(y)};
    return found != 0;
}

bool automaticPlain(const Scene& scene, const plain::Line& line, POINT& best)
{
    const plain::Line ends = plain::gaugeLine(scene.picture, line);
    const int threshold = plain::edgeThreshold(scene.picture, ends.x1, ends.y1, ends.x2, ends.y2);
    return plain::bestEdge(scene.picture, line, BLACK_AND_WHITE, threshold, best);
}

bool sameOnAll(const Scene& scene, const std::vector<plain::Line>& lines, Gauge a, Gauge b)
{
    for (const plain::Line& line : lines) {
        POINT first{-1, -1}, second{-1, -1};
        if (a(scene, line, first) != b(scene, line, second) || !(first == second))
            return false;
    }
    return true;
}

void addPoints(std::vector<bench::Row>& table, const SharedScene& scene, const char* size, const char* name,
               double goal, std::vector<plain::Line> lines, Gauge ours, Gauge theirs)
{
    const auto all = [scene, lines](Gauge gauge) {
        return [scene, lines, gauge] {
            for (const plain::Line& line : lines) {
                POINT best;
                bench::keep(gauge(*scene, line, best));
            }
        };
    };
    bench::Row row;
    row.operation = name;
    row.size = size;
    row.peer = "plain code";
    row.goal = goal;
    row.check = [scene, lines, ours, theirs] { return sameOnAll(*scene, lines, ours, theirs); };
    row.ours = all(ours);
    row.theirs = all(theirs);
    table.push_back(row);
}

void addLine(std::vector<bench::Row>& table, const SharedScene& scene, const char* size, int direction,
             double goal)
{
    const RECT area{20, 20, scene->image.GetWidth() - 20, scene->image.GetHeight() - 20};
    const auto measure = [scene, area, direction](_stLineGaugeResult& result) {
        return scene->image.GetLineGauge(area.left, area.top, area.right, area.bottom, BLACK_AND_WHITE,
                                         direction, 1, 100, result);
    };
    const auto plainly = [scene, area, direction](ormalux::LineFit& fit) {
        return plain::lineGauge(scene->picture, area, BLACK_AND_WHITE, direction, 1, 100,
                                ormalux::bandCount(), fit);
    };
    const std::string lines = direction == DIRECTION_VERTICAL ? "rows" : "columns";
    bench::Row row;
    row.operation = "Line gauge, " + lines;
    row.size = size;
    row.peer = "plain code";
    row.goal = goal;
    row.check = [=] {
        _stLineGaugeResult result{};
        ormalux::LineFit fit{};
        return measure(result) == int(plainly(fit)) && result.angle == fit.angle &&
               result.x1 == fit.first.x && result.y2 == fit.second.y;
    };
    row.ours = [=] {
        _stLineGaugeResult result;
        bench::keep(measure(result));
    };
    row.theirs = [=] {
        ormalux::LineFit fit;
        bench::keep(plainly(fit));
    };
    table.push_back(row);
}

/// A soft edge through the middle, tilted, with the noise of a camera.
std::vector<std::uint8_t> edgePicture(int width, int height, bool upright)
{
    std::vector<std::uint8_t> pixels = bench::noisePicture(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const double u = x - width / 2, v = y - height / 2;
            const double distance = upright ? u + 0.07 * v : v + 0.07 * u;
            const int level = int(std::clamp(100 + 30 * distance, 40.0, 180.0));
            std::uint8_t& p = pixels[std::size_t(y) * width + x];
            p = std::uint8_t(level + p % 9);
        }
    return pixels;
}

const bench::Register rows{[](std::vector<bench::Row>& table) {
    for (const bench::Extent& extent : bench::extents) {
        const int w = extent.width, h = extent.height;
        const auto scene = std::make_shared<const Scene>(bench::naturalPicture(w, h), w, h);
        std::vector<plain::Line> level;
        for (int i = 0; i < 64; ++i)
            level.push_back({0, h * i / 65, w - 1, h * i / 65});
        addPoints(table, scene, extent.name, "Point gauge, 64 lines of a fan", 0.15, scene->fan, givenOurs,
                  givenPlain);
        addPoints(table, scene, extent.name, "Point gauge, 64 rows", 0.15, level, givenOurs, givenPlain);
        addPoints(table, scene, extent.name, "Point gauge, automatic threshold, 64 rows", 0.06, level,
                  automaticOurs, automaticPlain);
        for (int direction : {DIRECTION_VERTICAL, DIRECTION_HORIZENTAL}) {
            const bool upright = direction == DIRECTION_VERTICAL;
            addLine(table, std::make_shared<const Scene>(edgePicture(w, h, upright), w, h), extent.name,
                    direction, upright ? 0.015 : 0.03);
        }
    }
    const auto scene = std::make_shared<const Scene>(bench::naturalPicture(640, 480), 640, 480);
    addPoints(table, scene, "VGA", "Point gauge, automatic threshold, a fan", 0.06,
              {scene->fan.begin(), scene->fan.begin() + 8}, automaticOurs, automaticPlain);
}};

} // namespace
