#include "view/ImageViewWnd.h"

#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "view/ViewImage.h"
#include "view/WindowState.h"

using ormalux::ColorRows;

namespace {

/// A width that is no multiple of 4 would shear under the image's own flip; the picture turned over and
/// mirrored is the same flip for every width.
void flipTopBottom(CKestImage& image)
{
    image.Rotate180();
    image.RotateHorzFlip();
}

} // namespace

void CKestWnd::CreateImage(int width, int height, int bit_count)
{
    m->view->CreateImage(width, height, bit_count);
}

void CKestWnd::SetImagePtr(int width, int height, int bit_count, const unsigned char* bits)
{
    m->view->SetImagePtr(width, height, bit_count, bits);
}

void CKestWnd::SetImagePtr(int width, int height, int bit_count, const unsigned char* bits, char filter)
{
    m->view->SetImagePtr(width, height, bit_count, bits, filter);
}

void CKestWnd::SetImagePtrLink(int width, int height, int bit_count, unsigned char* bits)
{
    m->view->SetImagePtrLink(width, height, bit_count, bits);
}

void CKestWnd::SetImage(const CKestImage& image)
{
    m->view->SetImage(image);
}

void CKestWnd::SetImage(const CKestImage24& image)
{
    m->view->SetImage(image);
}

void CKestWnd::SetRowOrder(int order)
{
    m->view->SetRowOrder(order);
}

int CKestWnd::GetRowOrder() const
{
    return m->view->GetRowOrder();
}

int CKestWnd::GetWidth() const
{
    return m->view->GetWidth();
}

int CKestWnd::GetHeight() const
{
    return m->view->GetHeight();
}

int CKestWnd::GetBitCount() const
{
    return m->view->GetBitCount();
}

unsigned char* CKestWnd::GetImagePtr()
{
    return m->view->GetImagePtr();
}

CKestImage* CKestWnd::GetImage() const
{
    return m->view->GetImage();
}

CKestImage* CKestWnd::GetImage(int x, int y, int w, int h) const
{
    return m->view->GetImage(x, y, w, h);
}

CKestImage24* CKestWnd::GetImage24() const
{
    return m->view->GetImage24();
}

CKestImage24* CKestWnd::GetImage24(int x, int y, int w, int h) const
{
    return m->view->GetImage24(x, y, w, h);
}

unsigned char CKestWnd::GetPixel(int x, int y) const
{
    return m->view->GetPixel(x, y);
}

void CKestWnd::SetPixel(int x, int y, unsigned char value)
{
    m->view->SetPixel(x, y, value);
}

unsigned long CKestWnd::GetPixel24(int x, int y) const
{
    return m->view->GetPixel24(x, y);
}

void CKestWnd::SetPixel24(int x, int y, unsigned long value)
{
    m->view->SetPixel24(x, y, value);
}

int CKestWnd::LoadImage(const char* path)
{
    return m->view->LoadImage(path);
}

int CKestWnd::LoadImageGdip(const char* path)
{
    return m->view->LoadImageGdip(path);
}

int CKestWnd::LoadPicture(const char* path, ormalux::PictureOrigin* told)
{
    return m->view->LoadPicture(path, told);
}

int CKestWnd::SaveImage(const char* path) const
{
    return m->view->SaveImage(path);
}

bool CKestWnd::edit(const std::function<void(CKestImage&)>& gray,
                    const std::function<void(CKestImage24&)>& color, ColorRows rows)
{
    return m->view->EditImage(gray, color, rows);
}

void CKestWnd::Rotate90L()
{
    Rotate(GetWidth() / 2, GetHeight() / 2, -90.0f, 0);
}

void CKestWnd::Rotate90R()
{
    Rotate(GetWidth() / 2, GetHeight() / 2, 90.0f, 0);
}

void CKestWnd::Rotate(int cx, int cy, float angle, unsigned char fill)
{
    const auto rotate = [=](auto& image) { image.Rotate(cx, cy, double(angle), fill); };
    edit(rotate, rotate, ColorRows::Padded);
}

void CKestWnd::RotateVertFlip()
{
    edit(flipTopBottom, &CKestImage24::RotateVertFlip, ColorRows::Padded);
}

void CKestWnd::Offset(int dx, int dy)
{
    const auto offset = [=](auto& image) { image.Offset(dx, dy); };
    edit(offset, offset, ColorRows::Unpadded);
}

void CKestWnd::Gamma(float gamma)
{
    const auto apply = [=](auto& image) { image.Gamma(gamma); };
    edit(apply, apply, ColorRows::Unpadded);
}

void CKestWnd::Light(long brightness, long contrast)
{
    const auto apply = [=](auto& image) { image.Light(brightness, contrast); };
    edit(apply, apply, ColorRows::Unpadded);
}

void CKestWnd::Rotate180()
{
    edit(&CKestImage::Rotate180, &CKestImage24::Rotate180, ColorRows::Padded);
}

void CKestWnd::RotateHorzFlip()
{
    edit(&CKestImage::RotateHorzFlip, &CKestImage24::RotateHorzFlip, ColorRows::Padded);
}

void CKestWnd::Invert()
{
    edit(&CKestImage::Invert, &CKestImage24::Invert, ColorRows::Unpadded);
}

void CKestWnd::Erode()
{
    edit(&CKestImage::Erode, &CKestImage24::Erode, ColorRows::Unpadded);
}

void CKestWnd::Dilate()
{
    edit(&CKestImage::Dilate, &CKestImage24::Dilate, ColorRows::Unpadded);
}

void CKestWnd::OpenBox()
{
    edit(&CKestImage::OpenBox, &CKestImage24::OpenBox, ColorRows::Unpadded);
}

void CKestWnd::CloseBox()
{
    edit(&CKestImage::CloseBox, &CKestImage24::CloseBox, ColorRows::Unpadded);
}

void CKestWnd::Sharpen()
{
    edit(&CKestImage::Sharpen, &CKestImage24::Sharpen, ColorRows::Unpadded);
}

void CKestWnd::Blur()
{
    edit(&CKestImage::Blur, &CKestImage24::Blur, ColorRows::Unpadded);
}

void CKestWnd::Soften()
{
    edit(&CKestImage::Soften, &CKestImage24::Soften, ColorRows::Unpadded);
}

void CKestWnd::Gassian5x5()
{
    edit(&CKestImage::Gassian5x5, &CKestImage24::Gassian5x5, ColorRows::Unpadded);
}

void CKestWnd::Gassian3x3()
{
    edit(&CKestImage::Gassian3x3, &CKestImage24::Gassian3x3, ColorRows::Unpadded);
}

void CKestWnd::Emboss()
{
    edit(&CKestImage::Emboss, &CKestImage24::Emboss, ColorRows::Unpadded);
}

void CKestWnd::Edge()
{
    edit(&CKestImage::Edge, &CKestImage24::Edge, ColorRows::Unpadded);
}

void CKestWnd::Laplacian()
{
    edit(&CKestImage::Laplacian, &CKestImage24::Laplacian, ColorRows::Unpadded);
}

void CKestWnd::HistoEqualize()
{
    edit(&CKestImage::HistoEqualize, nullptr, ColorRows::Unpadded);
}

void CKestWnd::HistoNormalize()
{
    edit(&CKestImage::HistoNormalize, nullptr, ColorRows::Unpadded);
}

void CKestWnd::HistoRoot()
{
    edit(&CKestImage::HistoRoot, nullptr, ColorRows::Unpadded);
}

void CKestWnd::HistoLog()
{
    edit(&CKestImage::HistoLog, nullptr, ColorRows::Unpadded);
}

void CKestWnd::HistoStretch()
{
    edit(&CKestImage::HistoStretch, nullptr, ColorRows::Unpadded);
}
