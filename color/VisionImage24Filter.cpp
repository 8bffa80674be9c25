#include "color/VisionImage24.h"

#include "color/ColorFilter.h"
#include "image/NamedFilters.h"

using ormalux::NamedFilter;

void CKestImage24::Filter(long* kernel, long size, long divisor, long offset, int threaded)
{
    ormalux::filter(view(), ormalux::Convolution{kernel, size, divisor, offset}, threaded == 1);
}

void CKestImage24::Sharpen()
{
    ormalux::filter(view(), NamedFilter::Sharpen);
}

void CKestImage24::Blur()
{
    ormalux::filter(view(), NamedFilter::Blur);
}

void CKestImage24::Soften()
{
    ormalux::filter(view(), NamedFilter::Soften);
}

void CKestImage24::Gassian3x3()
{
    ormalux::filter(view(), NamedFilter::Gassian3x3);
}

void CKestImage24::Gassian5x5()
{
    ormalux::filter(view(), NamedFilter::Gassian5x5);
}

void CKestImage24::Emboss()
{
    ormalux::filter(view(), NamedFilter::Emboss);
}

void CKestImage24::Edge()
{
    ormalux::filter(view(), NamedFilter::Edge);
}

void CKestImage24::Laplacian()
{
    ormalux::filter(view(), NamedFilter::Laplacian);
}

void CKestImage24::Erode()
{
    ormalux::erode(view());
}

void CKestImage24::Dilate()
{
    ormalux::dilate(view());
}

void CKestImage24::OpenBox()
{
    Erode();
    Dilate();
}

void CKestImage24::CloseBox()
{
    Dilate();
    Erode();
}
