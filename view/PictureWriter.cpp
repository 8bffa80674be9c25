#include "view/PictureWriter.h"

#include "platform/File.h"
#include "view/PictureImage.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageWriter>

#include <span>
#include <system_error>

namespace ormalux {

namespace {

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

} // namespace

bool writeBmp(const char* path, const QImage& image, std::string* error)
{
    const bool gray = image.format() == QImage::Format_Grayscale8;
    const QImage same = gray ? image : image.convertToFormat(QImage::Format_BGR888);
    return writeBmp(path, {same.constBits(), same.width(), same.height(), same.bytesPerLine(), gray ? 8 : 24},
                    error);
}

bool writePicture(const char* path, const PixelSource& picture, std::string* error)
{
    const std::string kind = fileEnding(path);
    if (kind == "bmp" || picture.empty())
        return writeBmp(path, picture, error);
    return writeOrTell(path, error, [&](std::string& why) {
        return writeEncoded(path, toQImage(picture), QByteArray::fromStdString(kind), why);
    });
}

bool writePicture(const char* path, const QImage& image, std::string* error)
{
    const std::string kind = fileEnding(path);
    if (kind == "bmp" || image.isNull())
        return writeBmp(path, image, error);
    return writeOrTell(path, error, [&](std::string& why) {
        return writeEncoded(path, image, QByteArray::fromStdString(kind), why);
    });
}

} // namespace ormalux
