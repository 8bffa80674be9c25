#include "bench/Bench.h"
#include "bench/Pictures.h"
#include "image/VisionImage.h"
#include "tests/match/MatchReference.h"

#include <opencv2/imgproc.hpp>

#include <cstdlib>
#include <memory>

namespace {

constexpr int threshold = 120;

/// Parts with soft edges on a dark ground under camera noise, so that every level occurs, and a part as the
/// pattern.
struct PatternCase
{
    CKestImage image;
    cv::Mat picture, binary, labels, stats, centroids, scores, grayTemplate;
    std::vector<std::uint8_t> pixels;
    CMatchSrcArray sources;
    CMatchResultArray results;

    PatternCase(int width, int height)
    {
        auto gray = bench::partsPicture(width, height);
        cv::Mat soft(height, width, CV_8U, gray.data());
        cv::GaussianBlur(soft, soft, {5, 5}, 0);
        std::mt19937 engine(45);
        for (auto& p : gray)
            p = std::uint8_t(p + engine() % 12);
        image.SetImagePtr(width, height, gray.data());
        picture = cv::Mat(height, width, CV_8U, gray.data()).clone();
        pixels.assign(40 * 40, 255);
        for (int i = 0; i < 40; ++i)
            pixels[std::size_t(i) * 40 + 39] = 0;
        sources.appendForOverwrite(1)[0] = {255, threshold, 40, 40 * 39, 40, 40, pixels.data()};
        grayTemplate = cv::Mat(40, 40, CV_8U, pixels.data());
    }

    void matchPeer(int t, const cv::Mat& part)
    {
        cv::threshold(part, binary, t, 255, cv::THRESH_BINARY);
        const int count = cv::connectedComponentsWithStats(binary, labels, stats, centroids, 4);
        double best = 0;
        for (int i = 1; i < count; ++i) {
            const int w = stats.at<int>(i, cv::CC_STAT_WIDTH), h = stats.at<int>(i, cv::CC_STAT_HEIGHT);
            if (std::abs(w - 40) > 10 || std::abs(h - 40) > 10)
                continue;
            const cv::Rect box(stats.at<int>(i, cv::CC_STAT_LEFT), stats.at<int>(i, cv::CC_STAT_TOP),
                               std::min(w, 40), std::min(h, 40));
            const cv::Mat candidate = binary(box);
            const cv::Mat same = candidate == grayTemplate(cv::Rect(0, 0, box.width, box.height));
            const int white = cv::countNonZero(candidate & same);
            best = std::max(best, double(white) / 1560 + double(cv::countNonZero(same) - white) / 40);
        }
        bench::keep(best);
    }

    bool equal(const std::vector<testing_support::Scored>& expected)
    {
        bool same = int(expected.size()) == results.GetCount();
        for (int i = 0; same && i < results.GetCount(); ++i) {
            const auto& a = expected[std::size_t(i)];
            const auto& b = results[i];
            same = a.left == b.left && a.top == b.top && a.black == b.black_yield &&
                   a.white == b.white_yield && a.threshold == b.threshold;
        }
        return same;
    }
};

/// Made on first use, so that rows that are filtered out cost nothing.
template <class Case, class... Args>
auto onFirstUse(Args... args)
{
    auto made = std::make_shared<std::unique_ptr<Case>>();
    return [=]() -> Case& {
        if (!*made)
            *made = std::make_unique<Case>(args...);
        return **made;
    };
}

void addMatch(std::vector<bench::Row>& table)
{
    const auto get = onFirstUse<PatternCase>(2448, 2048);
    const auto ours = [=] {
        get().results.RemoveAll();
        get().image.Match(threshold, get().sources, get().results);
    };
    table.push_back({.operation = "Match over a picture",
                     .size = "5 MP",
                     .peer = "threshold + components + score",
                     .goal = 0.05,
                     .check =
                         [=] {
                             ours();
                             return get().equal(testing_support::matchReference(
                                 std::as_const(get().image).view(), threshold, get().sources[0]));
                         },
                     .prepare = {},
                     .ours = ours,
                     .theirs = [=] { get().matchPeer(threshold, get().picture); },
                     .limit = [=] { bench::keep(cv::sum(get().picture)); },
                     .prepareTheirs = {}});
}

void addMatchOverArea(std::vector<bench::Row>& table)
{
    const auto get = onFirstUse<PatternCase>(2448, 2048);
    const auto ours = [=] {
        get().results.RemoveAll();
        get().image.Match(100, 100, 2347, 1947, threshold, get().sources, get().results);
    };
    table.push_back({.operation = "Match over an area",
                     .size = "2248 x 1848",
                     .peer = "matchTemplate",
                     .goal = 0.005,
                     .check =
                         [=] {
                             ours();
                             return get().equal(testing_support::matchReference(
                                 std::as_const(get().image).view().part(100, 100, 2248, 1848), threshold,
                                 get().sources[0]));
                         },
                     .prepare = {},
                     .ours = ours,
                     .theirs =
                         [=] {
                             cv::matchTemplate(get().picture(cv::Rect(100, 100, 2248, 1848)),
                                               get().grayTemplate, get().scores, cv::TM_CCOEFF_NORMED);
                         },
                     .limit = {},
                     .prepareTheirs = {}});
}

void addMatchThresholdRange(std::vector<bench::Row>& table)
{
    const auto get = onFirstUse<PatternCase>(1400, 1100);
    const auto ours = [=] {
        get().results.RemoveAll();
        get().image.MatchThresholdRange(100, 100, 1299, 999, 60, 100, get().sources, get().results);
    };
    const auto check = [=] {
        ours();
        std::vector<testing_support::Scored> expected;
        for (int t = 60; t <= 100; ++t) {
            const auto scored = testing_support::matchReference(
                std::as_const(get().image).view().part(100, 100, 1200, 900), t, get().sources[0]);
            if (const auto* best = testing_support::bestOf(scored)) {
                expected.push_back(*best);
                expected.back().threshold = t;
            }
        }
        return get().equal(expected);
    };
    table.push_back({.operation = "MatchThresholdRange",
                     .size = "1 MP x 41",
                     .peer = "41 times threshold + components + score",
                     .goal = 0.03,
                     .check = check,
                     .prepare = {},
                     .ours = ours,
                     .theirs =
                         [=] {
                             for (int t = 60; t <= 100; ++t)
                                 get().matchPeer(t, get().picture(cv::Rect(100, 100, 1200, 900)));
                         },
                     .limit = {},
                     .prepareTheirs = {}});
}

/// 500 characters of up to 20 x 30 pixels, read with 36 sources.
struct OcrCase
{
    CKestImage image{2448, 2048};
    cv::Mat picture;
    CBlobRectArray blobs;
    std::vector<std::vector<std::uint8_t>> pixels;
    CMatchSrcArray sources;
    CMatchResultArray results;
    std::vector<cv::Mat> black, white;

    OcrCase()
    {
        std::mt19937 engine(46);
        const auto view = image.view();
        for (int i = 0; i < image.GetImageLen(); ++i)
            view.pixels[i] = std::uint8_t(engine() >> 24);
        for (int i = 0; i < 500; ++i) {
            const int x = i % 50 * 48 + int(engine() % 20), y = i / 50 * 200 + int(engine() % 100);
            blobs.Add(x, y, x + 15 + int(engine() % 5), y + 25 + int(engine() % 5), 300);
        }
        for (int k = 0; k < 36; ++k) {
            const int w = 16 + int(engine() % 5), h = 26 + int(engine() % 5);
            auto& data = pixels.emplace_back(std::size_t(w) * h);
            for (auto& p : data)
                p = engine() % 3 ? 255 : 0;
            const LONG blackCount = LONG(std::count(data.begin(), data.end(), 0));
            sources.appendForOverwrite(1)[0] = {
                std::uint8_t('0' + k), 0, blackCount, w * h - blackCount, w, h, data.data()};
            white.push_back(cv::Mat(h, w, CV_8U, data.data()).clone());
            black.push_back(~white.back());
        }
        picture = cv::Mat(2048, 2448, CV_8U, view.pixels).clone();
    }

    void ours()
    {
        results.RemoveAll();
        image.OcrMatch(threshold, blobs, sources, results);
    }

    void theirs()
    {
        for (const _stBlobRect& b : blobs.records()) {
            double best = 0;
            cv::Mat box, agreed;
            cv::threshold(picture(cv::Rect(b.left, b.top, b.right - b.left + 1, b.bottom - b.top + 1)), box,
                          threshold, 255, cv::THRESH_BINARY);
            const cv::Mat inverse = ~box;
            for (std::size_t k = 0; k < white.size(); ++k) {
                const cv::Rect met(0, 0, std::min(box.cols, white[k].cols),
                                   std::min(box.rows, white[k].rows));
                cv::bitwise_and(box(met), white[k](met), agreed);
                double score = cv::countNonZero(agreed);
                cv::bitwise_and(inverse(met), black[k](met), agreed);
                best = std::max(best, score + cv::countNonZero(agreed));
            }
            bench::keep(best);
        }
    }

    bool check()
    {
        ours();
        bool equal = results.GetCount() == blobs.GetCount();
        for (int i = 0; equal && i < blobs.GetCount(); ++i) {
            std::vector<testing_support::Scored> scored;
            for (const _stMatchSource& source : sources.records())
                scored.push_back(
                    testing_support::score(std::as_const(image).view(), threshold, source, blobs[i]));
            const auto* best = testing_support::bestOf(scored);
            equal = best->key == results[i].key && best->black == results[i].black_yield &&
                    best->white == results[i].white_yield;
        }
        return equal;
    }
};

const bench::Register rows{[](std::vector<bench::Row>& table) {
    addMatch(table);
    addMatchOverArea(table);
    addMatchThresholdRange(table);
    const auto get = onFirstUse<OcrCase>();
    table.push_back({.operation = "OcrMatch",
                     .size = "500 x 36",
                     .peer = "and, countNonZero",
                     .goal = 0.02,
                     .check = [=] { return get().check(); },
                     .prepare = {},
                     .ours = [=] { get().ours(); },
                     .theirs = [=] { get().theirs(); },
                     .limit = {},
                     .prepareTheirs = {}});
}};

} // namespace
