#include "steps/Faults.h"
#include "steps/Recipe.h"
#include "steps/RecipePlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace ormalux;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

std::vector<std::string> faultsOf(const std::string& json)
{
    Faults faults;
    RecipeDocuments documents;
    documents.parse(json, "", faults);
    documents.bind(faults);
    return faults.lines();
}

} // namespace

TEST(RecipeFaults, AreAllReportedAtOnceWithLineStepFieldAndNearestName)
{
    const auto lines = faultsOf(R"({
  "values": {"level": 145},
  "steps": [
    {"step": "blobz"},
    {"step": "blobs", "name": "lid", "threshold": "$levl", "min_size": "9x9",
     "max_size": "3x3"},
    {"step": "light", "brightness": 1.5, "contrst": 0},
    {"step": "blobs", "name": "lid"},
    {"step": "line", "box": [1, 2, 3, 4, 5], "in": "board"},
    {"step": "frame", "name": "board", "origin": "lidd", "reference": [1, 2]},
    {"step": "crop", "roi": [9, 9, 1, 1]}
  ],
  "limits": [
    {"of": "lid.widht", "at_most": 3},
    {"of": "lid.count", "nominal": 3}
  ],
  "limit": []
})");
    EXPECT_THAT(
        lines,
        ElementsAre(MatchesRegex("recipe:17: unknown field \"limit\", the nearest is \"limits\""),
                    MatchesRegex("recipe:4: step 1, step: unknown step \"blobz\", the nearest is \"blobs\""),
                    MatchesRegex("recipe:5: step lid, threshold: unknown value \"levl\".*\"level\""),
                    MatchesRegex("recipe:5: step lid, threshold: .*expected 'auto'.*"),
                    MatchesRegex("recipe:5: step lid, min_size: 9x9 is above max_size 3x3"),
                    MatchesRegex("recipe:7: step 3, brightness: 1.5: expected a whole number.*"),
                    MatchesRegex("recipe:7: step 3, contrast: is missing"),
                    MatchesRegex("recipe:7: step 3, contrst: unknown field.*\"contrast\""),
                    MatchesRegex("recipe:8: step lid, name: \"lid\" is used twice"),
                    MatchesRegex("recipe:9: step 5, in: unknown frame \"board\".*defined before"),
                    MatchesRegex("recipe:10: step board, origin: unknown step \"lidd\".*\"lid\".*"),
                    MatchesRegex("recipe:11: step 7, roi: .*reversed"),
                    MatchesRegex("recipe:14: limit 1, of: .*unknown column \"widht\".*\"width\""),
                    MatchesRegex("recipe:15: limit 2, tolerance: is missing")));
}

TEST(RecipeFaults, HostileTextGivesOneLineOfOurOwn)
{
    const std::string deep(100000, '[');
    const std::string cases[] = {deep,
                                 R"({"steps":)" + deep,
                                 "{",
                                 "",
                                 "nul",
                                 R"({"steps":[{"step":"blobs","threshold":1e999}]})",
                                 R"({"steps":[{"step":")" + std::string(900000, 'x') + "\"}]}",
                                 "{\"steps\":[{\"step\":\"\xff\xfe\"}]}",
                                 R"({"steps":[{"step":"invert"}],"steps":[]})",
                                 R"({"steps":[{"step":"\u001b[31m"}]})"};
    for (const std::string& text : cases) {
        const auto lines = faultsOf(text);
        ASSERT_FALSE(lines.empty()) << text.substr(0, 40);
        for (const std::string& line : lines) {
            EXPECT_LT(line.size(), 800u);
            EXPECT_THAT(line, MatchesRegex("recipe:.*")) << line;
            EXPECT_EQ(line.find("json.exception"), std::string::npos);
            EXPECT_EQ(line.find('\x1b'), std::string::npos);
        }
    }
    EXPECT_THAT(faultsOf("{\n\"steps\": [\n1,\n 2 3]}").front(), HasSubstr("recipe:4: not JSON"));
    EXPECT_THAT(faultsOf("{\"name\":\"a\",\n\"name\":\"b\",\"steps\":[{\"step\":\"blobs\"}]}").front(),
                HasSubstr("recipe:2: name: the field stands twice"));
}

TEST(RecipeFaults, IncludedRecipesComeFirstAndTheirFaultsNameTheirFile)
{
    const auto folder = std::filesystem::temp_directory_path() / "ormalux-include-test";
    std::filesystem::create_directories(folder / "parts");
    const auto write = [&](const char* name, const std::string& text) {
        std::ofstream(folder / name) << text;
    };
    write("parts/base.json", R"({"values": {"level": 100, "size": "2x2"},
        "steps": [{"step": "blobs", "name": "all", "threshold": "$level", "min_size": "$size"}],
        "limits": [{"of": "all.count", "at_least": 1}]})");
    write("main.json", R"({"include": ["parts/base.json"], "values": {"level": 120},
        "steps": [{"step": "distance", "name": "d", "from": "all", "to": "all[2]"}]})");
    CKestRecipe recipe;
    ASSERT_EQ(recipe.Load((folder / "main.json").string().c_str()), 1) << recipe.GetError();
    EXPECT_EQ(recipe.GetStepCount(), 2);
    EXPECT_TRUE(recipe.HasLimits());
    EXPECT_EQ(recipe.Set("level", "\"high\""), 0);
    EXPECT_EQ(recipe.Set("levl", "3"), 0);
    EXPECT_THAT(recipe.GetError(), HasSubstr("\"level\""));
    EXPECT_EQ(recipe.Set("level", "300"), 0) << "a level that the step does not take";
    EXPECT_EQ(recipe.Set("level", "90"), 1) << recipe.GetError();

    write("parts/base.json", R"({"steps": [{"step": "blobs", "treshold": 3}]})");
    EXPECT_EQ(recipe.Load((folder / "main.json").string().c_str()), 0);
    EXPECT_THAT(recipe.GetError(), HasSubstr("base.json:1: step 1, treshold"));
    EXPECT_EQ(recipe.GetStepCount(), 2) << "the recipe before stands";
    write("main.json", R"({"include": ["main.json"], "steps": []})");
    EXPECT_EQ(recipe.Load((folder / "main.json").string().c_str()), 0);
    EXPECT_THAT(recipe.GetError(), HasSubstr("includes itself"));
    write("main.json", R"({"include": ["none.json"], "steps": [{"step": "match", "source": "no.mcs"}]})");
    EXPECT_EQ(recipe.Load((folder / "main.json").string().c_str()), 0);
    EXPECT_THAT(recipe.GetError(), HasSubstr("main.json:1: include: "));
    EXPECT_THAT(recipe.GetError(), HasSubstr("main.json:1: step 1, source: "));
    std::filesystem::remove_all(folder);
}
