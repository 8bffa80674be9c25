#include "bench/Bench.h"
#include "bench/Pictures.h"
#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "measure/Alignment.h"
#include "measure/BlobFeature.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

constexpr int threshold = 120;

struct FeatureCase
{
    std::vector<std::uint8_t> pixels;
    CKestImage image;
    std::vector<CBlobFeature> found;
    cv::Mat picture, binary, labels, stats, centroids;

    FeatureCase(std::vector<std::uint8_t> made, int width, int height)
        : pixels(std::move(made)), image(width, height, pixels.data()),
          picture(height, width, CV_8U, pixels.data())
    {}
    void ours() { image.GetBlobFeatures(threshold, 255, 4, found); }
    // The moments of every blob, from the labels in its box.
    int theirs()
    {
        cv::threshold(picture, binary, threshold, 255, cv::THRESH_BINARY);
        const int count = cv::connectedComponentsWithStats(binary, labels, stats, centroids, 4);
        for (int label = 1; label < count; ++label) {
            const int* box = stats.ptr<int>(label);
            const cv::Rect part(box[cv::CC_STAT_LEFT], box[cv::CC_STAT_TOP], box[cv::CC_STAT_WIDTH],
                                box[cv::CC_STAT_HEIGHT]);
            bench::keep(cv::moments(labels(part) == label, true));
        }
        return count - 1;
    }
    bool check()
    {
        ours();
        bool equal = theirs() == int(found.size());
        long long area = 0;
        for (const CBlobFeature& feature : found)
            area += feature.area;
        return equal && area == cv::countNonZero(binary);
    }
};

void addRow(std::vector<bench::Row>& table, const char* name, const bench::Extent& extent,
            std::vector<std::uint8_t> (*picture)(int, int))
{
    auto made = std::make_shared<std::unique_ptr<FeatureCase>>();
    const auto get = [=]() -> FeatureCase& {
        if (!*made)
            *made = std::make_unique<FeatureCase>(picture(extent.width, extent.height), extent.width,
                                                  extent.height);
        return **made;
    };
    table.push_back({.operation = name,
                     .size = extent.name,
                     .peer = "connectedComponentsWithStats + moments",
                     .goal = 0.1,
                     .check = [=] { return get().check(); },
                     .prepare = {},
                     .ours = [=] { get().ours(); },
                     .theirs = [=] { get().theirs(); },
                     .limit = [=] { bench::keep(cv::sum(get().picture)); },
                     .prepareTheirs = {}});
}

struct ComparedCase
{
    CKestImage image, golden, marks;
    cv::Mat picture, theirGolden, difference, theirMarks;

    ComparedCase(int width, int height)
    {
        std::vector<std::uint8_t> pixels = bench::naturalPicture(width, height);
        golden.SetImagePtr(width, height, pixels.data());
        theirGolden = cv::Mat(height, width, CV_8U, pixels.data()).clone();
        for (std::size_t i = 0; i < pixels.size(); i += 1001)
            pixels[i] = std::uint8_t(pixels[i] + 90);
        image.SetImagePtr(width, height, pixels.data());
        picture = cv::Mat(height, width, CV_8U, pixels.data()).clone();
    }
    void theirs()
    {
        cv::absdiff(picture, theirGolden, difference);
        cv::threshold(difference, theirMarks, 40, 255, cv::THRESH_BINARY);
    }
};

void addCompared(std::vector<bench::Row>& table, const char* name, const bench::Extent& extent, int grow,
                 double shift, double goal)
{
    auto made = std::make_shared<std::unique_ptr<ComparedCase>>();
    const auto get = [=]() -> ComparedCase& {
        if (!*made)
            *made = std::make_unique<ComparedCase>(extent.width, extent.height);
        return **made;
    };
    bench::Row row;
    row.operation = name;
    row.size = extent.name;
    row.peer = "absdiff + threshold";
    row.goal = goal;
    row.ours = [=] { get().image.Compare(get().golden, {1, 0, 0, 1, shift, shift}, 40, grow, get().marks); };
    row.theirs = [=] { get().theirs(); };
    if (grow == 0 && shift == 0)
        row.check = [get, row] {
            row.ours();
            row.theirs();
            const auto marks = std::as_const(get().marks).view();
            return std::equal(marks.pixels, marks.pixels + get().theirMarks.total(), get().theirMarks.data);
        };
    table.push_back(std::move(row));
}

void addHues(std::vector<bench::Row>& table, const bench::Extent& extent)
{
    struct HueCase
    {
        CKestImage24 image;
        CKestImage marks;
        cv::Mat picture, hsv, low, high, theirMarks;
    };
    auto made = std::make_shared<HueCase>();
    const auto get = [=]() -> HueCase& {
        if (made->picture.empty()) {
            std::vector<std::uint8_t> pixels = bench::noisePicture(3 * extent.width, extent.height);
            made->image.SetImagePtr(extent.width, extent.height, pixels.data());
            made->picture = cv::Mat(extent.height, extent.width, CV_8UC3, pixels.data()).clone();
        }
        return *made;
    };
    bench::Row row;
    row.operation = "GetHueRangeImage";
    row.size = extent.name;
    row.peer = "cvtColor + 2 inRange + or";
    row.ours = [=] { get().image.GetHueRangeImage(340, 20, 80, 255, 50, 255, get().marks); };
    row.theirs = [=] {
        HueCase& c = get();
        cv::cvtColor(c.picture, c.hsv, cv::COLOR_BGR2HSV);
        cv::inRange(c.hsv, cv::Scalar(170, 80, 50), cv::Scalar(180, 255, 255), c.low);
        cv::inRange(c.hsv, cv::Scalar(0, 80, 50), cv::Scalar(10, 255, 255), c.high);
        cv::bitwise_or(c.low, c.high, c.theirMarks);
    };
    table.push_back(std::move(row));
}

const bench::Register rows{[](std::vector<bench::Row>& table) {
    for (const bench::Extent& extent : bench::extents) {
        addRow(table, "Features of parts", extent, bench::partsPicture);
        addRow(table, "Features of a natural picture", extent, bench::naturalPicture);
        addRow(table, "Features of noise", extent, bench::noisePicture);
        addCompared(table, "Compare, grow 0", extent, 0, 0, 1.0);
        addCompared(table, "Compare, grow 1", extent, 1, 0, 1.0);
        addCompared(table, "Compare, grow 1, half a pixel", extent, 1, 0.5, 0);
        addHues(table, extent);
    }
}};

} // namespace
