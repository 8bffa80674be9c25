#include "steps/AreaEdit.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"

#include <cstring>
#include <new>
#include <utility>
#include <vector>

namespace ormalux {

namespace {

CSize sizeOf(const RECT& area)
{
    return {area.right - area.left + 1, area.bottom - area.top + 1};
}

std::int64_t rowStep(int width, ColorRows rows)
{
    return rows == ColorRows::Padded ? paddedStride(width) : 3 * std::int64_t(width);
}

/// Black when memory is short: then it is empty.
std::vector<std::uint8_t> zeros(std::int64_t count)
{
    try {
        return std::vector<std::uint8_t>(std::size_t(count));
    } catch (const std::bad_alloc&) {
        return {};
    }
}

} // namespace

bool editArea(CKestImage& image, const RECT& area, const GrayEdit& operation)
{
    const GrayView whole = image.view();
    const CSize size = sizeOf(area);
    if (size.cx == whole.width && size.cy == whole.height)
        return operation(image), true;
    CKestImage part(image);
    part.SetROIPlacement(area);
    operation(part);
    const ConstGrayView changed = std::as_const(part).view();
    if (changed.empty())
        return false;
    if (changed.width != size.cx || changed.height != size.cy)
        return true;
    for (int y = 0; y < size.cy; ++y)
        std::memcpy(whole.row(area.top + y) + area.left, changed.row(y), std::size_t(size.cx));
    return true;
}

bool editArea(CKestImage24& image, ColorRows stored, const RECT& area, const ColorEdit& operation,
              ColorRows rows)
{
    const ColorView whole = image.view();
    const CSize size = sizeOf(area);
    if (size.cx == whole.width && size.cy == whole.height && stored == rows)
        return operation(image), true;
    std::vector<std::uint8_t> cut = zeros(paddedStride(size.cx) * size.cy);
    if (cut.empty())
        return false;
    const auto inWhole = [&](int y) {
        return whole.pixels + rowStep(whole.width, stored) * (area.top + y) + 3 * area.left;
    };
    const std::int64_t step = rowStep(size.cx, rows);
    for (int y = 0; y < size.cy; ++y)
        std::memcpy(cut.data() + step * y, inWhole(y), 3 * std::size_t(size.cx));
    CKestImage24 part;
    part.SetImagePtrLink(size.cx, size.cy, cut.data());
    operation(part);
    const ConstColorView changed = std::as_const(part).view();
    if (changed.empty() || changed.width != size.cx || changed.height != size.cy)
        return !changed.empty();
    for (int y = 0; y < size.cy; ++y)
        std::memcpy(inWhole(y), changed.pixels + step * y, 3 * std::size_t(size.cx));
    return true;
}

bool editChannels(CKestImage24& image, const GrayEdit& operation)
{
    const ColorView color = image.view();
    std::vector<std::uint8_t> level = zeros(color.pixelCount());
    for (int channel = 0; channel < 3 && !level.empty(); ++channel) {
        std::uint8_t* const first = color.pixels + channel;
        for (std::size_t i = 0; i < level.size(); ++i)
            level[i] = first[3 * i];
        CKestImage gray;
        gray.SetImagePtrLink(color.width, color.height, level.data());
        operation(gray);
        const ConstGrayView changed = std::as_const(gray).view();
        if (changed.width != color.width || changed.height != color.height)
            return !changed.empty();
        for (std::size_t i = 0; i < level.size(); ++i)
            first[3 * i] = changed.pixels[i];
    }
    return !level.empty();
}

} // namespace ormalux
