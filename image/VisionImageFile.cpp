#include "image/VisionImage.h"

#include "image/GrayBmp.h"
#include "image/PixelBuffer.h"

#include <algorithm>

int CKestImage::LoadImage(const char* path)
{
    ormalux::FileReader file(path);
    std::uint8_t beginning[ormalux::bmpHeaderSize + ormalux::bmpPaletteSize];
    if (!file.isOpen() || !file.read(0, beginning))
        return 0;
    const auto header = ormalux::parseBmpHeader(beginning, 8);
    if (!header)
        return 0;
    const int width = header->width, height = header->height;
    const std::uint64_t count = std::uint64_t(width) * std::uint64_t(height);
    if (!ormalux::canHold(width, height) || header->pixelsAt > file.length() ||
        count > file.length() - header->pixelsAt) {
        adopt(nullptr, width, height);
        return 0;
    }
    if (reusable(width, height)) {
        resize(width, height);
    } else {
        unsigned char* pixels = ormalux::newPixels(std::size_t(count));
        if (!pixels)
            return 0;
        adopt(pixels, width, height);
    }
    if (!ormalux::readGrayRows(file, *header, m_pixels)) {
        adopt(nullptr, width, height);
        return 0;
    }
    return 1;
}

int CKestImage::SaveImage(const char* path) const
{
    const bool pixelsMissing = view().empty() && m_width != 0 && m_height != 0;
    if (m_width < 0 || m_height < 0 || pixelsMissing)
        return 0;
    return ormalux::writeGrayBmp(path, view(), m_width, m_height) ? 1 : 0;
}
