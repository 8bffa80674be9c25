#include "bench/Bench.h"
#include "bench/Pictures.h"
#include "image/VisionImage.h"
#include "tests/support/BlobReference.h"

#include <opencv2/imgproc.hpp>

#include <memory>

namespace {

constexpr int threshold = 120;

struct BlobCase
{
    CKestImage image;
    CBlobRectArray blobs;
    cv::Mat picture, binary, labels, stats, centroids;

    BlobCase(std::vector<std::uint8_t> pixels, int width, int height) : image(width, height, pixels.data())
    {
        picture = cv::Mat(height, width, CV_8U, pixels.data()).clone();
    }
    void ours()
    {
        blobs.RemoveAll();
        image.GetBlobList(threshold, 255, 2, 1 << 20, 1, 1 << 20, blobs);
    }
    void theirs()
    {
        cv::threshold(picture, binary, threshold, 255, cv::THRESH_BINARY);
        cv::connectedComponentsWithStats(binary, labels, stats, centroids, 4);
    }
    bool check()
    {
        ours();
        const auto view = std::as_const(image).view();
        const auto walked =
            testing_support::walkBlobs(view, {0, 0, view.width, view.height},
                                       ormalux::levelsOfColor(threshold, 255), {2, 1 << 20, 1, 1 << 20});
        bool equal = int(walked.size()) == blobs.GetCount();
        for (int i = 0; equal && i < blobs.GetCount(); ++i) {
            const auto& a = walked[std::size_t(i)];
            const auto& b = blobs[i];
            equal = a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom &&
                    a.pixels == b.pixel_count;
        }
        return equal;
    }
};

void addRow(std::vector<bench::Row>& table, const char* name, const bench::Extent& extent,
            std::vector<std::uint8_t> (*picture)(int, int), double goal)
{
    // Made on first use, so that rows that are filtered out cost nothing.
    auto made = std::make_shared<std::unique_ptr<BlobCase>>();
    const auto get = [=]() -> BlobCase& {
        if (!*made)
            *made =
                std::make_unique<BlobCase>(picture(extent.width, extent.height), extent.width, extent.height);
        return **made;
    };
    table.push_back({.operation = name,
                     .size = extent.name,
                     .peer = "threshold + connectedComponentsWithStats",
                     .goal = goal,
                     .check = [=] { return get().check(); },
                     .prepare = {},
                     .ours = [=] { get().ours(); },
                     .theirs = [=] { get().theirs(); },
                     .limit = [=] { bench::keep(cv::sum(get().picture)); },
                     .prepareTheirs = {}});
}

const bench::Register rows{[](std::vector<bench::Row>& table) {
    for (const bench::Extent& extent : bench::extents) {
        addRow(table, "Blobs of parts", extent, bench::partsPicture, 0.04);
        addRow(table, "Blobs of a natural picture", extent, bench::naturalPicture, 0.3);
        addRow(table, "Blobs of noise", extent, bench::noisePicture, 0.5);
    }
}};

} // namespace
