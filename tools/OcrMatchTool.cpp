#include "tools/OcrMatchTool.h"

#include "image/VisionImage.h"
#include "match/ReadingOrder.h"
#include "tools/MatchTool.h"
#include "tools/Program.h"
#include "tools/Script.h"
#include "tools/SourceFile.h"
#include "tools/ThresholdTool.h"

#include <QJsonArray>

#include <algorithm>

namespace ormalux {

namespace {

/// readingOrder() as lines of a complete program: they make `lines` of `results`.
CString programReadingOrder()
{
    return R"(    // Reading order: a character belongs to the first line beside whose first one its middle lies.
    results.SortTop();
    std::vector<std::vector<_stMatchResult>> lines;
    for (int i = 0; i < results.GetCount(); ++i) {
        const _stMatchResult& r = results[i];
        const int middle = r.top + (r.bottom - r.top) / 2;
        std::size_t line = 0;
        while (line < lines.size() && (middle < lines[line][0].top || middle > lines[line][0].bottom))
            ++line;
        if (line == lines.size())
            lines.emplace_back();
        lines[line].push_back(r);
    }
    for (auto& line : lines)
        std::stable_sort(line.begin(), line.end(), [](const auto& a, const auto& b) { return a.left < b.left; });
)";
}

} // namespace

int OcrMatchTool::levelOf(const CKestImage& picture, const RECT& area) const
{
    ThresholdTool threshold;
    threshold.automatic = automatic;
    threshold.level = level;
    return threshold.run(picture, area);
}

OcrMatchTool::Found OcrMatchTool::run(const CKestImage& picture, const RECT& area) const
{
    LoadedSources loaded = loadSources(sources);
    CMatchResultArray results;
    if (loaded.sources.GetCount() > 0)
        picture.OcrMatch(area.left, area.top, area.right, area.bottom, level, minWidth, maxWidth, minHeight,
                         maxHeight, loaded.sources, results);
    return {readingOrder(results), std::move(loaded.refused)};
}

ResultList OcrMatchTool::list(const Found& found)
{
    using Whole = long long;
    ResultList list;
    list.columns = {"number", "character", "left",  "top",         "right",
                    "bottom", "pixels",    "yield", "black_yield", "white_yield"};
    for (const auto& line : found.lines)
        for (const _stMatchResult& r : line)
            list.rows.push_back({{Whole(list.rows.size()) + 1, characterText(r.key), Whole(r.left),
                                  Whole(r.top), Whole(r.right), Whole(r.bottom), Whole(r.pixel_count),
                                  double(yieldOf(r)), double(r.black_yield), double(r.white_yield)},
                                 CRect(r.left, r.top, r.right, r.bottom)});
    return list;
}

std::string OcrMatchTool::text(const Found& found)
{
    std::string text;
    for (const auto& line : found.lines) {
        text += text.empty() ? "" : "\n";
        for (const _stMatchResult& character : line)
            text += characterText(character.key);
    }
    return text;
}

CString OcrMatchTool::script(const ToolScene& scene) const
{
    const CRect& a = scene.area;
    return toolScript(ScriptTemplate::OcrMatch, scene.width, scene.height,
                      {scriptSourceLines(sources), int(a.left), int(a.top), int(a.right), int(a.bottom),
                       level, minWidth, maxWidth, minHeight, maxHeight});
}

CString OcrMatchTool::program(const ToolScene& scene) const
{
    CString body = programSourceLines(sources);
    body += "    CMatchResultArray results;\n    if (sources.GetCount() > 0)\n        image.OcrMatch(";
    body += areaArguments(scene.area);
    for (const int number : {level, minWidth, maxWidth, minHeight, maxHeight})
        body += ", " + std::to_string(number);
    body += ", sources, results);\n" + programReadingOrder();
    body +=
        R"(    std::printf("number,character,left,top,right,bottom,pixels,yield,black_yield,white_yield\n");
    int number = 0;
    for (const auto& line : lines)
        for (const _stMatchResult& r : line) {
            const char letter = r.key >= 32 && r.key < 127 ? char(r.key) : '?';
            const char* const quote = letter == ',' ? "\"" : letter == '"' ? "\"\"" : "";
            std::printf("%d,%s%c%s,%d,%d,%d,%d,%d,%f,%f,%f\n", ++number, quote, letter,
                        letter == '"' ? "\"" : quote, int(r.left), int(r.top), int(r.right), int(r.bottom),
                        int(r.pixel_count), double((r.white_yield + r.black_yield) * 0.5f), double(r.black_yield),
                        double(r.white_yield));
        }
)";
    return completeProgram(scene, body);
}

QList<QJsonObject> OcrMatchTool::recipeSteps(const ToolScene& scene) const
{
    if (sources.empty())
        return {};
    QJsonArray files;
    for (const std::string& file : sources)
        files.append(QString::fromStdString(file));
    const auto size = [](int width, int height) { return QStringLiteral("%1x%2").arg(width).arg(height); };
    // A recipe's region is searched to its last column and row, and an automatic level would be that of the
    // smaller region: so the level found is written.
    const CRect& a = scene.area;
    return {{{"step", "ocr"},
             {"source", files},
             {"threshold", level},
             {"min_size", size(minWidth, minHeight)},
             {"max_size", size(maxWidth, maxHeight)},
             {"roi", QJsonArray{int(a.left), int(a.top), int(std::max(a.left, a.right - 1)),
                                int(std::max(a.top, a.bottom - 1))}}}};
}

} // namespace ormalux
