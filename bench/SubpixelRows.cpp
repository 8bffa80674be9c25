#include "bench/Bench.h"
#include "measure/EdgeMeasure.h"
#include "tests/support/DrawnTruth.h"

#include <opencv2/imgproc.hpp>

#include <memory>

namespace {

using testing_support::radians;

constexpr int scans = 100, across = 40;

/// A straight edge through the middle of a VGA picture with a camera's noise, and the box that it is looked
/// for in: the goal is 50 microseconds.
struct LineCase
{
    explicit LineCase(double angle) : box{320, 240, 200, across, angle, scans}
    {
        testing_support::DrawnTruth truth(640, 480, 60);
        const double nx = std::sin(radians(angle)), ny = std::cos(radians(angle));
        truth.drawHalfPlane(nx, ny, 320 * nx + 240 * ny + 0.3, 160);
        image = truth.shot(4);
        const auto view = std::as_const(image).view();
        picture = cv::Mat(view.height, view.width, CV_8U, const_cast<std::uint8_t*>(view.pixels)).clone();
    }
    double ours() const
    {
        CEdgeLine line{};
        return image.GetEdgeLine(box, {}, line) ? line.angle : 1e9;
    }
    /// The box turned upright by cubic interpolation, derived, the steepest place of every column by a
    /// parabola, and OpenCV's robust line through them.
    double theirs()
    {
        const double c = std::cos(radians(box.angle)), s = std::sin(radians(box.angle)),
                     step = box.length / scans;
        const cv::Matx23d toPicture(c * step, s, 320 - c * step * (scans - 1) / 2 - s * (across - 1) / 2, //
                                    -s * step, c, 240 + s * step * (scans - 1) / 2 - c * (across - 1) / 2);
        cv::warpAffine(picture, turned, toPicture, {scans, across}, cv::INTER_CUBIC | cv::WARP_INVERSE_MAP);
        cv::GaussianBlur(turned, smooth, {1, 7}, 1);
        cv::Sobel(smooth, steps, CV_32F, 0, 1, 1);
        points.clear();
        for (int x = 0; x < scans; ++x) {
            int best = 1;
            for (int y = 2; y + 1 < across; ++y)
                if (std::abs(steps.at<float>(y, x)) > std::abs(steps.at<float>(best, x)))
                    best = y;
            const float a = steps.at<float>(best - 1, x), b = steps.at<float>(best, x),
                        d = steps.at<float>(best + 1, x);
            points.emplace_back(float(x * step), best + (a - d) / (2 * (a - 2 * b + d)));
        }
        cv::Vec4f line;
        cv::fitLine(points, line, cv::DIST_HUBER, 0, 0.01, 0.01);
        return box.angle - std::atan2(line[1], line[0]) * 180 / std::numbers::pi;
    }

    CEdgeBox box;
    CKestImage image;
    cv::Mat picture, turned, smooth, steps;
    std::vector<cv::Point2f> points;
};

const bench::Register rows{[](std::vector<bench::Row>& table) {
    for (double angle : {0.0, 30.0}) {
        const auto made = std::make_shared<LineCase>(angle);
        bench::Row row;
        row.operation = "Sub-pixel line at " + std::to_string(int(angle)) + " degrees, 40 across";
        row.size = "100 scans";
        row.peer = "warpAffine, GaussianBlur, Sobel, fitLine";
        row.goal = 0.55;
        row.check = [=] {
            // The peer is near enough to show that it measures the same edge.
            return std::abs(made->ours() - angle) < 0.03 && std::abs(made->theirs() - angle) < 0.3;
        };
        row.ours = [=] { bench::keep(made->ours()); };
        row.theirs = [=] { bench::keep(made->theirs()); };
        table.push_back(row);
    }
}};

} // namespace
