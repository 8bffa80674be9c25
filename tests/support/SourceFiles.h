#pragma once

#include "image/VisionImage.h"

#include <QFile>
#include <QString>

#include <string>

namespace testing_support {

/// Dark shapes on a light ground, each at its own place.
inline void drawBox(CKestImage& image, int left, int top, int width, int height, int level)
{
    for (int y = top; y < top + height; ++y)
        for (int x = left; x < left + width; ++x)
            image.SetPixel(x, y, std::uint8_t(level));
}

/// A source file byte by byte: key, counts, threshold, size, pixels.
inline QByteArray sourceBytes(int key, int width, int height, const QByteArray& pixels, int threshold = 128)
{
    QByteArray bytes(1, char(key));
    for (const int value : {int(pixels.count('\0')), int(pixels.count('\xff')), threshold, width, height})
        for (int i = 0; i < 4; ++i)
            bytes.append(char(value >> (8 * i)));
    return bytes + pixels;
}

/// The same of a part of an image.
inline QByteArray sourceBytes(const CKestImage& image, const RECT& part, int threshold, int key)
{
    QByteArray pixels;
    for (int y = part.top; y <= part.bottom; ++y)
        for (int x = part.left; x <= part.right; ++x)
            pixels.append(image.GetPixel(x, y) > threshold ? '\xff' : '\0');
    return sourceBytes(key, part.right - part.left + 1, part.bottom - part.top + 1, pixels, threshold);
}

inline bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace testing_support
