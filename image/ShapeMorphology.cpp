#include "image/ShapeMorphology.h"

#include "image/ElementExtreme.h"
#include "platform/LargeMemory.h"

#include <cstring>
#include <optional>

namespace ormalux {

namespace {

/// A copy of the picture, in memory that costs few faults.
class Copy
{
public:
    explicit Copy(const GrayView& image)
        : m_bytes(std::size_t(image.width) * std::size_t(image.height)),
          m_pixels(static_cast<std::uint8_t*>(allocateBlock(m_bytes)))
    {
        m_view = {m_pixels, image.width, image.height, image.width};
        for (int y = 0; m_pixels && y < image.height; ++y)
            std::memcpy(m_view.row(y), image.row(y), std::size_t(image.width));
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;
    ~Copy() { freeBlock(m_pixels, m_bytes); }
    const GrayView& view() const { return m_view; }

private:
    std::size_t m_bytes;
    std::uint8_t* m_pixels;
    GrayView m_view;
};

// from less the other, row by row, into the image.
void subtract(GrayView image, const GrayView& from, const GrayView& less)
{
    for (int y = 0; y < image.height; ++y)
        kernels::subtractRow(from.row(y), less.row(y), image.row(y), std::size_t(image.width));
}

} // namespace

bool morphology(GrayView image, MorphologyOperation operation, ElementShape shape, int width, int height)
{
    if (image.empty() || width < 1 || height < 1 || width > maxElementSize || height > maxElementSize)
        return false;
    ElementExtreme extreme(structuringElement(shape, width, height), image.width);
    if (!extreme.prepare())
        return false;
    std::optional<Copy> copy;
    GrayView other;
    if (operation == MorphologyOperation::TopHat || operation == MorphologyOperation::Gradient) {
        other = copy.emplace(image).view();
        if (other.empty())
            return false;
    }
    switch (operation) {
    case MorphologyOperation::Erode:
        extreme.run(image, Extreme::Least);
        break;
    case MorphologyOperation::Dilate:
        extreme.run(image, Extreme::Greatest);
        break;
    case MorphologyOperation::Open:
        extreme.run(image, Extreme::Least);
        extreme.run(image, Extreme::Greatest);
        break;
    case MorphologyOperation::Close:
        extreme.run(image, Extreme::Greatest);
        extreme.run(image, Extreme::Least);
        break;
    case MorphologyOperation::TopHat:
        extreme.run(image, Extreme::Least);
        extreme.run(image, Extreme::Greatest);
        subtract(image, other, image);
        break;
    case MorphologyOperation::Gradient:
        extreme.run(image, Extreme::Greatest);
        extreme.run(other, Extreme::Least);
        subtract(image, image, other);
        break;
    }
    return true;
}

} // namespace ormalux
