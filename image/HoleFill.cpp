#include "image/HoleFill.h"

namespace ormalux {

HoleFill::HoleFill(const PixelBlock& image)
    : m_image(image), m_count(std::int64_t(image.width) * image.height),
      m_packed(image.stride == image.rowBytes())
{}

std::uint8_t* HoleFill::at(std::int64_t pixel) const
{
    if (m_packed)
        return m_image.bytes + pixel * m_image.bytesPerPixel;
    return m_image.row(int(pixel / m_image.width)) + pixel % m_image.width * m_image.bytesPerPixel;
}

void HoleFill::fillSome(std::int64_t first, std::int64_t end) const
{
    for (int channel = 0; channel < m_image.bytesPerPixel; ++channel) {
        int left = first > 0 ? at(first - 1)[channel] : 0;
        // Before the last hole the right neighbour is 0: the value halves until nothing is left of it.
        for (std::int64_t i = first; i < end - 1 && left > 0; ++i)
            at(i)[channel] = std::uint8_t(left >>= 1);
        if (end - 1 > first)
            left = at(end - 2)[channel];
        const int right = end < m_count ? at(end)[channel] : 0;
        at(end - 1)[channel] = std::uint8_t((left + right) >> 1);
    }
}

} // namespace ormalux
