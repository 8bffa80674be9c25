#include "view/PictureReader.h"

#include "image/PictureFile.h"
#include "view/FileHead.h"
#include "view/PictureImage.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

namespace ormalux {

namespace {

/// The bits a pixel that the file itself declares, where the toolkit does not tell palettes of 8 bits from
/// smaller ones; 8 for kinds that know no other palette.
int declaredPaletteBits(std::span<const std::uint8_t> file)
{
    static constexpr std::uint8_t png[] = {0x89, 'P', 'N', 'G'};
    if (file.size() > 26 && std::equal(std::begin(png), std::end(png), file.begin()))
        return file[24];
    if (file.size() > 30 && file[0] == 'B' && file[1] == 'M')
        return file[14] == 12 ? file[24] : file[28];
    return 8;
}

/// 16-bit gray to the nearest of 256 levels.
Picture fromGray16(const QImage& image, Picture picture)
{
    for (int y = 0; y < picture.height; ++y) {
        const auto* in = reinterpret_cast<const std::uint16_t*>(image.constScanLine(y));
        std::uint8_t* out = picture.pixels.data() + std::size_t(y) * std::size_t(picture.width);
        for (int x = 0; x < picture.width; ++x)
            out[x] = std::uint8_t((in[x] * 255u + 32767u) / 65535u);
    }
    return picture;
}

Picture sized(const QImage& image, int bitCount)
{
    Picture picture;
    picture.width = image.width();
    picture.height = image.height();
    picture.bitCount = bitCount;
    picture.pixels.resize(std::size_t(picture.width) * std::size_t(picture.height) *
                          std::size_t(bitCount / 8));
    return picture;
}

Picture copied(const QImage& image, int bitCount)
{
    Picture picture = sized(image, bitCount);
    const std::size_t row = std::size_t(picture.width) * std::size_t(bitCount / 8);
    for (int y = 0; y < picture.height; ++y)
        std::memcpy(picture.pixels.data() + row * std::size_t(y), image.constScanLine(y), row);
    return picture;
}

Picture converted(const QImage& image, int bitCount)
{
    const QImage same =
        image.convertToFormat(bitCount == 8 ? QImage::Format_Grayscale8 : QImage::Format_BGR888);
    if (same.isNull())
        throw std::bad_alloc();
    return copied(same, bitCount);
}

bool hasGrayPalette(const QImage& image)
{
    const auto colors = image.colorTable();
    return image.pixelFormat().colorModel() == QPixelFormat::Indexed &&
           std::ranges::all_of(colors, [](QRgb c) { return qRed(c) == qGreen(c) && qGreen(c) == qBlue(c); });
}

Picture fromImage(const QImage& image, std::span<const std::uint8_t> file, PaletteUse use)
{
    const bool gray8 = image.format() == QImage::Format_Grayscale8;
    if (use == PaletteUse::IndicesAreGray) {
        const bool bytes = gray8 || image.format() == QImage::Format_Indexed8;
        return bytes && declaredPaletteBits(file) == 8 ? copied(image, 8) : converted(image, 24);
    }
    if (gray8)
        return copied(image, 8);
    if (image.format() == QImage::Format_Grayscale16)
        return fromGray16(image, sized(image, 8));
    if (!hasGrayPalette(image))
        return converted(image, 24);
    // The palette's gray levels as they are: the toolkit's own way from palette to gray weighs the channels.
    Picture picture = copied(image.convertToFormat(QImage::Format_RGB888), 24);
    return toGray(std::move(picture));
}

/// The toolkit refuses to decode beyond 128 MB unless told otherwise, for the whole process: raised once,
/// never lowered, so that no reader on another thread meets a smaller limit than it was promised.
void raiseAllocationLimit()
{
    constexpr int megabytes = int(largestPicture * 4 >> 20);
    const int now = QImageReader::allocationLimit();
    if (now != 0 && now < megabytes)
        QImageReader::setAllocationLimit(megabytes);
}

std::string describe(QImageReader::ImageReaderError error)
{
    switch (error) {
    case QImageReader::UnsupportedFormatError:
        return unknownKind();
    case QImageReader::InvalidDataError:
        return "it is truncated or damaged";
    default:
        return "it cannot be decoded";
    }
}

/// Why a file of a known kind is not decoded at all; empty when it is.
std::string whyRefused(const FileHead& head)
{
    if (head.kind == SampleKind::Real)
        return "its samples are floating-point numbers, which are not supported";
    if (head.kind == SampleKind::Signed)
        return "its samples are signed numbers, which are not supported";
    const bool oddInTiff = head.pages > 0 && head.bits > 0 && !std::has_single_bit(unsigned(head.bits));
    if (head.bits > 16 || oddInTiff)
        return "its " + std::to_string(head.bits) + "-bit samples are not supported";
    return head.truncated ? "it is truncated" : "";
}

/// The toolkit's readers count from the device's place: the picture's own reader would lose its own.
int countPages(QByteArray& bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    return reader.imageCount();
}

} // namespace

Picture decodePicture(std::span<const std::uint8_t> file, PaletteUse use, std::string& why)
{
    const FileHead head = readFileHead(file);
    why = whyRefused(head);
    if (!why.empty())
        return {};
    raiseAllocationLimit();
    QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()), qsizetype(file.size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(use == PaletteUse::Applied);
    const QSize size = reader.size();
    if (std::int64_t(size.width()) * size.height() > largestPicture) {
        why = tooLarge();
        return {};
    }
    QImage image;
    if (!reader.read(&image) || image.isNull()) {
        why = describe(reader.error());
        return {};
    }
    Picture picture = fromImage(image, file, use);
    picture.origin = originOf(image, head, head.pages > 0 ? head.pages : countPages(bytes));
    return picture;
}

std::string whyNoPicture(std::span<const std::uint8_t> beginning)
{
    QByteArray bytes(reinterpret_cast<const char*>(beginning.data()), qsizetype(beginning.size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader::imageFormat(&buffer).isEmpty() ? unknownKind() : std::string();
}

Picture readPicture(const char* path, std::string* error, PaletteUse use)
{
    std::string why;
    Picture picture;
    try {
        PictureFile file = openPicture(path, use == PaletteUse::IndicesAreGray, whyNoPicture);
        picture = std::move(file.picture);
        why = std::move(file.why);
        if (!file.bytes.empty())
            picture = decodePicture(file.bytes, use, why);
    } catch (const std::bad_alloc&) {
        why = "memory is short";
        picture = {};
    }
    if (picture.empty() && error)
        *error = readingError(path, why);
    return picture;
}

} // namespace ormalux
