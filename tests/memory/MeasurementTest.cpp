// What measurements, pictures and jobs give when memory is short: everything or nothing.

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "tests/match/MatchPictures.h"
#include "tests/support/FailingMemory.h"
#include "tests/support/Random.h"
#include "tests/support/Variants.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

using namespace testing_support;

namespace {

auto fieldsOf(const _stPixel& r)
{
    return std::tuple(r.x, r.y, r.gray_level, r.parameter);
}
auto fieldsOf(const _stColorPixel& r)
{
    return std::tuple(r.x, r.y, r.color, r.parameter);
}
auto fieldsOf(const POINT& r)
{
    return std::tuple(r.x, r.y);
}
auto fieldsOf(const _stBlobRect& r)
{
    return std::tuple(r.left, r.top, r.right, r.bottom, r.pixel_count);
}
auto fieldsOf(const _stMatchResult& r)
{
    return std::tuple(r.key, r.left, r.top, r.right, r.bottom, r.pixel_count, r.black_yield, r.white_yield,
                      r.threshold);
}
auto fieldsOf(const CPointArray& points)
{
    std::vector<std::tuple<LONG, LONG>> fields;
    for (const POINT& p : points.records())
        fields.push_back(fieldsOf(p));
    return fields;
}

template <class Array>
auto listed(const Array& array)
{
    std::vector<decltype(fieldsOf(array.records()[0]))> list;
    for (const auto& record : array.records())
        list.push_back(fieldsOf(record));
    return list;
}

/// An array whose room is used up, so that the first record that is appended takes memory.
template <class Array>
Array fullArray()
{
    Array array;
    for (auto& record : array.appendForOverwrite(100))
        record = {};
    return array;
}

template <class Array>
using Measure = std::function<int(Array&)>;

/// Lets every allocation of the measurement fail: it gives all or nothing, tells the count that the array
/// then has, and gives all the next time.
template <class Array>
void expectWholeOrNothing(const char* name, const Measure<Array>& measure)
{
    SCOPED_TRACE(name);
    Array whole = fullArray<Array>();
    ASSERT_GT(measure(whole), 100) << "nothing is measured";
    const auto all = listed(whole), none = listed(fullArray<Array>());
    for (const Fails how : {Fails::Once, Fails::FromThenOn}) {
        Array array = fullArray<Array>();
        long incomplete = 0;
        const long allocations = failEveryAllocation(
            how,
            [&] {
                array.cutBackTo(100);
                array.SetCount(100); // gives the memory back
                return measure(array);
            },
            [&](int returned) {
                EXPECT_EQ(returned, array.GetCount());
                const auto found = listed(array);
                EXPECT_TRUE(found == all || found == none) << found.size() << " of " << all.size();
                incomplete += found == none;
                Array again = fullArray<Array>();
                EXPECT_EQ(measure(again), int(all.size()));
                EXPECT_TRUE(listed(again) == all);
            });
        EXPECT_GT(allocations, 0);
        EXPECT_GT(incomplete, 0) << "no failure mattered";
        EXPECT_TRUE(listed(array) == all);
    }
}

/// A picture with blobs, steep edges and every level.
const CKestImage& picture()
{
    static const CKestImage made = blobPicture(641, 129, 5);
    return made;
}

const CKestImage24& colorPicture()
{
    static const CKestImage24 made = [] {
        auto bytes = randomBytes(std::size_t(ormalux::paddedStride(161)) * 129, 6);
        for (auto& b : bytes)
            b &= 0xC0;
        return CKestImage24(161, 129, bytes.data());
    }();
    return made;
}

} // namespace

TEST(ShortMemory, TracesAreWholeOrNothing)
{
    const auto check = [](const char* name, const Measure<CPointArray>& measure) {
        expectWholeOrNothing<CPointArray>(name, measure);
    };
    check("line", [](CPointArray& ar) { return CKestImage::GetLineSegment(3, 5, 900, 400, ar); });
    check("circle", [](CPointArray& ar) { return CKestImage::GetCycleSegment(0, 0, 300, ar); });
    check("ellipse", [](CPointArray& ar) { return CKestImage::GetEllipseSegment(0, 0, 300, 90, ar); });
    check("arc", [](CPointArray& ar) { return CKestImage::GetArcSegment(0, 0, 90, 0, 300, ar); });
}

TEST(ShortMemory, SamplesAreWholeOrNothing)
{
    const auto gray = [](const char* name, const Measure<CPixelArray>& measure) {
        expectWholeOrNothing<CPixelArray>(name, measure);
    };
    const CKestImage& image = picture();
    gray("line", [&](CPixelArray& ar) { return image.GetLinePixelArray(0, 9, 640, 99, 0, 255, ar); });
    gray("circle", [&](CPixelArray& ar) { return image.GetCyclePixelArray(320, 64, 60, 0, 255, ar); });
    gray("ellipse",
         [&](CPixelArray& ar) { return image.GetEllipsePixelArray(320, 64, 300, 60, 0, 255, ar); });
    gray("arc", [&](CPixelArray& ar) { return image.GetArcPixelArray(320, 64, 60, 0, 300, 0, 255, ar); });
    gray("range", [&](CPixelArray& ar) { return image.GetPixelArray(90, 110, ar); });
    gray("part", [&](CPixelArray& ar) { return image.GetPixelArray(5, 5, 400, 90, 0, 120, ar); });
    gray("edges", [&](CPixelArray& ar) { return image.GetPointGauge(0, 60, 640, 60, 0, 80, ar); });
    const auto color = [](const char* name, const Measure<CColorPixelArray>& measure) {
        expectWholeOrNothing<CColorPixelArray>(name, measure);
    };
    const CKestImage24& colors = colorPicture();
    color("line", [&](CColorPixelArray& ar) { return colors.GetLinePixelArray(0, 9, 160, 99, ar); });
    color("circle", [&](CColorPixelArray& ar) { return colors.GetCyclePixelArray(80, 64, 60, ar); });
    color("ellipse", [&](CColorPixelArray& ar) { return colors.GetEllipsePixelArray(80, 64, 70, 60, ar); });
    color("arc", [&](CColorPixelArray& ar) { return colors.GetArcPixelArray(80, 64, 60, 0, 300, ar); });
    color("range", [&](CColorPixelArray& ar) { return colors.GetPixelArray(0, 0x808080, ar); });
    color("part", [&](CColorPixelArray& ar) { return colors.GetPixelArray(5, 5, 90, 90, 0, 0x80FFFF, ar); });
}

TEST(ShortMemory, BlobListsAreWholeOrNothing)
{
    const auto check = [](const char* name, const Measure<CBlobRectArray>& measure) {
        expectWholeOrNothing<CBlobRectArray>(name, measure);
    };
    using Blobs = CBlobRectArray;
    const CKestImage& g = picture();
    check("threshold", [&](Blobs& ar) { return g.GetBlobList(100, 255, 1, 99, 1, 99, ar); });
    check("region", [&](Blobs& ar) { return g.GetBlobList(5, 5, 600, 99, 100, 0, 1, 700, 1, 99, ar); });
    check("value", [&](Blobs& ar) { return g.GetBlobList(80, 1, 99, 1, 99, ar); });
    check("value in region", [&](Blobs& ar) { return g.GetBlobList(5, 5, 600, 99, 80, 1, 99, 1, 99, ar); });
    check("range", [&](Blobs& ar) { return g.GetGrayRangeBlobList(90, 120, 1, 99, 1, 99, ar); });
    expectWholeOrNothing<CPointArrayArray>("pixels", [](CPointArrayArray& ar) {
        return picture().GetBlobList(0, 0, 200, 40, 80, 1, 99, 1, 99, ar);
    });
    const CKestImage24& c = colorPicture();
    check("colours", [&](Blobs& ar) { return c.GetColorRangeBlobList(0, 0x80FFFF, 1, 99, 1, 99, ar); });
    check("colours in region",
          [&](Blobs& ar) { return c.GetColorRangeBlobList(5, 5, 90, 90, 0, 0x80FFFF, 1, 99, 1, 99, ar); });
    check("plane", [&](Blobs& ar) { return c.GetPlaneBlobList('G', 90, 255, 1, 99, 1, 99, ar); });
    check("plane in region",
          [&](Blobs& ar) { return c.GetPlaneBlobList(5, 5, 90, 90, 'A', 90, 0, 1, 99, 1, 99, ar); });
    check("mean", [&](Blobs& ar) { return c.GetBlobList(90, 255, 1, 99, 1, 99, ar); });
    check("mean in region", [&](Blobs& ar) { return c.GetBlobList(5, 5, 90, 90, 90, 0, 1, 99, 1, 99, ar); });
    check("mean range", [&](Blobs& ar) { return c.GetGrayRangeBlobList(50, 90, 1, 99, 1, 99, ar); });
    check("black", [&](Blobs& ar) { return c.GetKBlobList(90, 255, 1, 99, 1, 99, ar); });
    check("black in region",
          [&](Blobs& ar) { return c.GetKBlobList(5, 5, 90, 90, 90, 0, 1, 99, 1, 99, ar); });
}

TEST(ShortMemory, MatchesAreWholeOrNothing)
{
    const auto check = [](const char* name, const Measure<CMatchResultArray>& measure) {
        expectWholeOrNothing<CMatchResultArray>(name, measure);
    };
    using Results = CMatchResultArray;
    const Source bright = randomSource(9, 9, 255, 1), character = randomSource(8, 12, 'A', 2);
    CMatchSrcArray patterns, characters;
    add(patterns, bright);
    add(characters, character);
    add(characters, bright);
    CBlobRectArray boxes;
    const CKestImage g = blobPicture(97, 65, 7);
    g.GetBlobList(100, 0, 1, 99, 1, 99, boxes);
    forEachBandCount([&](int) {
        check("whole", [&](Results& ar) { return g.Match(110, patterns, ar); });
        check("area", [&](Results& ar) { return g.Match(5, 5, 90, 60, 110, patterns, ar); });
        check("range",
              [&](Results& ar) { return g.MatchThresholdRange(0, 0, 96, 64, 60, 400, patterns, ar); });
        check("characters", [&](Results& ar) { return g.OcrMatch(100, 1, 99, 1, 99, characters, ar); });
        check("characters in region",
              [&](Results& ar) { return g.OcrMatch(5, 5, 90, 60, 100, 1, 99, 1, 99, characters, ar); });
        check("boxes", [&](Results& ar) { return g.OcrMatch(100, boxes, characters, ar); });
    });
}

TEST(ShortMemory, ALineGaugeGivesItsAngleOrLeavesTheResult)
{
    CKestImage image(99, 99);
    image.Marking(40, 0, 98, 98, 200);
    const auto measure = [&] {
        _stLineGaugeResult result{7, 7, 7, 7, 7, 7, 7};
        const int found = image.GetLineGauge(10, 10, 90, 90, 0, DIRECTION_VERTICAL, 1, 100, result);
        return std::tuple(found, result.x1, result.center_x, result.center_y, result.angle);
    };
    const auto whole = measure();
    ASSERT_EQ(std::get<0>(whole), 1);
    for (const Fails how : {Fails::Once, Fails::FromThenOn})
        EXPECT_GT(failEveryAllocation(how, measure,
                                      [&](const auto& given) {
                                          EXPECT_TRUE(given == whole || given == std::tuple(0, 7, 7, 7, 7.0));
                                          EXPECT_TRUE(measure() == whole);
                                      }),
                  0);
}

TEST(ShortMemory, APointLiesInACircleAllTheSame)
{
    for (const Fails how : {Fails::Once, Fails::FromThenOn})
        failEveryAllocation(
            how, [] { return CKestImage::PtInCycle(0, 0, 50, 10, 10); }, [](int in) { EXPECT_EQ(in, 1); });
}

TEST(ShortMemory, AnArrayOfRectanglesThatCannotBeCopiedStaysAsItWas)
{
    CRectArray large;
    large.appendForOverwrite(1000);
    CRectArray array;
    array.Add(1, 2, 3, 4);
    const FailingMemory failing(0, Fails::FromThenOn);
    array = large;
    ASSERT_TRUE(failing.hasFailed());
    ASSERT_EQ(array.GetCount(), 1);
    EXPECT_EQ(array[0].bottom, 4);
}
