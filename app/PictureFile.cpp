#include "app/PictureFile.h"

#include "color/VisionImage24.h"
#include "platform/Stdlib.h"
#include "view/ImageViewWnd.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>

namespace ormalux::viewer {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PictureFile)
};

/// Why there is no picture, in the operator's language.
QString reasonOf(PictureFault fault)
{
    switch (fault) {
    case PictureFault::NotFound:
        return Texts::tr("파일을 찾을 수 없습니다.");
    case PictureFault::Directory:
        return Texts::tr("폴더에 그림 파일이 없습니다.");
    case PictureFault::NotAFile:
        return Texts::tr("파일이 아니라 장치나 파이프입니다.");
    case PictureFault::NoPermission:
    case PictureFault::NotReadable:
        return Texts::tr("파일을 읽을 권한이 없습니다.");
    case PictureFault::Truncated:
        return Texts::tr("파일이 중간에 끊겨 있습니다.");
    case PictureFault::Damaged:
        return Texts::tr("그림 파일이 손상되었습니다.");
    case PictureFault::NotSupported:
        return Texts::tr("지원하지 않는 화소 형식입니다 (실수, 부호 있는 수 등).");
    case PictureFault::TooLarge:
        return Texts::tr("그림이 너무 큽니다 (최대 5억 1200만 화소).");
    case PictureFault::NoMemory:
        return Texts::tr("메모리가 부족합니다.");
    default:
        return Texts::tr("읽을 수 있는 그림 파일이 아닙니다.");
    }
}

bool show(CKestWnd& window, const QImage& image)
{
    const bool gray = image.format() == QImage::Format_Grayscale8;
    // Rows of both are padded to 4 bytes, as the window's are.
    window.SetImagePtr(image.width(), image.height(), gray ? 8 : 24, image.constBits());
    window.SetRowOrder(TOP_DOWN);
    window.ZoomFitTo();
    return window.GetImagePtr() != nullptr;
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

bool openPicture(CKestWnd& window, const QString& path, QString* why, PictureOrigin* origin)
{
    PictureOrigin told;
    if (!window.LoadPicture(path.toUtf8().constData(), &told))
        return failed(path, reasonOf(told.fault), why);
    if (origin)
        *origin = told;
    return true;
}

bool turnPicture(CKestWnd& window, int quarters)
{
    const QImage picture = pictureOf(window);
    const QImage turned =
        picture.transformed(QTransform().rotate(90 * quarters)).convertToFormat(picture.format());
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
