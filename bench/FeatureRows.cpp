#include "bench/Bench.h"
#include "bench/Pictures.h"
#include "image/VisionImage.h"
#include "measure/BlobFeature.h"

#include <opencv2/imgproc.hpp>

#include <memory>

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

const bench::Register rows{[](std::vector<bench::Row>& table) {
    for (const bench::Extent& extent : bench::extents) {
        addRow(table, "Features of parts", extent, bench::partsPicture);
        addRow(table, "Features of a natural picture", extent, bench::naturalPicture);
        addRow(table, "Features of noise", extent, bench::noisePicture);
    }
}};

} // namespace
