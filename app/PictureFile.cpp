#include "app/PictureFile.h"

#include "color/VisionImage24.h"
#include "platform/Stdlib.h"
#include "view/ImageViewWnd.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>
#include <QtEndian>

namespace ormalux::viewer {

namespace {

constexpr qint64 largestPicture = qint64(512) << 20; // pixels; the display module refuses more
constexpr qint64 largestFile = qint64(4) << 30;      // bytes; the largest picture in colour takes less

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PictureFile)
};

/// Why a path is not even looked into: a pipe would be waited for, a device never ends. Empty when it is.
QString whyNotOpened(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return Texts::tr("파일을 찾을 수 없습니다.");
    if (file.isDir())
        return Texts::tr("폴더에 그림 파일이 없습니다.");
    if (!file.isFile())
        return Texts::tr("파일이 아니라 장치나 파이프입니다.");
    if (file.size() == 0)
        return Texts::tr("읽을 수 있는 그림 파일이 아닙니다.");
    if (file.size() > largestFile)
        return Texts::tr("파일이 너무 큽니다 (최대 4 GB).");
    if (!QFile(path).open(QIODevice::ReadOnly))
        return Texts::tr("파일을 읽을 권한이 없습니다.");
    return {};
}

/// Whether a BMP ends before its pixels do: the toolkit would show the rest in black.
bool isCutBmp(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray head = file.read(54);
    const auto* const bytes = reinterpret_cast<const uchar*>(head.constData());
    if (head.size() < 54 || !head.startsWith("BM"))
        return false;
    const auto word = [bytes](int at) { return qint64(qFromLittleEndian<quint32>(bytes + at)); };
    const auto half = [bytes](int at) { return qint64(qFromLittleEndian<quint16>(bytes + at)); };
    const bool old = word(14) == 12; // a header of 16-bit sizes
    const qint64 width = old ? half(18) : qint64(qint32(word(18)));
    const qint64 height = old ? half(20) : qAbs(qint64(qint32(word(22))));
    const qint64 bits = old ? half(24) : half(28);
    const qint64 compression = old ? 0 : word(30);
    if (width <= 0 || height <= 0 || width * height > largestPicture || bits < 1 || bits > 32)
        return false;
    if (compression == 1 || compression == 2) // runs; their length stands in the header
        return word(10) + word(34) > file.size();
    const qint64 stride = (width * bits + 31) / 32 * 4;
    // The last row may lack its padding.
    return word(10) + stride * (height - 1) + (width * bits + 7) / 8 > file.size();
}

QString whyUnreadable(const QString& path)
{
    if (const QString reason = whyNotOpened(path); !reason.isEmpty())
        return reason;
    if (isCutBmp(path))
        return Texts::tr("파일이 중간에 끊겨 있습니다.");
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() > largestPicture)
        return Texts::tr("그림이 너무 큽니다: %1 x %2 화소 (최대 5억 1200만 화소).")
            .arg(size.width())
            .arg(size.height());
    // Asked anew: a reader that has looked at the size no longer says what the file is.
    if (QImageReader(path).canRead())
        return Texts::tr("그림 파일이 손상되었거나 메모리가 부족합니다.");
    return Texts::tr("읽을 수 있는 그림 파일이 아닙니다.");
}

/// Whether the display module's readers would show something else than the picture: their bytes of a palette
/// are gray levels, black and white and deep gray become colour, and a camera's turn is not applied.
bool needsDecoding(const QImageReader& reader)
{
    switch (reader.imageFormat()) {
    case QImage::Format_Indexed8:
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
    case QImage::Format_Grayscale16:
        return true;
    default:
        return reader.transformation() != QImageIOHandler::TransformationNone;
    }
}

/// The bits of a channel; 8 where the kind of file does not tell.
int channelBits(QImage::Format format)
{
    switch (format) {
    case QImage::Format_Grayscale16:
    case QImage::Format_RGBX64:
    case QImage::Format_RGBA64:
    case QImage::Format_RGBA64_Premultiplied:
    case QImage::Format_RGBX16FPx4:
    case QImage::Format_RGBA16FPx4:
    case QImage::Format_RGBA16FPx4_Premultiplied:
        return 16;
    case QImage::Format_RGBX32FPx4:
    case QImage::Format_RGBA32FPx4:
    case QImage::Format_RGBA32FPx4_Premultiplied:
        return 32;
    default:
        return 8;
    }
}

bool isGray(const QImage& image)
{
    if (image.format() == QImage::Format_Grayscale8 || image.format() == QImage::Format_Grayscale16)
        return true;
    const QList<QRgb> colors = image.colorTable();
    return !colors.isEmpty() && std::all_of(colors.begin(), colors.end(), [](QRgb color) {
        return qRed(color) == qGreen(color) && qGreen(color) == qBlue(color);
    });
}

bool show(CKestWnd& window, const QImage& decoded)
{
    const bool gray = isGray(decoded);
    const QImage image = decoded.convertToFormat(gray ? QImage::Format_Grayscale8 : QImage::Format_BGR888);
    if (image.isNull())
        return false;
    // Rows of both are padded to 4 bytes, as the window's are.
    window.SetImagePtr(image.width(), image.height(), gray ? 8 : 24, image.constBits());
    window.SetRowOrder(TOP_DOWN);
    window.ZoomFitTo();
    return window.GetImagePtr() != nullptr;
}

bool load(CKestWnd& window, const QString& path, int* bits)
{
    if (!whyNotOpened(path).isEmpty() || isCutBmp(path))
        return false;
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (bits)
        *bits = channelBits(reader.imageFormat());
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() > largestPicture)
        return false;
    if (needsDecoding(reader)) {
        // As many bytes as the largest picture has in colour.
        QImageReader::setAllocationLimit(int(largestPicture * 4 >> 20));
        const QImage decoded = reader.read();
        return !decoded.isNull() && show(window, decoded);
    }
    const QByteArray utf8 = path.toUtf8();
    // The window's own BMP reader is the faster one; what it does not take the other reader may.
    return (reader.format() == "bmp" && window.LoadImage(utf8.constData())) ||
           window.LoadImageGdip(utf8.constData());
}

bool failed(const QString& path, const QString& reason, QString* why)
{
    *why = QDir::toNativeSeparators(path) + "\n\n" + reason;
    return false;
}

QString notWritten(const QString& path)
{
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    if (!folder.isDir())
        return Texts::tr("저장할 폴더가 없습니다.");
    if (file.isDir())
        return Texts::tr("같은 이름의 폴더가 있습니다.");
    if (!folder.isWritable() || (file.exists() && !file.isWritable()))
        return Texts::tr("파일을 쓸 권한이 없습니다.");
    return Texts::tr("파일을 저장할 수 없습니다. 남은 공간을 확인하십시오.");
}

} // namespace

bool openPicture(CKestWnd& window, const QString& path, QString* why, int* bits)
{
    if (load(window, path, bits))
        return true;
    *why = QDir::toNativeSeparators(path) + "\n\n" + whyUnreadable(path);
    return false;
}

bool turnPicture(CKestWnd& window, int quarters)
{
    const QImage picture = pictureOf(window);
    const QImage turned = picture.transformed(QTransform().rotate(90 * quarters));
    return !turned.isNull() && show(window, turned);
}

bool savePicture(CKestWnd& window, const QString& path, QString* why)
{
    if (QFileInfo(path).suffix().compare(QLatin1String("bmp"), Qt::CaseInsensitive) != 0)
        return saveImage(pictureOf(window), path, why);
    return window.SaveImage(path.toUtf8().constData()) || failed(path, notWritten(path), why);
}

bool saveImage(const QImage& image, const QString& path, QString* why)
{
    const QByteArray kind = QFileInfo(path).suffix().toLower().toLatin1();
    if (image.isNull())
        return failed(path, Texts::tr("저장할 그림이 없거나 메모리가 부족합니다."), why);
    if (kind == "bmp")
        return CStdlib::BitmapToFile(image, path.toUtf8().constData(), {0, 0}) ||
               failed(path, notWritten(path), why);
    if (!QImageWriter::supportedImageFormats().contains(kind))
        return failed(
            path, Texts::tr("저장할 수 없는 파일 형식입니다. bmp, png, jpg, tif 중에서 고르십시오."), why);
    QSaveFile file(path);
    QImageWriter writer(&file, kind);
    writer.setQuality(kind == "png" ? -1 : 95);
    return (file.open(QIODevice::WriteOnly) && writer.write(image) && file.commit()) ||
           failed(path, notWritten(path), why);
}

QImage pictureOf(CKestWnd& window)
{
    const CKestView& view = *window.GetView();
    const std::scoped_lock lock(view.GetLock());
    const int bits = window.GetBitCount();
    const uchar* const pixels = window.GetImagePtr();
    if (!pixels || (bits != 8 && bits != 24))
        return {};
    const QImage image(pixels, window.GetWidth(), window.GetHeight(),
                       (window.GetWidth() * bits + 31) / 32 * 4,
                       bits == 8 ? QImage::Format_Grayscale8 : QImage::Format_BGR888);
    return view.GetRowOrder() == TOP_DOWN ? image.copy() : image.mirrored();
}

QImage pictureWithOverlays(CKestWnd& window)
{
    QImage image = pictureOf(window).convertToFormat(QImage::Format_RGB32);
    if (image.isNull())
        return image;
    CKestView& view = *window.GetView();
    const std::scoped_lock lock(view.GetLock());
    QPainter painter(&image);
    RECT all{0, 0, image.width(), image.height()};
    view.GetOverlays().Draw(&painter, 1.0f, 1.0f, &all);
    return image;
}

QImage screenOf(CKestWnd& window)
{
    return window.GetImagePtr() ? window.GetView()->GetScreen() : QImage();
}

} // namespace ormalux::viewer
