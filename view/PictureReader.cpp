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

/// The upper eight of 16 bits, and all of them beside.
Picture fromGray16(const QImage& image, Picture picture)
{
    picture.deep.resize(picture.pixels.size());
    for (int y = 0; y < picture.height; ++y) {
        const std::size_t row = std::size_t(y) * std::size_t(picture.width);
        std::memcpy(picture.deep.data() + row, image.constScanLine(y), 2 * std::size_t(picture.width));
        for (std::size_t x = 0; x < std::size_t(picture.width); ++x)
            picture.pixels[row + x] = std::uint8_t(picture.deep[row + x] >> 8);
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

PictureRefusal describe(QImageReader::ImageReaderError error)
{
    switch (error) {
    case QImageReader::UnsupportedFormatError:
        return unknownKind();
    case QImageReader::InvalidDataError:
        return {PictureFault::Damaged, "it is truncated or damaged"};
    default:
        return {PictureFault::Damaged, "it cannot be decoded"};
    }
}

/// Why a file of a known kind is not decoded at all; none when it is.
PictureRefusal whyRefused(const FileHead& head)
{
    if (head.kind == SampleKind::Real)
        return {PictureFault::NotSupported,
                "its samples are floating-point numbers, which are not supported"};
    if (head.kind == SampleKind::Signed)
        return {PictureFault::NotSupported, "its samples are signed numbers, which are not supported"};
    const bool oddInTiff = head.pages > 0 && head.bits > 0 && !std::has_single_bit(unsigned(head.bits));
    if (head.bits > 16 || oddInTiff)
        return {PictureFault::NotSupported,
                "its " + std::to_string(head.bits) + "-bit samples are not supported"};
    return head.truncated ? truncatedFile() : PictureRefusal();
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

Picture decodePicture(std::span<const std::uint8_t> file, PaletteUse use, PictureRefusal& why)
{
    const FileHead head = readFileHead(file);
    why = whyRefused(head);
    if (!why.none())
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

PictureRefusal whyNoPicture(std::span<const std::uint8_t> beginning)
{
    QByteArray bytes(reinterpret_cast<const char*>(beginning.data()), qsizetype(beginning.size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader::imageFormat(&buffer).isEmpty() ? unknownKind() : PictureRefusal();
}

Picture readPicture(const char* path, std::string* error, PaletteUse use)
{
    PictureRefusal why;
    Picture picture;
    try {
        PictureFile file = openPicture(path, use == PaletteUse::IndicesAreGray, whyNoPicture);
        picture = std::move(file.picture);
        why = std::move(file.why);
        if (!file.bytes.empty())
            picture = decodePicture(file.bytes, use, why);
    } catch (const std::bad_alloc&) {
        why = {PictureFault::NoMemory, "memory is short"};
        picture = {};
    }
    if (picture.empty())
        picture.origin.fault = why.fault;
    if (picture.empty() && error)
        *error = readingError(path, why.text);
    return picture;
}

} // namespace ormalux
