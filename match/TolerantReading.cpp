#include "match/TolerantReading.h"

#include "match/CharacterPieces.h"
#include "match/ReadingOrder.h"
#include "measure/BlobFeatures.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace ormalux {

namespace {

InkLevels inkLevelsOf(const CReadingSettings& settings)
{
    return {settings.threshold, settings.object == 255};
}

int shiftOf(const CReadingSettings& settings)
{
    return std::clamp(settings.shift, 0, 16);
}

CCharacterReading readingOf(const CharacterBox& box, const BestKeys& best, const CReadingSettings& settings,
                            int line)
{
    const double yield = std::sqrt(best.share), margin = best.share - best.secondShare;
    const bool rejected = best.key < 0 || yield < settings.min_yield || margin < settings.min_margin;
    return {best.key, best.second, rejected, yield, margin, box.left, box.top, box.right, box.bottom, line};
}

/// The blobs that may be characters or parts of them.
bool findPieces(const ConstGrayView& image, const CReadingSettings& settings, const BlobRegion& region,
                std::int64_t leastInk, std::vector<CharacterPiece>& pieces)
{
    // What is smaller than a sixteenth of the smallest character is noise.
    const std::int64_t leastPart = std::max<std::int64_t>(2, leastInk / 16);
    std::vector<CBlobFeature> blobs;
    // Strokes that touch by corners hold together.
    const ObjectLevels levels = levelsOfColor(settings.threshold, settings.object);
    if (!blobFeatures(image, {region, levels, Connectivity::Eight}, blobs))
        return false;
    for (const CBlobFeature& blob : blobs) {
        const CharacterBox box{blob.left, blob.top, blob.right, blob.bottom};
        const bool whole = box.width() >= settings.min_width && box.height() >= settings.min_height;
        if (box.width() <= settings.max_width && box.height() <= settings.max_height &&
            (whole || blob.area >= leastPart))
            pieces.push_back({box, blob.area, {}});
    }
    return true;
}

void orderReadings(const std::vector<CharacterPiece>& pieces, const CReadingSettings& settings,
                   std::vector<CCharacterReading>& result)
{
    std::vector<RECT> boxes;
    for (const CharacterPiece& piece : pieces)
        boxes.push_back({piece.box.left, piece.box.top, piece.box.right, piece.box.bottom});
    int number = 0;
    for (const auto& line : linesOf(boxes)) {
        for (const std::size_t i : line)
            result.push_back(readingOf(pieces[i].box, pieces[i].best, settings, number));
        ++number;
    }
}

} // namespace

bool readBoxes(const ConstGrayView& image, const CReadingSettings& settings,
               std::span<const CharacterBox> boxes, std::span<const _stMatchSource> sources,
               std::vector<CCharacterReading>& result)
try {
    result.clear();
    std::vector<CharacterBox> inside;
    for (const CharacterBox& box : boxes)
        if (box.left >= 0 && box.top >= 0 && box.left <= box.right && box.top <= box.bottom &&
            box.right < image.width && box.bottom < image.height)
            inside.push_back(box);
    InkTemplates templates;
    if (inside.empty() || sources.empty())
        return true;
    if (!templates.pack(sources, inkLevelsOf(settings)))
        return false;
    std::vector<BestKeys> best(inside.size());
    const CharacterReader reader(image, inkLevelsOf(settings), shiftOf(settings), templates.all());
    if (!reader.readAll(inside, best))
        return false;
    for (std::size_t i = 0; i < inside.size(); ++i)
        result.push_back(readingOf(inside[i], best[i], settings, 0));
    return true;
} catch (const std::bad_alloc&) {
    result.clear();
    return false;
}

bool readRegion(const ConstGrayView& image, const CReadingSettings& settings, const BlobRegion& region,
                std::span<const _stMatchSource> sources, std::vector<CCharacterReading>& result)
try {
    result.clear();
    if (image.empty() || region.empty() || sources.empty())
        return true;
    InkTemplates templates;
    if (!templates.pack(sources, inkLevelsOf(settings)))
        return false;
    CharacterReader reader(image, inkLevelsOf(settings), shiftOf(settings), templates.all());
    std::vector<CharacterPiece> pieces;
    const BlobSizes sizes{settings.min_width, settings.max_width, settings.min_height, settings.max_height};
    if (!findPieces(image, settings, region, reader.leastInk(), pieces) || !joinPieces(reader, sizes, pieces))
        return false;
    orderReadings(pieces, settings, result);
    return true;
} catch (const std::bad_alloc&) {
    result.clear();
    return false;
}

} // namespace ormalux
