#include "interface/ormalux.h"
#include "steps/Recipe.h"
#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "tests/support/DrawnTruth.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <thread>

using namespace testing_support;
using testing::HasSubstr;

namespace {

CKestRecipe parsed(const std::string& json)
{
    CKestRecipe recipe;
    EXPECT_EQ(recipe.Parse(json.c_str(), nullptr), 1) << recipe.GetError();
    return recipe;
}

/// Three bright boxes on a dark ground.
CKestImage boxes()
{
    DrawnTruth scene(101, 47, 30);
    scene.drawBox(5, 6, 15, 16, 210);
    scene.drawBox(40, 20, 50, 30, 210);
    scene.drawBox(70, 8, 86, 20, 210);
    return scene.shot();
}

struct Placed
{
    double dx, dy, degrees;

    /// Where a point of the plate at rest lies; the plate turns about (160, 120).
    std::pair<double, double> operator()(double x, double y) const
    {
        const double c = std::cos(radians(degrees)), s = std::sin(radians(degrees));
        const double u = x - 160, v = y - 120;
        return {160 + dx + c * u + s * v, 120 + dy - s * u + c * v};
    }
};

/// A plate with two holes, an edge, and maybe a hole that is missing or displaced.
CKestImage plate(const Placed& placed, double gap, bool third, double noise, unsigned seed)
{
    DrawnTruth scene(320, 240, 60);
    const auto [ax, ay] = placed(90, 90);
    const auto [bx, by] = placed(230, 110);
    const auto [cx, cy] = placed(150, 160);
    scene.drawDisc(ax, ay, 14, 190);
    scene.drawDisc(bx, by, 11, 190);
    if (third)
        scene.drawDisc(cx, cy, 8, 190);
    // The upper edge of a bright strip, `gap` below the first hole.
    const auto [ex, ey] = placed(90, 90 + gap);
    const double nx = std::sin(radians(placed.degrees)), ny = std::cos(radians(placed.degrees));
    scene.drawHalfPlane(nx, ny, nx * ex + ny * ey, 200);
    return scene.shot(noise, seed);
}

constexpr const char* plateRecipe = R"({
  "values": {"gap": 120.0},
  "scale": {"unit": "mm", "per_pixel": 0.05},
  "steps": [
    {"step": "features", "name": "holes", "threshold": 125, "where": {"area": [100, 1000]}, "sort": "-area"},
    {"step": "frame", "name": "rough", "origin": "holes", "reference": [90, 90], "toward": "holes[2]", "reference2": [230, 110]},
    {"step": "circle", "name": "a", "in": "rough", "center": [90, 90], "radii": [8, 20], "width": 3},
    {"step": "circle", "name": "b", "in": "rough", "center": [230, 110], "radii": [6, 17], "width": 3},
    {"step": "frame", "name": "board", "origin": "a", "reference": [90, 90], "toward": "b", "reference2": [230, 110]},
    {"step": "line", "name": "edge", "in": "board", "box": [120, 210, 100, 24, 0], "scans": 60, "width": 3},
    {"step": "distance", "name": "gap", "from": "a", "to": "edge"},
    {"step": "features", "name": "third", "in": "board", "roi": [135, 145, 165, 175], "threshold": 125, "where": {"area": [100, null]}}
  ],
  "limits": [
    {"of": "gap.distance_mm", "nominal": "$gap", "tolerance": 0.02},
    {"of": "third.count", "equals": 1},
    {"of": "edge.used", "at_least": 50, "severity": "warn"}
  ]
})";

} // namespace

TEST(Inspection, MovedPlatesAreFollowedMeasuredAndJudged)
{
    CKestRecipe recipe = parsed(plateRecipe);
    ASSERT_EQ(recipe.Set("gap", "6.0"), 1) << recipe.GetError();
    CKestInspection result;
    std::mt19937 random(11);
    double worstAngle = 0, worstPlace = 0;
    int judged[2] = {0, 0};
    for (unsigned i = 0; i < 80; ++i) {
        const auto within = [&](double reach) { return reach * (2.0 * random() / 4294967295.0 - 1); };
        const Placed placed{within(20), within(20), within(5)};
        const int defect = int(random() % 4); // 0, 1 none; 2 gap; 3 the third hole
        const CKestImage picture = plate(placed, defect == 2 ? 121 : 120, defect != 3, 4, i + 1);
        const int verdict = recipe.Run(picture, result);
        EXPECT_EQ(verdict, defect < 2) << i << ": " << result.GetJson();
        ++judged[verdict == 1];
        double x, y, angle;
        ASSERT_TRUE(result.GetValue("board", "x", 0, x) && result.GetValue("board", "y", 0, y));
        ASSERT_TRUE(result.GetValue("board", "angle", 0, angle));
        const auto [ax, ay] = placed(90, 90);
        worstPlace = std::max(worstPlace, std::hypot(x - ax, y - ay));
        worstAngle = std::max(worstAngle, std::abs(angle - placed.degrees));
    }
    EXPECT_LT(worstPlace, 0.06);
    EXPECT_LT(worstAngle, 0.03);
    EXPECT_GT(judged[0], 20);
    EXPECT_GT(judged[1], 20);
}

TEST(Inspection, AMissingFrameFailsThePictureAndTheOthersReport)
{
    CKestRecipe recipe = parsed(R"({"steps": [
        {"step": "blobs", "name": "all", "threshold": 100},
        {"step": "blobs", "name": "huge", "threshold": 100, "min_size": "90x40"},
        {"step": "frame", "name": "board", "origin": "huge", "reference": [1, 2]},
        {"step": "blobs", "name": "inside", "in": "board", "threshold": 100, "roi": [0, 0, 50, 46]}],
        "limits": [{"of": "all.count", "equals": 3}, {"of": "inside.count", "at_most": 9}]})");
    CKestInspection result;
    EXPECT_EQ(recipe.Run(boxes(), result), 0);
    EXPECT_EQ(result.GetCount("all"), 3);
    EXPECT_EQ(result.GetCount("inside"), 0);
    EXPECT_THAT(result.GetJson(),
                HasSubstr(R"("verdict":"fail","failed":[{"of":"board","reason":"huge was not found"}])"));
}

TEST(Inspection, UprightRegionsOfATurnedPlateAreMeasuredAsAtRest)
{
    // A turned frame made by two blobs; the long bar between them is upright again in the frame.
    DrawnTruth scene(200, 160, 20);
    const double turn = 30, c = std::cos(radians(turn)), s = std::sin(radians(turn));
    const auto at = [&](double x, double y) { return std::pair(100 + c * x + s * y, 80 - s * x + c * y); };
    for (const double x : {-60.0, 60.0}) {
        const auto [px, py] = at(x, 0);
        scene.drawDisc(px, py, x < 0 ? 8 : 6, 220);
    }
    for (double u = -20; u <= 20; u += 0.25)
        for (double v = -3; v <= 3; v += 0.25) {
            const auto [px, py] = at(u, v + 30);
            scene.at(int(std::lround(px)), int(std::lround(py))) = 220;
        }
    CKestRecipe recipe = parsed(R"({"steps": [
        {"step": "features", "name": "discs", "threshold": 120, "where": {"circularity": [0.85, null]}, "sort": "-area"},
        {"step": "frame", "name": "board", "origin": "discs", "reference": [40, 80], "toward": "discs[2]", "reference2": [160, 80]},
        {"step": "features", "name": "bar", "in": "board", "upright": true, "roi": [70, 95, 130, 125], "threshold": 120, "sort": "-area"},
        {"step": "features", "name": "skewed", "in": "board", "roi": [70, 95, 130, 125], "threshold": 120, "sort": "-area"}]})");
    CKestInspection result;
    EXPECT_EQ(recipe.Run(scene.shot(), result), 1) << result.GetJson();
    double width, height, x, y, orientation, turned;
    ASSERT_TRUE(result.GetValue("bar", "width", 0, width) && result.GetValue("bar", "height", 0, height));
    EXPECT_NEAR(width, 41, 1.5);
    EXPECT_NEAR(height, 7, 1.5);
    ASSERT_TRUE(result.GetValue("bar", "centroid_x", 0, x) && result.GetValue("bar", "centroid_y", 0, y));
    const auto [bx, by] = at(0, 30);
    EXPECT_NEAR(x, bx, 0.5);
    EXPECT_NEAR(y, by, 0.5);
    ASSERT_TRUE(result.GetValue("bar", "orientation", 0, orientation));
    EXPECT_NEAR(orientation, 30, 2);
    ASSERT_TRUE(result.GetValue("skewed", "orientation", 0, turned));
    EXPECT_NEAR(turned, 30, 3);
}

TEST(Inspection, LimitsTakeEveryForm)
{
    const auto verdict = [](const std::string& limit) {
        CKestRecipe recipe = parsed(R"({"steps": [{"step": "blobs", "name": "b", "threshold": 100}],
            "limits": [)" + limit + "]}");
        CKestInspection result;
        recipe.Run(boxes(), result);
        return std::string(result.GetJson());
    };
    // Rows in scan order: 10 x 10, 16 x 12, 10 x 10.
    for (const char* right :
         {R"-({"of":"b.count","equals":3})-", R"-({"of":"b.width","nominal":10,"tolerance":0})-",
          R"-({"of":"b[2].width","nominal":15,"tolerance":[0,1]})-",
          R"-({"of":"b.max(width)","at_most":16})-", R"-({"of":"b.min(height)","at_least":10})-",
          R"-({"of":"b.mean(width)","nominal":12,"tolerance":1e-9})-",
          R"-({"of":"b.range(width)","equals":6})-",
          R"-({"of":"b.std(width)","nominal":2.8284271,"tolerance":1e-6})-",
          R"-({"of":"b.threshold","one_of":[99,100]})-", R"-({"of":"b[3].left","matches":"^4"})-"})
        EXPECT_THAT(verdict(right), HasSubstr(R"("verdict":"pass"})")) << right;
    EXPECT_THAT(verdict(R"({"of":"b[4].width","at_least":0})"),
                HasSubstr(R"("verdict":"fail","failed":[{"of":"b[4].width","value":null,"low":0.0}])"));
    EXPECT_THAT(verdict(R"({"of":"b.width","nominal":12.5,"tolerance":0.5})"),
                HasSubstr(R"("failed":[{"of":"b.width","value":10,"low":12.0,"high":13.0}])"));
    EXPECT_THAT(verdict(R"({"of":"b.count","one_of":[1,2]})"),
                HasSubstr(R"("failed":[{"of":"b.count","value":3,"expected":[1,2]}])"));
    EXPECT_THAT(verdict(R"({"of":"b.count","at_most":2,"severity":"warn"})"),
                HasSubstr(R"("verdict":"pass","warned":[{"of":"b.count","value":3,"high":2.0}])"));
}

TEST(Inspection, ManyThreadsGetTheBytesOfOne)
{
    const CKestRecipe recipe = parsed(plateRecipe);
    std::vector<CKestImage> pictures;
    std::vector<std::string> expected;
    CKestInspection result;
    for (unsigned i = 0; i < 4; ++i) {
        pictures.push_back(plate({5.0 * i, -3.0 * i, 1.0 * i}, 120, i != 2, 4, i + 1));
        recipe.Run(pictures.back(), result);
        expected.push_back(result.GetJson());
    }
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int t = 0; t < 64; ++t)
        threads.emplace_back([&, t] {
            CKestInspection own;
            for (int i = 0; i < 6; ++i) {
                const std::size_t which = std::size_t(t + i) % pictures.size();
                recipe.Run(pictures[which], own);
                wrong += own.GetJson() != expected[which];
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST(CInterface, EveryFormatAndStrideGivesTheSameFindings)
{
    char error[200] = "x";
    ormalux_recipe* const recipe = ormalux_recipe_parse(
        R"({"steps":[{"step":"blobs","threshold":100},{"step":"histogram"}]})", nullptr, error, sizeof error);
    ASSERT_TRUE(recipe) << error;
    const CKestImage gray = boxes();
    const int width = gray.GetWidth(), height = gray.GetHeight();
    const auto run = [&](const void* top, std::ptrdiff_t stride, int format, int bits) {
        ormalux_result* const result = ormalux_recipe_run(recipe, top, width, height, stride, format, bits);
        const std::string json = ormalux_result_json(result);
        EXPECT_EQ(ormalux_result_verdict(result), 1) << json;
        ormalux_result_free(result);
        return json;
    };
    const std::string expected = run(gray.view().pixels, width, ORMALUX_GRAY8, 8);
    EXPECT_THAT(expected, HasSubstr(R"({"steps":[{"step":"blobs","threshold":100,"count":3,)"));
    for (const auto& [format, channels] :
         {std::pair(ORMALUX_GRAY8, 1), {ORMALUX_BGR24, 3}, {ORMALUX_RGB24, 3}, {ORMALUX_BGRA32, 4}})
        for (const int direction : {1, -1}) {
            const int stride = width * channels + 5;
            std::vector<std::uint8_t> buffer(std::size_t(stride) * height, 77);
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width * channels; ++x)
                    buffer[std::size_t(direction > 0 ? y : height - 1 - y) * stride + x] =
                        gray.view().row(y)[x / channels];
            const std::uint8_t* const top =
                buffer.data() + (direction > 0 ? 0 : std::size_t(stride) * (height - 1));
            EXPECT_EQ(run(top, direction * stride, format, 8), expected) << format << " " << direction;
        }
    std::vector<std::uint16_t> deep(std::size_t(width) * height);
    for (std::size_t i = 0; i < deep.size(); ++i)
        deep[i] = std::uint16_t(gray.view().pixels[i] << 4 | 9);
    EXPECT_EQ(run(deep.data(), 2 * width, ORMALUX_GRAY16, 12), expected);
    ormalux_result* const dark =
        ormalux_recipe_run(recipe, deep.data(), width, height, 2 * width, ORMALUX_GRAY16, 0);
    EXPECT_THAT(ormalux_result_json(dark), HasSubstr("\"warning\""));
    ormalux_result_free(dark);
    ormalux_recipe_close(recipe);
}

TEST(CInterface, WrongArgumentsGiveAnErrorAndNeverAPart)
{
    char error[12] = "";
    EXPECT_EQ(ormalux_recipe_parse("{", nullptr, error, sizeof error), nullptr);
    EXPECT_EQ(std::strlen(error), sizeof error - 1);
    EXPECT_EQ(ormalux_recipe_open("/no/such.json", nullptr, 0), nullptr);
    ormalux_recipe* const recipe = ormalux_recipe_parse(
        R"({"values":{"level":100},"steps":[{"step":"blobs","threshold":"$level"},{"step":"threshold","threshold":50}]})",
        nullptr, nullptr, 0);
    ASSERT_TRUE(recipe);
    std::uint8_t pixels[64] = {};
    const struct
    {
        const ormalux_recipe* recipe;
        const void* pixels;
        int width, height;
        std::ptrdiff_t stride;
        int format, bits;
    } wrong[] = {{nullptr, pixels, 8, 8, 8, 1, 8},
                 {recipe, nullptr, 8, 8, 8, 1, 8},
                 {recipe, pixels, 0, 8, 8, 1, 8},
                 {recipe, pixels, 8, -8, 8, 1, 8},
                 {recipe, pixels, 8, 8, 7, 1, 8},
                 {recipe, pixels, 8, 8, 8, 9, 8},
                 {recipe, pixels, 4, 8, 8, 5, 17},
                 {recipe, pixels, 4, 8, 8, 5, -1},
                 {recipe, pixels, 1 << 30, 1 << 30, 1 << 30, 1, 8}};
    for (const auto& w : wrong) {
        ormalux_result* const result =
            ormalux_recipe_run(w.recipe, w.pixels, w.width, w.height, w.stride, w.format, w.bits);
        ASSERT_TRUE(result);
        EXPECT_EQ(ormalux_result_verdict(result), -1);
        EXPECT_THAT(ormalux_result_json(result), HasSubstr("\"error\":\""));
        int width = 9, height = 9, channels = 3;
        EXPECT_EQ(ormalux_result_image(result, pixels, &width, &height, &channels), 0);
        EXPECT_EQ(width, 0);
        ormalux_result_free(result);
    }
    EXPECT_EQ(ormalux_recipe_set(recipe, "level", "\"x\"", error, sizeof error), 0);
    EXPECT_EQ(ormalux_recipe_set(recipe, "level", "40", nullptr, 0), 1);
    const CKestImage gray = boxes();
    ormalux_result* const result = ormalux_recipe_run(recipe, gray.view().pixels, 101, 47, 101, 1, 8);
    int width = 0, height = 0, channels = 0;
    EXPECT_EQ(ormalux_result_image(result, nullptr, &width, &height, &channels), 0);
    EXPECT_EQ(width * 1000 + height * 10 + channels, 101471);
    std::vector<std::uint8_t> made(std::size_t(width) * height);
    EXPECT_EQ(ormalux_result_image(result, made.data(), &width, &height, &channels), 1);
    EXPECT_EQ(std::count(made.begin(), made.end(), 255), 10 * 10 * 2 + 16 * 12);
    ormalux_recipe_close(recipe);
    EXPECT_THAT(ormalux_result_json(result), HasSubstr("\"count\":3")) << "results outlive their recipe";
    ormalux_result_free(result);
    ormalux_recipe_close(nullptr);
    ormalux_result_free(nullptr);
}
