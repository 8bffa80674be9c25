#include "bench/Bench.h"
#include "bench/Limits.h"
#include "bench/Pictures.h"
#include "image/VisionImage.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

namespace {

using Pixels = std::vector<std::uint8_t>;

/// What a row works on; its closures share it.
struct Subject
{
    explicit Subject(const bench::Extent& extent)
        : name(extent.name), width(extent.width), height(extent.height),
          input(bench::naturalPicture(width, height)), work(input), scratch(input.size()),
          theirInput(height, width, CV_8U, input.data()), theirOutput(height, width, CV_8U),
          theirTable(1, 256, CV_8U)
    {
        image.SetImagePtrLink(width, height, work.data());
        for (int i = 0; i < 256; ++i)
            theirTable.at<std::uint8_t>(i) = std::uint8_t(std::min(255, i + 20));
    }
    void restore() { std::memcpy(work.data(), input.data(), work.size()); }

    const char* name;
    int width, height;
    Pixels input, work, scratch;
    CKestImage image;
    cv::Mat theirInput, theirOutput, theirTable, theirCounts;
    CPixelArray found;
    std::vector<cv::Point> theirFound;
};
using Shared = std::shared_ptr<Subject>;

bench::Row rowFor(const Shared& s, const char* operation, const char* peer, double goal5, double goalVga)
{
    bench::Row row;
    row.operation = operation;
    row.size = s->name;
    row.peer = peer;
    row.goal = s->width > 1000 ? goal5 : goalVga;
    return row;
}

/// A row of an operation that changes every pixel, the peer's into another picture; plain says what becomes
/// of one.
bench::Row changing(const Shared& s, bench::Row row, std::function<void(CKestImage&)> ours,
                    std::function<std::uint8_t(std::uint8_t)> plain, std::function<void(Subject&)> theirs)
{
    row.check = [s, ours, plain] {
        s->restore();
        ours(s->image);
        return std::equal(s->input.begin(), s->input.end(), s->work.begin(),
                          [&](std::uint8_t from, std::uint8_t to) { return plain(from) == to; });
    };
    row.ours = [s, ours] { ours(s->image); };
    row.theirs = [s, theirs] { theirs(*s); };
    row.limit = [s] { std::memcpy(s->scratch.data(), s->input.data(), s->scratch.size()); };
    return row;
}

/// A row of an operation that only reads and returns a number.
bench::Row reading(const Shared& s, bench::Row row, std::function<double(CKestImage&)> ours,
                   std::function<double(const Subject&)> plain, std::function<void(Subject&)> theirs)
{
    row.check = [s, ours, plain] {
        s->restore();
        return ours(s->image) == plain(*s);
    };
    row.ours = [s, ours] { bench::keep(ours(s->image)); };
    row.theirs = [s, theirs] { theirs(*s); };
    row.limit = [s] { bench::readAll(s->work.data(), s->work.size()); };
    return row;
}

std::vector<long> plainHistogram(const Pixels& pixels)
{
    std::vector<long> counts(256, 0);
    for (std::uint8_t p : pixels)
        ++counts[p];
    return counts;
}

Pixels plainEqualize(const Pixels& pixels)
{
    const auto counts = plainHistogram(pixels);
    std::uint8_t table[256];
    long met = 0;
    for (int i = 0; i < 256; ++i) {
        met += counts[i];
        table[i] = std::uint8_t(met * (255.0 / double(pixels.size())));
    }
    Pixels out(pixels);
    for (auto& p : out)
        p = table[p];
    return out;
}

struct Edges
{
    long sum = 0, count = 0;
    void scan(const std::uint8_t* line, int step, int length)
    {
        for (int i = 0; i < length;) {
            int n = 1, total = line[i * step];
            for (; i + n < length && line[(i + n) * step] > line[(i + n - 1) * step]; ++n)
                total += line[(i + n) * step];
            if (n >= 5 && line[(i + n - 1) * step] - line[i * step] > 2 * n) {
                sum += total / n;
                ++count;
            }
            i += n;
        }
    }
};

double plainAutoThreshold(const Subject& s, bool columns)
{
    Edges edges;
    for (int y = 0; y < s.height; ++y)
        edges.scan(s.input.data() + std::size_t(y) * s.width, 1, s.width);
    for (int x = 0; columns && x < s.width; ++x)
        edges.scan(s.input.data() + x, s.width, s.height);
    return edges.count ? std::trunc(edges.sum / double(float(edges.count))) : 0;
}

Pixels plainAdaptive(const Subject& s)
{
    Pixels out(s.input);
    for (int y = 0; y < s.height; ++y) {
        Edges edges;
        std::uint8_t* row = out.data() + std::size_t(y) * s.width;
        edges.scan(row, 1, s.width);
        for (int x = 0; x < s.width; ++x)
            row[x] = !edges.count ? 0 : row[x] > edges.sum / edges.count ? 255 : 0;
    }
    return out;
}

void theirLut(Subject& s)
{
    cv::LUT(s.theirInput, s.theirTable, s.theirOutput);
}

void theirOtsu(Subject& s)
{
    bench::keep(cv::threshold(s.theirInput, s.theirOutput, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU));
}

void pointRows(std::vector<bench::Row>& table, const Shared& s)
{
    table.push_back(changing(
        s, rowFor(s, "Invert", "bitwise_not", 1.0, 1.0), [](CKestImage& image) { image.Invert(); },
        [](std::uint8_t p) { return std::uint8_t(255 - p); },
        [](Subject& t) { cv::bitwise_not(t.theirInput, t.theirOutput); }));
    table.push_back(changing(
        s, rowFor(s, "Threshold", "threshold", 1.0, 1.0), [](CKestImage& image) { image.Threshold(100); },
        [](std::uint8_t p) { return std::uint8_t(p > 100 ? 255 : 0); },
        [](Subject& t) { cv::threshold(t.theirInput, t.theirOutput, 100, 255, cv::THRESH_BINARY); }));
    table.push_back(changing(
        s, rowFor(s, "DoubleThreshold", "inRange", 0.5, 0.4),
        [](CKestImage& image) { image.DoubleThreshold(150, 80, 255); },
        [](std::uint8_t p) { return std::uint8_t(80 <= p && p <= 150 ? 255 : 0); },
        [](Subject& t) { cv::inRange(t.theirInput, 80, 150, t.theirOutput); }));
    table.push_back(changing(
        s, rowFor(s, "Light", "LUT", 0.2, 0.15), [](CKestImage& image) { image.Light(20, 0); },
        [](std::uint8_t p) { return std::uint8_t(std::min(255, p + 20)); }, theirLut));

    bench::Row equalize = rowFor(s, "HistoEqualize", "equalizeHist", 0.65, 0.65);
    equalize.check = [s] {
        s->restore();
        s->image.HistoEqualize();
        return s->work == plainEqualize(s->input);
    };
    equalize.prepare = [s] { s->restore(); };
    equalize.ours = [s] { s->image.HistoEqualize(); };
    equalize.theirs = [s] { cv::equalizeHist(s->theirInput, s->theirOutput); };
    table.push_back(equalize);

    bench::Row adaptive = rowFor(s, "AdaptiveThreshold", "threshold by Otsu", 0.55, 1.0);
    adaptive.check = [s] {
        s->restore();
        s->image.AdaptiveThreshold(0);
        return s->work == plainAdaptive(*s);
    };
    adaptive.prepare = [s] { s->restore(); };
    adaptive.ours = [s] { s->image.AdaptiveThreshold(0); };
    adaptive.theirs = [s] { theirOtsu(*s); };
    table.push_back(adaptive);
}

void statisticsRows(std::vector<bench::Row>& table, const Shared& s)
{
    table.push_back(reading(
        s, rowFor(s, "Histogram", "calcHist", 0.6, 0.95),
        [](CKestImage& image) {
            long counts[256] = {};
            image.Histogram(counts);
            return double(counts[100]);
        },
        [](const Subject& t) { return double(plainHistogram(t.input)[100]); },
        [](Subject& t) {
            const int channel = 0, bins = 256;
            const float levels[] = {0, 256};
            const float* range = levels;
            cv::calcHist(&t.theirInput, 1, &channel, cv::Mat(), t.theirCounts, 1, &bins, &range);
        }));
    table.push_back(reading(
        s, rowFor(s, "GetGrayLevelAverage", "mean", 0.95, 0.35),
        [](CKestImage& image) { return image.GetGrayLevelAverage(); },
        [](const Subject& t) {
            double sum = 0;
            for (std::uint8_t p : t.input)
                sum += p;
            return sum / double(t.input.size());
        },
        [](Subject& t) { bench::keep(cv::mean(t.theirInput)); }));
    for (bool columns : {false, true})
        table.push_back(reading(
            s,
            columns ? rowFor(s, "GetAutoThreshold 'A'", "threshold by Otsu", 0.85, 1.6)
                    : rowFor(s, "GetAutoThreshold 'H'", "threshold by Otsu", 0.5, 0.9),
            [=](CKestImage& image) { return double(image.GetAutoThreshold(columns ? 'A' : 'H', 1)); },
            [=](const Subject& t) { return plainAutoThreshold(t, columns); }, theirOtsu));
}

// About a third of the picture's pixels.
constexpr std::uint8_t low = 90, high = 132;

bool collectionIsRight(Subject& s)
{
    s.restore();
    CPixelArray ar;
    s.image.GetPixelArray(low, high, ar);
    std::size_t n = 0;
    const auto records = ar.records();
    for (int y = 0; y < s.height; ++y)
        for (int x = 0; x < s.width; ++x) {
            const std::uint8_t p = s.input[std::size_t(y) * s.width + x];
            if (p < low || p > high)
                continue;
            if (n == records.size() || records[n].x != x || records[n].y != y || records[n].gray_level != p ||
                records[n].parameter != 0)
                return false;
            ++n;
        }
    return n == records.size();
}

void collectionRows(std::vector<bench::Row>& table, const Shared& s)
{
    bench::Row fresh = rowFor(s, "GetPixelArray, fresh", "inRange + findNonZero", 0.25, 0.25);
    fresh.check = [s] { return collectionIsRight(*s); };
    fresh.ours = [s] {
        CPixelArray ar;
        bench::keep(s->image.GetPixelArray(low, high, ar));
    };
    fresh.theirs = [s] {
        std::vector<cv::Point> found;
        cv::inRange(s->theirInput, low, high, s->theirOutput);
        cv::findNonZero(s->theirOutput, found);
        bench::keep(found);
    };
    table.push_back(fresh);

    bench::Row reused = rowFor(s, "GetPixelArray, reused", "inRange + findNonZero", 0.12, 0.12);
    reused.check = fresh.check;
    reused.ours = [s] {
        s->found.RemoveAll();
        bench::keep(s->image.GetPixelArray(low, high, s->found));
    };
    reused.theirs = [s] {
        cv::inRange(s->theirInput, low, high, s->theirOutput);
        cv::findNonZero(s->theirOutput, s->theirFound);
    };
    table.push_back(reused);
}

const bench::Register rows{[](std::vector<bench::Row>& table) {
    for (const bench::Extent& extent : bench::extents) {
        const auto subject = std::make_shared<Subject>(extent);
        pointRows(table, subject);
        statisticsRows(table, subject);
        collectionRows(table, subject);
    }
}};

} // namespace
