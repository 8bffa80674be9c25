#include "steps/Work.h"

#include "steps/AreaEdit.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace ormalux {

namespace {

[[noreturn]] void tooLittleMemory(int width, int height)
{
    throw PictureError("too little memory for " + sizeText(width, height));
}

} // namespace

void Work::takeGray(const ConstGrayView& picture)
{
    m_color.SetEmpty();
    m_inColor = false;
    m_own = picture.stride != picture.width;
    if (!m_own) {
        // Nothing writes through the link: what changes the picture asks for a copy.
        m_borrowed.SetImagePtrLink(picture.width, picture.height, const_cast<std::uint8_t*>(picture.pixels));
        return;
    }
    m_gray.SetImagePtr(picture.width, picture.height);
    const GrayView rows = m_gray.view();
    if (rows.empty())
        tooLittleMemory(picture.width, picture.height);
    for (int y = 0; y < rows.height; ++y)
        std::memcpy(rows.row(y), picture.row(y), std::size_t(rows.width));
}

void Work::takeColor(const ConstColorView& picture)
{
    m_color.SetImagePtr(picture.width, picture.height, const_cast<std::uint8_t*>(picture.pixels));
    if (m_color.IsEmpty())
        tooLittleMemory(picture.width, picture.height);
    colorChanged();
    m_inColor = false; // nothing has been made of the colours yet
}

CKestImage& Work::grayToChange()
{
    if (!m_own) {
        m_gray = m_borrowed;
        if (m_gray.IsEmpty())
            tooLittleMemory(m_borrowed.GetWidth(), m_borrowed.GetHeight());
        m_own = true;
    }
    m_inColor = false;
    return m_gray;
}

void Work::changeGray(const std::optional<RECT>& given, const std::function<void(CKestImage&)>& edit)
{
    const auto part = region(given);
    if (part && !editArea(grayToChange(), *part, edit))
        throw std::bad_alloc();
}

void Work::setGray(CKestImage&& picture)
{
    if (picture.IsEmpty())
        tooLittleMemory(width(), height());
    m_gray = picture;
    if (m_gray.IsEmpty())
        tooLittleMemory(picture.GetWidth(), picture.GetHeight());
    m_own = true;
    m_inColor = false;
}

void Work::colorChanged()
{
    m_own = true;
    m_inColor = true;
    m_gray.SetEmpty();
    m_color.GetImageWithFilter('A', m_gray);
    if (m_gray.IsEmpty())
        tooLittleMemory(m_color.GetWidth(), m_color.GetHeight());
}

void Work::dropColor()
{
    m_color.SetEmpty();
    m_inColor = false;
}

std::optional<RECT> Work::region(const std::optional<RECT>& given) const
{
    const RECT whole = wholeOf(gray());
    if (limit)
        return *limit;
    if (!given)
        return whole;
    RECT region = *given;
    if (frame) {
        const RECT moved = frame->map(region);
        region = {std::max(moved.left, whole.left), std::max(moved.top, whole.top),
                  std::min(moved.right, whole.right), std::min(moved.bottom, whole.bottom)};
        return region.left <= region.right && region.top <= region.bottom ? std::optional(region)
                                                                          : std::nullopt;
    }
    if (region.left < 0 || region.top < 0 || region.right > whole.right || region.bottom > whole.bottom)
        throw PictureError("the region " + std::to_string(region.left) + "," + std::to_string(region.top) +
                           "," + std::to_string(region.right) + "," + std::to_string(region.bottom) +
                           " leaves the picture of " + sizeText(width(), height()));
    return region;
}

int Work::level(const ThresholdChoice& choice, const RECT& region, int step) const
{
    if (!choice.automatic)
        return choice.low;
    const long level =
        gray().GetAutoThreshold(region.left, region.top, region.right, region.bottom, 'A', step);
    if (level == 0)
        throw PictureError("no rising edges to set a threshold by; give one with --threshold");
    return int(level);
}

const Place* Work::find(const RowReference& reference) const
{
    if (reference.step < 0 || std::size_t(reference.step) >= findings.size())
        return nullptr;
    const Findings& found = findings[std::size_t(reference.step)];
    return std::size_t(reference.row) <= found.rows() ? &found.place(std::size_t(reference.row) - 1)
                                                      : nullptr;
}

RECT wholeOf(const CKestImage& image)
{
    return {0, 0, image.GetWidth() - 1, image.GetHeight() - 1};
}

std::string sizeText(int width, int height)
{
    return std::to_string(width) + " x " + std::to_string(height) + " pixels";
}

} // namespace ormalux
