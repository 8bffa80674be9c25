#include "tools/BlobTool.h"

#include "image/VisionImage.h"
#include "measure/BlobFinder.h"
#include "tools/Program.h"
#include "tools/Script.h"

#include <algorithm>

namespace ormalux {

namespace {

constexpr BlobTool::Order orders[BlobTool::orderCount] = {
    {"scan", nullptr, nullptr},
    {"left", "SortLeft", &CBlobRectArray::SortLeft},
    {"top", "SortTop", &CBlobRectArray::SortTop},
    {"right", "SortRight", &CBlobRectArray::SortRight},
    {"bottom", "SortBottom", &CBlobRectArray::SortBottom},
    {"width", "SortWidth", &CBlobRectArray::SortWidth},
    {"height", "SortHeight", &CBlobRectArray::SortHeight},
    {"pixels", "SortPixelCount", &CBlobRectArray::SortPixelCount},
};

QString sizeText(int width, int height)
{
    return QStringLiteral("%1x%2").arg(width).arg(height);
}

/// The region as GetBlobList takes it: right and bottom lie outside.
CRect searched(const CRect& area)
{
    return {area.left, area.top, area.right + 1, area.bottom + 1};
}

} // namespace

const BlobTool::Order& BlobTool::orderAt(int index)
{
    return orders[std::clamp(index, 0, orderCount - 1)];
}

BlobTool::Found BlobTool::run(const CKestImage& picture, const RECT& area) const
{
    Found found;
    found.threshold =
        automatic ? int(picture.GetAutoThreshold(area.left, area.top, area.right, area.bottom, 'A', 1))
                  : level;
    if (picture.IsEmpty() || (automatic && found.threshold == 0))
        return found;
    const CRect region = searched(CRect(area));
    const BlobSizes sizes{minWidth, maxWidth, minHeight, maxHeight};
    BlobFinder finder;
    const ConstGrayView view = picture.view();
    if (!finder.find(
            view, blobRegion(view.width, view.height, region.left, region.top, region.right, region.bottom),
            levelsOfColor(found.threshold, white ? 255 : 0))) {
        found.count = -1;
        return found;
    }
    found.count = finder.recordCount(sizes);
    const bool listed = found.count <= maxFound;
    finder.forEachRecord(sizes, [&](const Blob& blob) {
        found.pixels += blob.pixels;
        if (listed)
            found.blobs.Add(blob.left, blob.top, blob.right, blob.bottom, blob.pixels);
    });
    if (const auto sort = orderAt(order).sort)
        (found.blobs.*sort)();
    return found;
}

ResultList BlobTool::list(CBlobRectArray& blobs, int limit)
{
    ResultList list{{"number", "left", "top", "right", "bottom", "width", "height", "pixels"}, {}};
    const int shown = std::min(blobs.GetCount(), limit);
    list.rows.reserve(std::size_t(shown));
    for (int i = 0; i < shown; ++i) {
        const _stBlobRect& blob = blobs[i];
        list.rows.push_back({{i + 1ll, (long long)blob.left, (long long)blob.top, (long long)blob.right,
                              (long long)blob.bottom, 1ll + blob.right - blob.left,
                              1ll + blob.bottom - blob.top, (long long)blob.pixel_count},
                             CRect(blob.left, blob.top, blob.right, blob.bottom)});
    }
    return list;
}

CString BlobTool::script(const ToolScene& scene) const
{
    const CRect region = searched(scene.area);
    const char* const sort = orderAt(order).call;
    return toolScript(ScriptTemplate::BlobList, scene.width, scene.height,
                      {automatic ? "image.GetAutoThreshold(" + areaArguments(scene.area) + ", 'A', 1)"
                                 : std::to_string(level),
                       int(region.left), int(region.top), int(region.right), int(region.bottom),
                       white ? 255 : 0, minWidth, maxWidth, minHeight, maxHeight,
                       sort ? std::string("ar.") + sort + "();\n" : std::string()});
}

CString BlobTool::program(const ToolScene& scene) const
{
    const CString found = automatic ? "image.GetAutoThreshold(" + areaArguments(scene.area) + ", 'A', 1)"
                                    : std::to_string(level) + "L";
    CString text = "    const long threshold = " + found + ";\n    CBlobRectArray blobs;\n";
    if (automatic)
        text += "    if (threshold != 0) // else the area has no edges to set a threshold by\n    ";
    text += "    image.GetBlobList(" + areaArguments(searched(scene.area)) + ", int(threshold), " +
            (white ? "255" : "0") + ", " + areaArguments({minWidth, maxWidth, minHeight, maxHeight}) +
            ", blobs);\n";
    if (const char* const sort = orderAt(order).call)
        text += CString("    blobs.") + sort + "();\n";
    text += "    std::printf(\"number,left,top,right,bottom,width,height,pixels\\n\");\n"
            "    for (int i = 0; i < blobs.GetCount(); ++i) {\n"
            "        const _stBlobRect& b = blobs[i];\n"
            "        std::printf(\"%d,%d,%d,%d,%d,%d,%d,%d\\n\", i + 1, int(b.left), int(b.top), "
            "int(b.right), int(b.bottom),\n"
            "                    int(b.right - b.left + 1), int(b.bottom - b.top + 1), "
            "int(b.pixel_count));\n"
            "    }\n";
    return completeProgram(scene, text);
}

QList<QJsonObject> BlobTool::recipeSteps(const ToolScene& scene) const
{
    QJsonObject object{{"step", "blobs"},
                       {"threshold", automatic ? QJsonValue("auto") : QJsonValue(level)},
                       {"object", white ? "white" : "black"},
                       {"min_size", sizeText(minWidth, minHeight)},
                       {"max_size", sizeText(maxWidth, maxHeight)},
                       {"sort", orderAt(order).recipeName}};
    addArea(object, scene);
    return {object};
}

} // namespace ormalux
