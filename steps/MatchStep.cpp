#include "array/Array.h"
#include "match/ReadingOrder.h"
#include "steps/BindContext.h"
#include "steps/MatchSearch.h"
#include "steps/Step.h"
#include "steps/Work.h"

#include <algorithm>

namespace ormalux {

namespace {

void addPart(Findings& found, const _stMatchResult& part)
{
    for (const LONG value : {part.left, part.top, part.right, part.bottom})
        found.add(value);
    found.add(std::int64_t(part.pixel_count));
    found.add(double(yield(part)));
    found.add(double(part.black_yield));
    found.add(double(part.white_yield));
}

Place placeOf(const _stMatchResult& part)
{
    return Place::box({part.left, part.top, part.right, part.bottom});
}

struct PartSearch
{
    mutable CMatchSrcArray
        sources; // searches read them alone, through an interface that takes them unguarded
    std::optional<RECT> roi;
    ThresholdChoice threshold;
    bool perThreshold;
    double minimum;
    std::size_t best;
    bool lastFirst;
    std::string sort;

    void operator()(Work& work, Findings& found) const
    {
        const auto region = work.region(roi);
        if (!region)
            return;
        MatchRequest request{*region, threshold, perThreshold};
        if (!request.threshold.range()) {
            const int level = work.level(threshold, *region);
            request.threshold = {false, level, level, false, {}};
        }
        std::vector<_stMatchResult> parts = searchParts(work.gray(), sources, request);
        if (lastFirst)
            std::reverse(parts.begin(), parts.end());
        std::erase_if(parts, [&](const _stMatchResult& part) { return yield(part) < minimum; });
        if (best > 0 && parts.size() > best) {
            sortParts(parts, "yield");
            parts.resize(best);
        }
        sortParts(parts, sort);
        if (request.threshold.range())
            found.setFact("threshold", std::string_view(threshold.text));
        else
            found.setFact("threshold", std::int64_t(request.threshold.low));
        for (const _stMatchResult& part : parts) {
            found.addRow(placeOf(part));
            found.add(std::int64_t(found.rows()));
            addPart(found, part);
            found.add(std::int64_t(part.threshold));
        }
    }
};

std::unique_ptr<Operation> match(const Arguments& a, BindContext& context)
{
    CMatchSrcArray sources = context.sources(a.files("source"), ".mcs");
    if (sources.GetCount() > 1)
        context.fault("source",
                      "match takes one template; " + std::to_string(sources.GetCount()) + " are given");
    return operation(PartSearch{sources, a.region("roi"), a.threshold("threshold"),
                                a.is("list", "thresholds"), a.real("min_yield"),
                                std::size_t(a.integer("best")), a.is("ties", "last"), a.text("sort")});
}

struct Reading
{
    mutable CMatchSrcArray sources;
    std::optional<RECT> roi;
    ThresholdChoice threshold;
    SIZE smallest, largest;
    double minimum;

    void operator()(Work& work, Findings& found) const
    {
        const auto region = work.region(roi);
        if (!region)
            return;
        const int level = work.level(threshold, *region);
        CMatchResultArray results;
        work.gray().OcrMatch(region->left, region->top, region->right + 1, region->bottom + 1, level,
                             smallest.cx, largest.cx, smallest.cy, largest.cy, sources, results);
        found.setFact("threshold", std::int64_t(level));
        std::string text;
        for (const auto& line : readingOrder(results)) {
            text += text.empty() ? "" : "\n";
            for (const _stMatchResult& character : line) {
                if (yield(character) < minimum)
                    continue;
                const std::string letter = characterText(character.key);
                text += letter;
                found.addRow(placeOf(character));
                found.add(std::int64_t(found.rows()));
                found.add(std::string_view(letter));
                addPart(found, character);
            }
        }
        found.setFact("text", std::string_view(text));
    }
};

std::unique_ptr<Operation> ocr(const Arguments& a, BindContext& context)
{
    return operation(Reading{context.sources(a.files("source"), ".ocs"), a.region("roi"),
                             a.threshold("threshold"), a.size("min_size"), a.size("max_size"),
                             a.real("min_yield")});
}

std::vector<Column> partColumns(const char* first)
{
    std::vector<Column> columns{{"number", CellType::Integer}};
    if (first)
        columns.push_back({first, CellType::Text});
    for (const Column& column : boxColumns())
        columns.push_back(column);
    columns.push_back({"pixels", CellType::Integer, Quantity::Area});
    for (const char* name : {"yield", "black_yield", "white_yield"})
        columns.push_back({name, CellType::Real});
    return columns;
}

Parameter minimumYield()
{
    return realNumber("min_yield", 0, 1, "Drop what agrees less, 0..1", "0.0");
}

} // namespace

std::vector<Step> matchSteps()
{
    Step parts;
    parts.name = "match";
    parts.help = "Find the parts that look like a template";
    parts.measures = true;
    parts.parameters = {
        {"source", Kind::Files, "", "The template, an .mcs file"},
        {"threshold", Kind::Threshold, "auto", "auto, a level 0..255, or a range LOW..HIGH"},
        choice("list", {"parts", "thresholds"},
               "Over a range: every part at its best level, or the best part of every level", "parts"),
        regionOnly(),
        minimumYield(),
        wholeNumber("best", 0, 1e9, "Keep so many of the best parts; 0 keeps all", "0"),
        choice("ties", {"first", "last"},
               "Which of equally good parts comes first: the one found first or last", "first"),
        choice("sort", {"yield", "left", "top"}, "yield (best first), left or top", "yield")};
    parts.list = "parts";
    parts.facts = {{"threshold", CellType::Integer}, {"count", CellType::Integer}};
    parts.columns = partColumns(nullptr);
    parts.columns.push_back({"threshold", CellType::Integer});
    parts.look = Look::PartBox;
    parts.color = RGB(255, 230, 0);
    parts.make = match;

    Step reading;
    reading.name = "ocr";
    reading.help = "Read dark characters on a light ground; exact, `read` tolerates noise and shifts";
    reading.measures = true;
    reading.parameters = {{"source", Kind::Files, "", "The characters: .ocs files or folders of them"},
                          levelThreshold(),
                          regionOnly(),
                          sizeLimit("min_size", "Smallest width and height of a character, WxH", "2x5"),
                          sizeLimit("max_size", "Largest width and height of a character, WxH", "100x100"),
                          minimumYield()};
    reading.list = "characters";
    reading.facts = {
        {"threshold", CellType::Integer}, {"count", CellType::Integer}, {"text", CellType::Text}};
    reading.columns = partColumns("character");
    reading.look = Look::CharacterBox;
    reading.color = RGB(64, 160, 255);
    reading.make = ocr;
    return {parts, reading};
}

} // namespace ormalux
