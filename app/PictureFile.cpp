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

namespace ormalux::viewer {

namespace {

constexpr qint64 largestPicture = qint64(512) << 20; // pixels; the display module refuses more

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PictureFile)
};

QString whyUnreadable(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return Texts::tr("파일을 찾을 수 없습니다.");
    if (file.isDir())
        return Texts::tr("폴더에 그림 파일이 없습니다.");
    if (!QFile(path).open(QIODevice::ReadOnly))
        return Texts::tr("파일을 읽을 권한이 없습니다.");
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

bool load(CKestWnd& window, const QString& path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
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

bool openPicture(CKestWnd& window, const QString& path, QString* why)
{
    if (load(window, path))
        return true;
    *why = QDir::toNativeSeparators(path) + "\n\n" + whyUnreadable(path);
    return false;
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
