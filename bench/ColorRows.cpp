#include "bench/Bench.h"
#include "bench/Limits.h"
#include "bench/Pictures.h"
#include "color/VisionImage24.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cmath>
#include <cstring>
#include <memory>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Member = CKestImage* (CKestImage24::*)() const;

/// A picture for ours and the peer's, and where their results go.
struct Scene
{
    Bytes pixels;
    CKestImage24 image;
    cv::Mat mat, out;
    std::vector<cv::Mat> channels;
    CKestImage gray;
    Bytes copy;

    Scene(int width, int height)
    {
        const Bytes parts[] = {bench::naturalPicture(width, height), bench::noisePicture(width, height),
                               bench::partsPicture(width, height)};
        pixels.resize(std::size_t(3) * width * height);
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = std::uint8_t(parts[0][i / 3] + parts[1][i / 3] / (8 + i % 3) +
                                     parts[2][i / 3] / 16 * (i % 3));
        image.SetImagePtrLink(width, height, pixels.data());
        mat = cv::Mat(height, width, CV_8UC3, pixels.data());
        copy.resize(pixels.size());
    }
};

using Formula = int (*)(int b, int g, int r);

bool equalsFormula(const Scene& scene, const CKestImage& gray, Formula formula)
{
    for (std::size_t i = 0; i < scene.pixels.size() / 3; ++i) {
        const std::uint8_t* p = &scene.pixels[3 * i];
        if (gray.view().pixels[i] != std::uint8_t(formula(p[0], p[1], p[2])))
            return false;
    }
    return true;
}

using Peer = void (*)(Scene& scene);

struct PlaneRow
{
    const char* name;
    const char* peerName;
    double goals[2]; ///< 5 MP, VGA
    Member member;
    Formula formula;
    Peer peer;
};

int darkest(int b, int g, int r)
{
    return 255 - std::max({b, g, r});
}

void transformTo(Scene& scene, cv::Matx<float, 1, 4> weights)
{
    cv::transform(scene.mat, scene.out, weights);
}

const PlaneRow planes[] = {
    {"Red plane",
     "extractChannel",
     {0.6, 0.2},
     &CKestImage24::GetRedSpace,
     [](int, int, int r) { return r; },
     [](Scene& s) { cv::extractChannel(s.mat, s.out, 2); }},
    {"Blue plane",
     "extractChannel",
     {0.6, 0.2},
     &CKestImage24::GetBlueSpace,
     [](int b, int, int) { return b; },
     [](Scene& s) { cv::extractChannel(s.mat, s.out, 0); }},
    {"Y plane",
     "cvtColor",
     {1.0, 1.0},
     &CKestImage24::GetYSpace,
     [](int b, int g, int r) { return int(0.257 * r + 0.504 * g + 0.098 * b + 16.0); },
     [](Scene& s) { cv::cvtColor(s.mat, s.out, cv::COLOR_BGR2GRAY); }},
    {"U plane",
     "transform",
     {0.17, 0.17},
     &CKestImage24::GetUSpace,
     [](int b, int g, int r) { return int(0.439 * b - (0.291 * g + 0.148 * r) + 128.0); },
     [](Scene& s) {
         transformTo(s, {0.439f, -0.291f, -0.148f, 128});
     }},
    {"V plane",
     "cvtColor and extractChannel",
     {0.27, 0.27},
     &CKestImage24::GetVSpace,
     [](int b, int g, int r) { return int(0.439 * r - 0.368 * g - 0.071 * b + 128.0); },
     [](Scene& s) {
         cv::Mat yuv;
         cv::cvtColor(s.mat, yuv, cv::COLOR_BGR2YUV);
         cv::extractChannel(yuv, s.out, 2);
     }},
    {"I plane",
     "transform",
     {0.17, 0.17},
     &CKestImage24::GetISpaceOfHSI,
     [](int b, int g, int r) { return int((b + g + r) / 3.0 + 0.5); },
     [](Scene& s) {
         transformTo(s, {1 / 3.0f, 1 / 3.0f, 1 / 3.0f, 0});
     }},
    {"C plane",
     "split and max",
     {0.25, 0.25},
     &CKestImage24::GetCSpaceOfCMYK,
     [](int b, int g, int r) { return 255 - r - darkest(b, g, r); },
     [](Scene& s) {
         cv::split(s.mat, s.channels);
         cv::max(s.channels[0], s.channels[1], s.out);
         cv::max(s.out, s.channels[2], s.out);
         cv::subtract(s.out, s.channels[2], s.out);
     }},
    {"K plane",
     "split and max",
     {0.25, 0.25},
     &CKestImage24::GetKSpaceOfCMYK,
     darkest,
     [](Scene& s) {
         cv::split(s.mat, s.channels);
         cv::max(s.channels[0], s.channels[1], s.out);
         cv::max(s.out, s.channels[2], s.out);
         cv::bitwise_not(s.out, s.out);
     }},
    {"H plane",
     "cvtColor to HSV and extractChannel",
     {0, 0},
     &CKestImage24::GetHSpaceOfHSI,
     [](int b, int g, int r) {
         const double d = std::sqrt(double((r - g) * (r - g) + (r - b) * (g - b)));
         if (d == 0)
             return 0;
         const double angle = std::acos(0.5 * ((r - g) + (r - b)) / d) * 57.29577951;
         return int((b > g ? 360 - angle : angle) / 360 * 255);
     },
     [](Scene& s) {
         cv::Mat hsv;
         cv::cvtColor(s.mat, hsv, cv::COLOR_BGR2HSV);
         cv::extractChannel(hsv, s.out, 0);
     }},
    {"S plane",
     "cvtColor to HSV and extractChannel",
     {0, 0},
     &CKestImage24::GetSSpaceOfHSI,
     [](int b, int g, int r) {
         const int sum = b + g + r;
         return sum == 0 ? 0 : 255 * (sum - 3 * std::min({b, g, r})) / sum;
     },
     [](Scene& s) {
         cv::Mat hsv;
         cv::cvtColor(s.mat, hsv, cv::COLOR_BGR2HSV);
         cv::extractChannel(hsv, s.out, 1);
     }},
};

bench::Row newRow(const char* operation, const bench::Extent& extent, const char* peer, double goal)
{
    bench::Row row;
    row.operation = operation;
    row.size = extent.name;
    row.peer = peer;
    row.goal = goal;
    return row;
}

void addPlanes(std::vector<bench::Row>& table, const bench::Extent& extent,
               const std::shared_ptr<Scene>& scene)
{
    const bool small = &extent != &bench::extents[0];
    // Three bytes read and one written a pixel.
    const auto limit = [scene] {
        bench::readAll(scene->pixels.data(), scene->pixels.size());
        std::memset(scene->copy.data(), 1, scene->copy.size() / 3);
    };
    for (const PlaneRow& plane : planes) {
        const Member member = plane.member;
        const Formula formula = plane.formula;
        const Peer peer = plane.peer;
        bench::Row row = newRow(plane.name, extent, plane.peerName, plane.goals[small]);
        row.check = [=] {
            const std::unique_ptr<CKestImage> gray((scene->image.*member)());
            return equalsFormula(*scene, *gray, formula);
        };
        row.ours = [=] { bench::keep(std::unique_ptr<CKestImage>((scene->image.*member)())); };
        row.theirs = [=] { peer(*scene); };
        row.limit = limit;
        table.push_back(row);
    }
    bench::Row mean = newRow("'A' plane", extent, "transform", 0.17);
    mean.check = [=] {
        scene->image.GetImageWithFilter('A', scene->gray);
        return equalsFormula(*scene, scene->gray, [](int b, int g, int r) { return (b + g + r) / 3; });
    };
    mean.ours = [=] { bench::keep(scene->image.GetImageWithFilter('A', scene->gray)); };
    mean.theirs = [=] { transformTo(*scene, {1 / 3.0f, 1 / 3.0f, 1 / 3.0f, 0}); };
    mean.limit = limit;
    table.push_back(mean);
}

const bench::Register rows{[](std::vector<bench::Row>& table) {
    for (const bench::Extent& extent : bench::extents)
        addPlanes(table, extent, std::make_shared<Scene>(extent.width, extent.height));
}};

} // namespace
