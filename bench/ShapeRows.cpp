#include "bench/Bench.h"
#include "bench/Pictures.h"
#include "image/VisionImage.h"

#include <opencv2/imgproc.hpp>

#include <cstring>
#include <functional>
#include <memory>

namespace {

/// A picture of ours and of the peer; the closures of its rows share it.
struct Subject
{
    std::vector<std::uint8_t> input, work;
    CKestImage image;
    cv::Mat theirInput, theirOutput;

    explicit Subject(const bench::Extent& extent)
        : input(bench::naturalPicture(extent.width, extent.height)), work(input),
          theirInput(extent.height, extent.width, CV_8U, input.data())
    {
        image.SetImagePtrLink(extent.width, extent.height, work.data());
    }
    void restore() { std::memcpy(work.data(), input.data(), work.size()); }
    bool equal() const { return std::memcmp(work.data(), theirOutput.data, work.size()) == 0; }
};

struct Pair
{
    const char* operation;
    const char* peer;
    double goal;
    std::function<void(CKestImage&)> ours;
    std::function<void(const cv::Mat&, cv::Mat&)> theirs;
    bool exact = true; ///< whether every pixel must equal the peer's
};

void addRow(std::vector<bench::Row>& table, const bench::Extent& extent, const Pair& pair)
{
    auto s = std::make_shared<std::unique_ptr<Subject>>();
    const auto get = [s, extent]() -> Subject& {
        if (!*s)
            *s = std::make_unique<Subject>(extent);
        return **s;
    };
    bench::Row row;
    row.operation = pair.operation;
    row.size = extent.name;
    row.peer = pair.peer;
    row.goal = pair.goal;
    row.prepare = [=] { get().restore(); };
    row.ours = [=, ours = pair.ours] { ours(get().image); };
    row.theirs = [=, theirs = pair.theirs] { theirs(get().theirInput, get().theirOutput); };
    row.limit = row.prepare;
    row.check = [get, row, exact = pair.exact] {
        row.prepare();
        row.ours();
        row.theirs();
        return !exact || get().equal();
    };
    table.push_back(std::move(row));
}

Pair morphologyPair(const char* name, int operation, int shape, int size, double goal)
{
    constexpr int theirOperations[] = {cv::MORPH_ERODE, cv::MORPH_DILATE, cv::MORPH_OPEN,
                                       cv::MORPH_CLOSE, cv::MORPH_TOPHAT, cv::MORPH_GRADIENT};
    const cv::Mat element = cv::getStructuringElement(shape, {size, size});
    return {name, "morphologyEx", goal,
            [=](CKestImage& image) { image.Morphology(operation, shape, size, size); },
            [=, theirs = theirOperations[operation]](const cv::Mat& in, cv::Mat& out) {
                cv::morphologyEx(in, out, theirs, element);
            }};
}

Pair localPair(const char* name, int method, int window, double goal)
{
    const int theirMethod =
        method == LOCAL_MEAN ? cv::ADAPTIVE_THRESH_MEAN_C : cv::ADAPTIVE_THRESH_GAUSSIAN_C;
    return {name,
            "adaptiveThreshold",
            goal,
            [=](CKestImage& image) { image.LocalThreshold(method, window, 5); },
            [=](const cv::Mat& in, cv::Mat& out) {
                cv::adaptiveThreshold(in, out, 255, theirMethod, cv::THRESH_BINARY, window, 5);
            },
            method == LOCAL_MEAN};
}

const bench::Register rows{[](std::vector<bench::Row>& table) {
    for (const bench::Extent& extent : bench::extents) {
        addRow(table, extent,
               {"OtsuThreshold", "threshold by Otsu", 0.6, [](CKestImage& image) { image.OtsuThreshold(); },
                [](const cv::Mat& in, cv::Mat& out) {
                    cv::threshold(in, out, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
                }});
        for (const auto& [name, window] :
             {std::pair{"LocalThreshold mean 15", 15}, std::pair{"LocalThreshold mean 101", 101},
              std::pair{"LocalThreshold mean 501", 501}})
            addRow(table, extent, localPair(name, LOCAL_MEAN, window, 0.5));
        addRow(table, extent,
               {"Median3x3", "medianBlur", 0.3, [](CKestImage& image) { image.Median3x3(); },
                [](const cv::Mat& in, cv::Mat& out) { cv::medianBlur(in, out, 3); }});
        addRow(table, extent,
               {"Median5x5", "medianBlur", 0.3, [](CKestImage& image) { image.Median5x5(); },
                [](const cv::Mat& in, cv::Mat& out) { cv::medianBlur(in, out, 5); }});
        addRow(table, extent, localPair("LocalThreshold gaussian 15", LOCAL_GAUSSIAN, 15, 0.5));
        addRow(table, extent, localPair("LocalThreshold gaussian 101", LOCAL_GAUSSIAN, 101, 0.5));
        for (const auto& [name, size] :
             {std::pair{"Morphology erode rect 3", 3}, std::pair{"Morphology erode rect 7", 7},
              std::pair{"Morphology erode rect 31", 31}, std::pair{"Morphology erode rect 101", 101}})
            addRow(table, extent, morphologyPair(name, MORPHOLOGY_ERODE, MORPHOLOGY_RECT, size, 0.5));
        addRow(table, extent,
               morphologyPair("Morphology open rect 7", MORPHOLOGY_OPEN, MORPHOLOGY_RECT, 7, 0.5));
        addRow(table, extent,
               morphologyPair("Morphology gradient rect 3", MORPHOLOGY_GRADIENT, MORPHOLOGY_RECT, 3, 0.5));
        addRow(table, extent,
               morphologyPair("Morphology erode cross 31", MORPHOLOGY_ERODE, MORPHOLOGY_CROSS, 31, 0));
        addRow(table, extent,
               morphologyPair("Morphology erode ellipse 15", MORPHOLOGY_ERODE, MORPHOLOGY_ELLIPSE, 15, 0));
    }
}};

} // namespace
