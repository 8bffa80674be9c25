#include "view/ImageView.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "image/BmpReader.h"
#include "view/PictureReader.h"
#include "view/PictureWriter.h"
#include "view/ViewState.h"
#include "view/WaitCursor.h"

#include "platform/File.h"

#include <QThread>

#include <new>

using ormalux::Picture;
using ormalux::PixelSource;
using ormalux::RowOrder;
using ormalux::WaitCursor;
using Guard = std::lock_guard<std::recursive_mutex>;

namespace {

PixelSource sourceOf(const CKestImage& image)
{
    const ormalux::ConstGrayView view = image.view();
    return {view.pixels, view.width, view.height, view.stride, 8};
}

/// The padded rows of a colour image, as its loaders and SetImagePtr fill them.
PixelSource sourceOf(const CKestImage24& image)
{
    const ormalux::ConstColorView view = image.view();
    return {view.pixels, view.width, view.height, std::ptrdiff_t(ormalux::paddedRow(view.width, 24)), 24};
}

/// One plane of a padded colour buffer, its rows in the same order; empty when memory is short.
Picture planeOf(int width, int height, const unsigned char* bits, char filter)
{
    Picture plane;
    try {
        const std::size_t row = std::size_t(width) * 3;
        const std::ptrdiff_t stride = ormalux::paddedRow(width, 24);
        std::vector<std::uint8_t> unpadded(std::size_t(stride) * std::size_t(height));
        for (int y = 0; y < height; ++y)
            std::copy_n(bits + y * stride, row, unpadded.data() + std::size_t(y) * row);
        CKestImage24 color;
        color.SetImagePtrLink(width, height, unpadded.data());
        plane.pixels.resize(std::size_t(width) * std::size_t(height));
        CKestImage gray;
        gray.SetImagePtrLink(width, height, plane.pixels.data());
        color.GetImageWithFilter(filter, gray);
        plane.width = width;
        plane.height = height;
    } catch (const std::bad_alloc&) {
        plane.pixels.clear();
    }
    return plane;
}

Picture readBmpFile(const char* path)
{
    Picture picture;
    const auto file = path ? ormalux::readFile(path) : std::nullopt;
    if (file)
        ormalux::readBmp(*file, true, picture);
    return picture;
}

} // namespace

void CKestView::CreateImage(int width, int height, int bit_count)
{
    bool has = false;
    {
        const Guard guard(m->lock);
        m->image.create(width, height, bit_count, RowOrder::BottomUp);
        has = m->image.hasPicture();
        replaced();
    }
    const auto fit = [this, width, height, has] {
        m->fitAsked = false;
        const QSize client = clientSize();
        const float ratio =
            std::min(float(client.width()) / float(width), float(client.height()) / float(height));
        if (has && ratio > 0) // without a client area there is nothing to fit to yet
            m->fitZoom = ratio;
    };
    if (QThread::currentThread() == thread())
        fit();
    else
        QMetaObject::invokeMethod(this, fit, Qt::QueuedConnection);
    pictureChanged();
}

void CKestView::SetImagePtr(int width, int height, int bit_count, const unsigned char* bits)
{
    {
        const Guard guard(m->lock);
        m->image.copy(width, height, bit_count, bits, RowOrder::BottomUp);
        replaced();
    }
    pictureChanged();
}

void CKestView::SetImagePtr(int width, int height, int bit_count, const unsigned char* bits, char filter)
{
    const auto usable = [&] {
        const Guard guard(m->lock);
        return bits && width > 0 && height > 0 && ormalux::paddedRow(width, 24) <= INT32_MAX / height &&
               !m->image.outgrows(bits, ormalux::paddedRow(width, 24) * height);
    };
    if (filter == 'O' || bit_count != 24 || !usable())
        return SetImagePtr(width, height, bit_count, bits);
    {
        const Guard guard(m->lock); // the bits may be those that are shown
        const Picture plane = planeOf(width, height, bits, filter);
        // The plane's first row is the buffer's first: the bottom of the picture.
        PixelSource seen = plane.source();
        seen.bits += std::ptrdiff_t(width) * (plane.empty() ? 0 : height - 1);
        seen.stride = -seen.stride;
        if (plane.empty() || !m->image.assign(seen, RowOrder::BottomUp))
            m->image.copy(width, height, 8, nullptr, RowOrder::BottomUp);
        replaced();
    }
    pictureChanged();
}

void CKestView::SetImagePtrLink(int width, int height, int bit_count, unsigned char* bits)
{
    {
        const Guard guard(m->lock);
        m->image.link(width, height, bit_count, bits, RowOrder::BottomUp);
        replaced();
    }
    pictureChanged();
}

void CKestView::SetImage(const CKestImage& image)
{
    {
        const Guard guard(m->lock);
        if (!m->image.assign(sourceOf(image), RowOrder::TopDown))
            m->image.copy(image.GetWidth(), image.GetHeight(), 8, nullptr, RowOrder::TopDown);
        replaced();
    }
    pictureChanged();
}

void CKestView::SetImage(const CKestImage24& image)
{
    {
        const Guard guard(m->lock);
        if (!m->image.assign(sourceOf(image), RowOrder::TopDown))
            m->image.copy(image.GetWidth(), image.GetHeight(), 24, nullptr, RowOrder::TopDown);
        replaced();
    }
    pictureChanged();
}

void CKestView::SetRowOrder(int order)
{
    {
        const Guard guard(m->lock);
        if (order == GetRowOrder())
            return;
        m->image.setRowOrder(order == TOP_DOWN ? RowOrder::TopDown : RowOrder::BottomUp);
        m->file.clear();
    }
    requestPaint();
    tellEdited(); // every pixel that is seen is another one
}

int CKestView::LoadImage(const char* path)
{
    const WaitCursor waiting;
    const Picture picture = readBmpFile(path);
    {
        const Guard guard(m->lock);
        if (picture.empty() || !m->image.assign(picture.source(), RowOrder::BottomUp))
            return 0;
        replaced(path);
    }
    pictureChanged();
    ZoomFitTo();
    return 1;
}

int CKestView::LoadImageGdip(const char* path)
{
    const WaitCursor waiting;
    return show(ormalux::readPicture(path, nullptr, ormalux::PaletteUse::IndicesAreGray), path);
}

int CKestView::LoadPicture(const char* path, ormalux::PictureOrigin* told)
{
    const WaitCursor waiting;
    const Picture picture = ormalux::readPicture(path);
    if (told)
        *told = picture.origin;
    if (picture.empty() || show(picture, path))
        return !picture.empty();
    if (told)
        told->fault = ormalux::PictureFault::NoMemory;
    return 0;
}

int CKestView::show(const Picture& picture, const char* path)
{
    {
        const Guard guard(m->lock);
        if (picture.empty() || !m->image.assign(picture.source(), RowOrder::TopDown))
            return 0;
        replaced(path);
    }
    pictureChanged();
    ZoomFitTo();
    return 1;
}

int CKestView::SaveImage(const char* path) const
{
    const WaitCursor waiting;
    const Guard guard(m->lock);
    if (!path || !m->image.hasPicture())
        return 0;
    if (GetBitCount() == 24)
        return ormalux::writeBmp(path, m->image.source()) ? 1 : 0;
    const std::unique_ptr<CKestImage> gray(GetImage()); // the gray image's own file, byte for byte
    return gray ? gray->SaveImage(path) : 0;
}

bool CKestView::EditImage(const std::function<void(CKestImage&)>& gray,
                          const std::function<void(CKestImage24&)>& color, ormalux::ColorRows rows)
{
    bool run = false;
    bool resized = false;
    {
        const Guard guard(m->lock);
        const QSize before(GetWidth(), GetHeight());
        run = GetBitCount() == 8 ? gray && m->image.edit(gray) : color && m->image.edit(color, rows);
        resized = before != QSize(GetWidth(), GetHeight());
        if (run)
            m->file.clear();
        if (resized)
            replaced();
    }
    if (resized)
        pictureChanged();
    if (run)
        tellEdited();
    return run;
}

/// Another picture is held now, from the file or from none. Told by pictureChanged, without the lock: hosts
/// may wait for their threads there.
void CKestView::replaced(const char* file)
{
    m->file = file;
    m->preview.reset();
}
