#include "cli/Annotation.h"
#include "cli/MatchSearch.h"
#include "cli/Step.h"
#include "platform/Path.h"
#include "tools/ReadingOrder.h"
#include "tools/SourceFile.h"

#include <algorithm>
#include <cstdio>

namespace ormalux::cli {

namespace {

/// The files named, and of folders all source files of the ending by name.
std::vector<std::string> sourceFiles(const Workpiece& work, const Json& names, const char* ending)
{
    std::vector<std::string> files;
    for (const Json& name : names) {
        const std::string path = work.sourcePath(name.get<std::string>());
        std::error_code error;
        if (!std::filesystem::is_directory(nativePath(path.c_str()), error)) {
            files.push_back(path);
            continue;
        }
        std::vector<std::string> inside;
        for (const auto& entry : std::filesystem::directory_iterator(nativePath(path.c_str()), error))
            if (entry.path().extension() == ending) {
                const std::u8string found = entry.path().u8string();
                inside.emplace_back(found.begin(), found.end());
            }
        if (inside.empty())
            throw InputError(path + ": the folder holds no " + ending + " files");
        std::sort(inside.begin(), inside.end());
        files.insert(files.end(), inside.begin(), inside.end());
    }
    return files;
}

CMatchSrcArray loadSources(const std::vector<std::string>& files)
{
    CMatchSrcArray sources;
    for (const std::string& file : files) {
        const int before = sources.GetCount();
        sources.Add(file.c_str());
        if (sources.GetCount() == before)
            throw InputError(file + ": not a match source, shorter than it declares, or not to be read");
    }
    return sources;
}

Json describe(const _stMatchResult& part, int number)
{
    return {{"number", number},
            {"left", part.left},
            {"top", part.top},
            {"right", part.right},
            {"bottom", part.bottom},
            {"pixels", part.pixel_count},
            {"yield", yield(part)},
            {"black_yield", part.black_yield},
            {"white_yield", part.white_yield}};
}

void findParts(Workpiece& work, const Json& arguments)
{
    const auto files = sourceFiles(work, arguments.at("source"), ".mcs");
    if (files.size() != 1)
        throw InputError("match takes one template; " + std::to_string(files.size()) + " are given");
    CMatchSrcArray sources = loadSources(files);
    MatchRequest request;
    request.region = work.region(arguments);
    request.threshold = parseThreshold(arguments.at("threshold").get<std::string>());
    request.perThreshold = arguments.at("list").get<std::string>() == "thresholds";
    if (!request.threshold.range()) {
        const int level = levelOf(request.threshold, work.image, request.region, work.file);
        request.threshold = {false, level, level};
    }
    const double minimum = arguments.at("min_yield").get<double>();
    const std::size_t best = arguments.at("best").get<std::size_t>();
    std::vector<_stMatchResult> found = searchParts(work.image, sources, request);
    if (arguments.at("ties").get<std::string>() == "last")
        std::reverse(found.begin(), found.end());
    std::erase_if(found, [&](const _stMatchResult& part) { return yield(part) < minimum; });
    if (best > 0 && found.size() > best) {
        sortParts(found, "yield");
        found.resize(best);
    }
    sortParts(found, arguments.at("sort").get<std::string>());

    const Json threshold =
        request.threshold.range() ? arguments.at("threshold") : Json(request.threshold.low);
    Findings findings{work.file, {{"threshold", threshold}, {"count", found.size()}}, "parts", {}};
    for (const _stMatchResult& part : found) {
        const int number = int(findings.records.size()) + 1;
        findings.records.push_back(describe(part, number));
        findings.records.back()["threshold"] = part.threshold;
        char label[32];
        std::snprintf(label, sizeof label, "%d: %.0f %%", number, 100 * yield(part));
        addLabelledBox(work.shapes, {part.left, part.top, part.right, part.bottom}, RGB(255, 230, 0), label);
    }
    work.findings.push_back(std::move(findings));
}

void readCharacters(Workpiece& work, const Json& arguments)
{
    CMatchSrcArray sources = loadSources(sourceFiles(work, arguments.at("source"), ".ocs"));
    const RECT r = work.region(arguments);
    const int threshold =
        levelOf(parseThreshold(arguments.at("threshold").get<std::string>()), work.image, r, work.file);
    const SIZE smallest = parseSize(arguments.at("min_size").get<std::string>());
    const SIZE largest = parseSize(arguments.at("max_size").get<std::string>());
    CMatchResultArray results;
    work.image.OcrMatch(r.left, r.top, r.right + 1, r.bottom + 1, threshold, smallest.cx, largest.cx,
                        smallest.cy, largest.cy, sources, results);
    const double minimum = arguments.at("min_yield").get<double>();

    Findings findings{work.file, {{"threshold", threshold}}, "characters", {}};
    std::string text;
    for (const auto& line : readingOrder(results)) {
        text += text.empty() ? "" : "\n";
        for (const _stMatchResult& character : line) {
            if (yield(character) < minimum)
                continue;
            const std::string letter = characterText(character.key);
            text += letter;
            Json record = describe(character, int(findings.records.size()) + 1);
            findings.records.push_back({{"number", record["number"]}, {"character", letter}});
            record.erase("number");
            findings.records.back().update(record);
            addLabelledBox(work.shapes, {character.left, character.top, character.right, character.bottom},
                           RGB(64, 160, 255), letter);
        }
    }
    findings.facts["count"] = findings.records.size();
    findings.facts["text"] = text;
    work.findings.push_back(std::move(findings));
}

} // namespace

std::vector<Step> matchSteps()
{
    const Parameter region{"roi", Kind::Region, nullptr, "Only inside the region x1,y1,x2,y2", 0,
                           0,     {},           true};
    const Parameter minimum{"min_yield", Kind::Real, 0.0, "Drop what agrees less, 0..1", 0, 1};
    return {
        {"match",
         "Find the parts that look like a template",
         true,
         {{"source", Kind::Files, nullptr, "The template, an .mcs file"},
          {"threshold", Kind::Threshold, "auto", "auto, a level 0..255, or a range LOW..HIGH"},
          {"list",
           Kind::Choice,
           "parts",
           "Over a range: every part at its best level, or the best part of every level",
           0,
           0,
           {"parts", "thresholds"}},
          region,
          minimum,
          {"best", Kind::Integer, 0, "Keep so many of the best parts; 0 keeps all", 0, 1e9},
          {"ties",
           Kind::Choice,
           "first",
           "Which of equally good parts comes first: the one found first or last",
           0,
           0,
           {"first", "last"}},
          {"sort", Kind::Choice, "yield", "yield (best first), left or top", 0, 0, {"yield", "left", "top"}}},
         findParts},
        {"ocr",
         "Read dark characters on a light ground",
         true,
         {{"source", Kind::Files, nullptr, "The characters: .ocs files or folders of them"},
          {"threshold", Kind::Level, "auto", "auto or a level 0..255"},
          region,
          {"min_size", Kind::Size, "2x5", "Smallest width and height of a character, WxH"},
          {"max_size", Kind::Size, "100x100", "Largest width and height of a character, WxH"},
          minimum},
         readCharacters}};
}

} // namespace ormalux::cli
