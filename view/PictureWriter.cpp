#include "view/PictureWriter.h"

#include "platform/File.h"
#include "view/Picture.h"

#include <QBuffer>
#include <QByteArray>
#include <QFileInfo>
#include <QImageWriter>

#include <array>
#include <cstring>
#include <new>
#include <span>
#include <system_error>
#include <vector>

namespace ormalux {

namespace {

constexpr std::size_t headers = 14 + 40;

void put(std::uint8_t* at, std::int64_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        at[i] = std::uint8_t(value >> (8 * i));
}

/// Both headers and, for gray, the palette: entry i is (i, i, i).
std::vector<std::uint8_t> bmpHead(const PixelSource& picture, std::int64_t pixelBytes)
{
    const std::size_t size = headers + (picture.bitCount == 8 ? 4 * 256 : 0);
    std::vector<std::uint8_t> head(size);
    head[0] = 'B';
    head[1] = 'M';
    put(&head[2], std::int64_t(size) + pixelBytes, 4);
    put(&head[10], std::int64_t(size), 4);
    put(&head[14], 40, 4);
    put(&head[18], picture.width, 4);
    put(&head[22], picture.height, 4);
    put(&head[26], 1, 2);
    put(&head[28], picture.bitCount, 2);
    put(&head[34], pixelBytes, 4);
    put(&head[46], picture.bitCount == 8 ? 256 : 0, 4);
    for (std::size_t i = 0; headers + 4 * i < size; ++i)
        std::memset(&head[headers + 4 * i], int(i), 3);
    return head;
}

bool writeEncoded(const char* path, const QImage& image, const QByteArray& kind, std::string& why)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, kind);
    if (!QImageWriter::supportedImageFormats().contains(kind)) {
        why = "its name does not end in a known kind of picture";
        return false;
    }
    if (!writer.write(image)) {
        why = writer.errorString().toStdString();
        return false;
    }
    std::error_code error;
    const std::span all(reinterpret_cast<const std::uint8_t*>(bytes.constData()), std::size_t(bytes.size()));
    const bool written = writeFile(path, all, &error);
    why = writeFailure(error);
    return written;
}

/// Runs one way of writing and words its failure.
template <class Write>
bool guarded(const char* path, std::string* error, Write write)
{
    std::string why = "it cannot be created";
    bool written = false;
    try {
        written = path && write(why);
    } catch (const std::bad_alloc&) {
        why = "memory is short";
    }
    if (!written && error)
        *error = "cannot write '" + std::string(path ? path : "") + "': " + why;
    return written;
}

QByteArray kindOf(const char* path)
{
    return QFileInfo(QString::fromUtf8(path)).suffix().toLower().toUtf8();
}

} // namespace

bool writeBmp(const char* path, const PixelSource& picture, std::string* error)
{
    return guarded(path, error, [&](std::string& why) {
        const std::int64_t stride = paddedRow(picture.width, picture.bitCount);
        why = picture.empty() ? "there is no picture" : "it is larger than a BMP may be";
        if (picture.empty() || stride * picture.height > INT32_MAX - 2048)
            return false;
        const std::vector<std::uint8_t> head = bmpHead(picture, stride * picture.height);
        std::vector<std::uint8_t> rows(std::size_t(stride) * std::size_t(picture.height));
        for (int y = 0; y < picture.height; ++y)
            std::memcpy(rows.data() + stride * (picture.height - 1 - y), picture.row(y),
                        std::size_t(picture.width) * std::size_t(picture.bitCount / 8));
        const std::array<std::span<const std::uint8_t>, 2> parts{head, rows};
        std::error_code failure;
        const bool written = writeFile(path, parts, &failure);
        why = writeFailure(failure);
        return written;
    });
}

bool writeBmp(const char* path, const QImage& image, std::string* error)
{
    const bool gray = image.format() == QImage::Format_Grayscale8;
    const QImage same = gray ? image : image.convertToFormat(QImage::Format_BGR888);
    return writeBmp(path, {same.constBits(), same.width(), same.height(), same.bytesPerLine(), gray ? 8 : 24},
                    error);
}

bool writePicture(const char* path, const PixelSource& picture, std::string* error)
{
    const QByteArray kind = kindOf(path);
    if (kind == "bmp" || picture.empty())
        return writeBmp(path, picture, error);
    return guarded(path, error,
                   [&](std::string& why) { return writeEncoded(path, toQImage(picture), kind, why); });
}

bool writePicture(const char* path, const QImage& image, std::string* error)
{
    const QByteArray kind = kindOf(path);
    if (kind == "bmp" || image.isNull())
        return writeBmp(path, image, error);
    return guarded(path, error, [&](std::string& why) { return writeEncoded(path, image, kind, why); });
}

} // namespace ormalux
