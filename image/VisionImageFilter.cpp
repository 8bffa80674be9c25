#include "image/VisionImage.h"

#include "image/MedianFilter.h"
#include "image/Morphology.h"
#include "image/NamedFilters.h"
#include "image/ShapeMorphology.h"

using ormalux::NamedFilter;

void CKestImage::Filter(long* kernel, long size, long divisor, long offset, int threaded)
{
    ormalux::filter(view(), ormalux::Convolution{kernel, size, divisor, offset}, threaded == 1);
}

void CKestImage::Sharpen()
{
    ormalux::filter(view(), NamedFilter::Sharpen);
}

void CKestImage::Blur()
{
    ormalux::filter(view(), NamedFilter::Blur);
}

void CKestImage::Soften()
{
    ormalux::filter(view(), NamedFilter::Soften);
}

void CKestImage::Gassian3x3()
{
    ormalux::filter(view(), NamedFilter::Gassian3x3);
}

void CKestImage::Gassian5x5()
{
    ormalux::filter(view(), NamedFilter::Gassian5x5);
}

void CKestImage::Emboss()
{
    ormalux::filter(view(), NamedFilter::Emboss);
}

void CKestImage::Edge()
{
    ormalux::filter(view(), NamedFilter::Edge);
}

void CKestImage::Laplacian()
{
    ormalux::filter(view(), NamedFilter::Laplacian);
}

void CKestImage::Median3x3()
{
    ormalux::medianFilter(view(), 3);
}

void CKestImage::Median5x5()
{
    ormalux::medianFilter(view(), 5);
}

void CKestImage::Erode()
{
    ormalux::erode(view());
}

void CKestImage::Dilate()
{
    ormalux::dilate(view());
}

void CKestImage::OpenBox()
{
    Erode();
    Dilate();
}

void CKestImage::CloseBox()
{
    Dilate();
    Erode();
}

int CKestImage::Morphology(int operation, int shape, int width, int height)
{
    if (operation < MORPHOLOGY_ERODE || operation > MORPHOLOGY_GRADIENT || shape < MORPHOLOGY_RECT ||
        shape > MORPHOLOGY_ELLIPSE)
        return 0;
    return ormalux::morphology(view(), static_cast<ormalux::MorphologyOperation>(operation),
                               static_cast<ormalux::ElementShape>(shape), width, height);
}
