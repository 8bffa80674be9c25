#include "bench/Bench.h"
#include "bench/Pictures.h"
#include "image/Morphology.h"
#include "image/NamedFilters.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

using namespace ormalux;
using Pixels = std::vector<std::uint8_t>;

/// What a row works on; the closures share it.
struct Subject
{
    int width, height;
    Pixels input, work;
    cv::Mat theirInput, theirOutput;

    explicit Subject(const bench::Extent& extent)
        : width(extent.width), height(extent.height), input(bench::naturalPicture(width, height)),
          work(input), theirInput(height, width, CV_8U, input.data()), theirOutput(height, width, CV_8U)
    {}
    GrayView view() { return {work.data(), width, height, width}; }
    void restore() { std::memcpy(work.data(), input.data(), work.size()); }
};

Pixels plainFilter(const Subject& s, const Convolution& c)
{
    Pixels out(s.input.size());
    const int half = int(c.size / 2);
    for (int y = 0; y < s.height; ++y)
        for (int x = 0; x < s.width; ++x) {
            int sum = 0;
            for (int row = 0; row < c.size; ++row)
                for (int column = 0; column < c.size; ++column)
                    sum += int(c.entries[row * c.size + column]) *
                           s.input[std::size_t(std::clamp(y + row - half, 0, s.height - 1)) * s.width +
                                   std::clamp(x + column - half, 0, s.width - 1)];
            out[std::size_t(y) * s.width + x] =
                std::uint8_t(std::clamp(int(c.offset) + sum / int(c.divisor), 0, 255));
        }
    return out;
}

// The scan over an index of neighbours that lie inside, in place.
Pixels plainScan(Pixels p, int width, int height, bool least)
{
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            std::uint8_t best = p[std::size_t(y) * width + x];
            for (int ny = std::max(0, y - 1); ny <= std::min(height - 1, y + 1); ++ny)
                for (int nx = std::max(0, x - 1); nx <= std::min(width - 1, x + 1); ++nx) {
                    const std::uint8_t v = p[std::size_t(ny) * width + nx];
                    best = least ? std::min(best, v) : std::max(best, v);
                }
            p[std::size_t(y) * width + x] = best;
        }
    return p;
}

cv::Mat kernelMat(const Convolution& c)
{
    cv::Mat kernel(int(c.size), int(c.size), CV_32F);
    for (int i = 0; i < c.size * c.size; ++i)
        kernel.at<float>(i / int(c.size), i % int(c.size)) = float(c.entries[i]) / float(c.divisor);
    return kernel;
}

bench::Row rowFor(std::shared_ptr<Subject> s, const bench::Extent& extent, const char* operation,
                  const char* peer, double goal)
{
    bench::Row row;
    row.operation = operation;
    row.size = extent.name;
    row.peer = peer;
    row.goal = goal;
    row.prepare = [s] { s->restore(); };
    row.limit = [s] { s->restore(); };
    return row;
}

struct NamedRow
{
    const char* operation;
    NamedFilter name;
    const char* peer;
    double goals[2]; // in the order of bench::extents
};

constexpr NamedRow namedRows[] = {
    {"Blur", NamedFilter::Blur, "blur", {0.18, 0.18}},
    {"Gassian3x3", NamedFilter::Gassian3x3, "GaussianBlur", {0.55, 0.55}},
    {"Gassian5x5", NamedFilter::Gassian5x5, "GaussianBlur", {0.65, 0.65}},
    {"Sharpen", NamedFilter::Sharpen, "filter2D", {0.13, 0.12}},
    {"Edge", NamedFilter::Edge, "filter2D", {0.13, 0.12}},
    {"Laplacian", NamedFilter::Laplacian, "filter2D", {0.13, 0.12}},
    {"Emboss", NamedFilter::Emboss, "filter2D", {0.25, 0.2}},
    {"Soften", NamedFilter::Soften, "filter2D", {0, 0}},
};

void addNamed(std::vector<bench::Row>& table, const NamedRow& entry, int size)
{
    const bench::Extent& extent = bench::extents[size];
    auto s = std::make_shared<Subject>(extent);
    bench::Row row = rowFor(s, extent, entry.operation, entry.peer, entry.goals[size]);
    const NamedFilter name = entry.name;
    const Convolution c = convolutionOf(name);
    row.check = [s, name, c] {
        s->restore();
        return filter(s->view(), name) && s->work == plainFilter(*s, c);
    };
    row.ours = [s, name] { filter(s->view(), name); };
    if (name == NamedFilter::Blur)
        row.theirs = [s] { cv::blur(s->theirInput, s->theirOutput, {3, 3}, {-1, -1}, cv::BORDER_REPLICATE); };
    else if (name == NamedFilter::Gassian3x3 || name == NamedFilter::Gassian5x5)
        row.theirs = [s, n = int(c.size)] {
            cv::GaussianBlur(s->theirInput, s->theirOutput, {n, n}, 0, 0, cv::BORDER_REPLICATE);
        };
    else
        row.theirs = [s, kernel = kernelMat(c), offset = double(c.offset)] {
            cv::filter2D(s->theirInput, s->theirOutput, CV_8U, kernel, {-1, -1}, offset,
                         cv::BORDER_REPLICATE);
        };
    table.push_back(std::move(row));
}

// Kernels as an engineer draws them: a small one whose sums fit 16 bits, and one with entries in the
// hundreds.
void addGeneral(std::vector<bench::Row>& table, const char* operation, long scale, const double (&goals)[2])
{
    static long entries[2][49];
    long* kernel = entries[scale > 1];
    long sum = 0;
    for (int i = 0; i < 49; ++i) {
        kernel[i] = scale * ((i * 37 + 11) % 9 - 3) + (scale > 1 ? i : 0);
        sum += kernel[i];
    }
    const Convolution c{kernel, 7, sum, 10};
    for (int size = 0; size < 2; ++size) {
        const bench::Extent& extent = bench::extents[size];
        auto s = std::make_shared<Subject>(extent);
        bench::Row row = rowFor(s, extent, operation, "filter2D", goals[size]);
        row.check = [s, c] {
            s->restore();
            return filter(s->view(), c, true) && s->work == plainFilter(*s, c);
        };
        row.ours = [s, c] { filter(s->view(), c, true); };
        row.theirs = [s, mat = kernelMat(c)] {
            cv::filter2D(s->theirInput, s->theirOutput, CV_8U, mat, {-1, -1}, 10, cv::BORDER_REPLICATE);
        };
        table.push_back(std::move(row));
    }
}

void addMorphology(std::vector<bench::Row>& table, const char* operation, bool least, bool both,
                   const double (&goals)[2])
{
    for (int size = 0; size < 2; ++size) {
        const bench::Extent& extent = bench::extents[size];
        auto s = std::make_shared<Subject>(extent);
        bench::Row row = rowFor(s, extent, operation, both ? "morphologyEx" : "erode, dilate", goals[size]);
        row.ours = [s, least, both] {
            least ? erode(s->view()) : dilate(s->view());
            if (both)
                least ? dilate(s->view()) : erode(s->view());
        };
        row.check = [s, least, both, ours = row.ours] {
            s->restore();
            ours();
            Pixels expected = plainScan(s->input, s->width, s->height, least);
            if (both)
                expected = plainScan(std::move(expected), s->width, s->height, !least);
            return s->work == expected;
        };
        row.theirs = [s, least, both, box = cv::Mat(cv::getStructuringElement(cv::MORPH_RECT, {3, 3}))] {
            if (both)
                cv::morphologyEx(s->theirInput, s->theirOutput, least ? cv::MORPH_OPEN : cv::MORPH_CLOSE,
                                 box);
            else if (least)
                cv::erode(s->theirInput, s->theirOutput, box);
            else
                cv::dilate(s->theirInput, s->theirOutput, box);
        };
        table.push_back(std::move(row));
    }
}

const bench::Register rows{[](std::vector<bench::Row>& table) {
    for (const NamedRow& entry : namedRows)
        for (int size = 0; size < 2; ++size)
            addNamed(table, entry, size);
    addGeneral(table, "Filter 7x7, threaded", 1, {0.08, 0.12});
    addGeneral(table, "Filter 7x7, threaded, large entries", 100, {0, 0});
    addMorphology(table, "Erode", true, false, {0.35, 0.4});
    addMorphology(table, "Dilate", false, false, {0.35, 0.4});
    addMorphology(table, "OpenBox", true, true, {0.4, 0.4});
    addMorphology(table, "CloseBox", false, true, {0.4, 0.4});
}};

} // namespace
