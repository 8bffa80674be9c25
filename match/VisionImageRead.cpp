#include "image/VisionImage.h"
#include "match/TolerantReading.h"
#include "measure/BlobList.h"

#include <algorithm>
#include <new>

using namespace ormalux;

int CKestImage::ReadCharacters(int x1, int y1, int x2, int y2, const CReadingSettings& settings,
                               CMatchSrcArray& sources, std::vector<CCharacterReading>& result) const
{
    result.clear();
    const ConstGrayView image = view();
    const int left = std::max(std::min(x1, x2), 0), top = std::max(std::min(y1, y2), 0);
    const int right = std::min(std::max(x1, x2), image.width - 1),
              bottom = std::min(std::max(y1, y2), image.height - 1);
    if (image.empty() || right < left || bottom < top || (settings.object != 0 && settings.object != 255))
        return 0;
    return readRegion(image, settings, {left, top, right + 1, bottom + 1}, sources.records(), result)
               ? int(result.size())
               : 0;
}

int CKestImage::ReadCharacters(const CReadingSettings& settings, CMatchSrcArray& sources,
                               std::vector<CCharacterReading>& result) const
{
    return ReadCharacters(0, 0, m_width - 1, m_height - 1, settings, sources, result);
}

int CKestImage::ReadCharacters(CBlobRectArray& boxes, const CReadingSettings& settings,
                               CMatchSrcArray& sources, std::vector<CCharacterReading>& result) const
try {
    result.clear();
    if (IsEmpty() || (settings.object != 0 && settings.object != 255))
        return 0;
    std::vector<CharacterBox> list;
    for (const _stBlobRect& box : boxes.records())
        list.push_back({int(box.left), int(box.top), int(box.right), int(box.bottom)});
    return readBoxes(view(), settings, list, sources.records(), result) ? int(result.size()) : 0;
} catch (const std::bad_alloc&) {
    return 0;
}
