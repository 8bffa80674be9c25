#include "color/VisionImage24.h"

#include "color/ColorBmp.h"
#include "image/PixelBuffer.h"

#include <climits>
#include <memory>

int CKestImage24::LoadImage(const char* path)
{
    ormalux::FileReader file(path);
    std::uint8_t beginning[ormalux::bmpHeaderSize];
    if (!file.isOpen() || !file.read(0, beginning))
        return 0;
    const auto header = ormalux::parseBmpHeader(beginning, 24);
    if (!header)
        return 0;
    const std::uint64_t length =
        std::uint64_t(ormalux::paddedStride(header->width)) * std::uint64_t(header->height);
    if (length > INT_MAX || header->pixelsAt > file.length() || length > file.length() - header->pixelsAt)
        return 0;
    std::unique_ptr<unsigned char[]> pixels(ormalux::newPixels(std::size_t(length)));
    if (!pixels || !ormalux::readColorRows(file, *header, pixels.get()))
        return 0;
    adopt(pixels.release(), header->width, header->height, int(length));
    return 1;
}

int CKestImage24::SaveImage(const char* path) const
{
    const bool pixelsMissing = view().empty() && m_width != 0 && m_height != 0;
    if (m_width < 0 || m_height < 0 || pixelsMissing)
        return 0;
    return ormalux::writeColorBmp(path, view(), m_width, m_height) ? 1 : 0;
}
