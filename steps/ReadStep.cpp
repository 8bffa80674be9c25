#include "array/Array.h"
#include "image/OtsuThreshold.h"
#include "match/CharacterReading.h"
#include "match/ReadingOrder.h"
#include "match/MiddleLevel.h"
#include "steps/BindContext.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <algorithm>

namespace ormalux {

namespace {

struct TolerantReader
{
    mutable CMatchSrcArray sources; // reading takes them through an interface without const
    std::optional<RECT> roi;
    ThresholdChoice threshold;
    CReadingSettings settings;

    void operator()(Work& work, Findings& found) const
    {
        const auto region = work.region(roi);
        if (!region)
            return;
        CReadingSettings used = settings;
        used.threshold = threshold.automatic ? automaticLevel(work, *region) : threshold.low;
        std::vector<CCharacterReading> readings;
        work.gray().ReadCharacters(region->left, region->top, region->right, region->bottom, used, sources,
                                   readings);
        found.setFact("threshold", std::int64_t(used.threshold));
        std::string text;
        int line = 0;
        for (const CCharacterReading& reading : readings) {
            if (reading.line != line && !text.empty())
                text += "\n";
            line = reading.line;
            text += add(reading, found);
        }
        found.setFact("text", std::string_view(text));
    }

    /// The middle between ink and paper, approached from the threshold by edges, which noise draws towards
    /// the paper.
    int automaticLevel(const Work& work, const RECT& region) const
    {
        const LevelCounts counts = countLevels(work.gray().view().part(
            region.left, region.top, region.right - region.left + 1, region.bottom - region.top + 1));
        const bool uniform = std::count(counts.begin(), counts.end(), 0) >= 255;
        // Sharp drawings may have no rising edges; they have two levels at least.
        int start = otsuLevel(counts);
        try {
            start = work.level(threshold, region);
        } catch (const PictureError&) {
            if (uniform)
                throw;
        }
        return middleLevel(counts, start);
    }

    /// Adds a row and returns its character.
    static std::string add(const CCharacterReading& reading, Findings& found)
    {
        const std::string character = reading.rejected ? "?" : characterText(std::uint8_t(reading.key));
        found.addRow(Place::box({reading.left, reading.top, reading.right, reading.bottom}));
        found.add(std::string_view(character));
        if (reading.second < 0)
            found.addNull();
        else
            found.add(std::string_view(characterText(std::uint8_t(reading.second))));
        found.add(reading.best_yield);
        found.add(reading.margin);
        for (const int value : {reading.left, reading.top, reading.right, reading.bottom})
            found.add(value);
        return character;
    }
};

std::unique_ptr<Operation> read(const Arguments& a, BindContext& context)
{
    const SIZE smallest = a.size("min_size"), largest = a.size("max_size");
    const std::vector<double>& reject = a.numbers("reject");
    CReadingSettings settings;
    settings.object = a.is("object", "white") ? 255 : 0;
    settings.min_width = smallest.cx;
    settings.min_height = smallest.cy;
    settings.max_width = largest.cx;
    settings.max_height = largest.cy;
    settings.shift = a.integer("shift");
    settings.min_yield = reject[0];
    settings.min_margin = reject[1];
    return operation(TolerantReader{context.sources(a.files("source"), ".ocs"), a.region("roi"),
                                    a.threshold("threshold"), settings});
}

} // namespace

std::vector<Step> readSteps()
{
    Step step;
    step.name = "read";
    step.help = "Read characters in noise, in changing light, a pixel off; uncertain ones become ?";
    step.measures = true;
    step.parameters = {
        {"source", Kind::Files, "", "The characters: .ocs files or folders of them"},
        levelThreshold(),
        choice("object", {"black", "white"},
               "black: characters not brighter than the threshold, 0 in sources; white: brighter, 255",
               "black"),
        regionOnly(),
        sizeLimit("min_size", "Smallest width and height of a character, WxH", "2x5"),
        sizeLimit("max_size", "Largest width and height of a character, WxH", "100x100"),
        wholeNumber("shift", 0, 16, "Pixels that a source is tried beside the middle, each way", "1"),
        {"reject",
         Kind::Fractions,
         "0.7,0.05",
         "The least yield, and the least margin to the next character, of what is not ?",
         0,
         1,
         {"yield", "margin"}}};
    step.list = "characters";
    step.facts = {{"threshold", CellType::Integer}, {"count", CellType::Integer}, {"text", CellType::Text}};
    step.columns = {{"char", CellType::Text},
                    {"second", CellType::Text},
                    {"yield", CellType::Real},
                    {"margin", CellType::Real}};
    for (const Column& column : boxColumns())
        step.columns.push_back(column);
    step.look = Look::CharacterBox;
    step.color = RGB(64, 160, 255);
    step.make = read;
    return {step};
}

} // namespace ormalux
