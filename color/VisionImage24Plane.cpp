#include "color/VisionImage24.h"

#include "color/ColorPlane.h"
#include "image/ImagePart.h"

#include <memory>
#include <new>

namespace {

using ormalux::Plane;

CKestImage* newPlane(const CKestImage24& image, Plane plane)
{
    std::unique_ptr<CKestImage> gray(new (std::nothrow) CKestImage());
    if (!gray)
        return nullptr;
    if (!gray->SetSizeForOverwrite(image.GetWidth(), image.GetHeight()) && !image.view().empty())
        return nullptr;
    ormalux::extractPlane(image.view(), plane, ormalux::pixelsOf(gray->view()));
    return gray.release();
}

} // namespace

CKestImage* CKestImage24::GetRedSpace() const
{
    return newPlane(*this, Plane::Red);
}

CKestImage* CKestImage24::GetGreenSpace() const
{
    return newPlane(*this, Plane::Green);
}

CKestImage* CKestImage24::GetBlueSpace() const
{
    return newPlane(*this, Plane::Blue);
}

CKestImage* CKestImage24::GetYSpace() const
{
    return newPlane(*this, Plane::Luma);
}

CKestImage* CKestImage24::GetUSpace() const
{
    return newPlane(*this, Plane::BlueDifference);
}

CKestImage* CKestImage24::GetVSpace() const
{
    return newPlane(*this, Plane::RedDifference);
}

CKestImage* CKestImage24::GetHSpaceOfHSI() const
{
    return newPlane(*this, Plane::Hue);
}

CKestImage* CKestImage24::GetSSpaceOfHSI() const
{
    return newPlane(*this, Plane::Saturation);
}

CKestImage* CKestImage24::GetISpaceOfHSI() const
{
    return newPlane(*this, Plane::Intensity);
}

CKestImage* CKestImage24::GetHSpaceOfHSV() const
{
    return newPlane(*this, Plane::Hue);
}

CKestImage* CKestImage24::GetSSpaceOfHSV() const
{
    return newPlane(*this, Plane::Saturation);
}

CKestImage* CKestImage24::GetVSpaceOfHSV() const
{
    return newPlane(*this, Plane::Value);
}

CKestImage* CKestImage24::GetCSpaceOfCMYK() const
{
    return newPlane(*this, Plane::Cyan);
}

CKestImage* CKestImage24::GetMSpaceOfCMYK() const
{
    return newPlane(*this, Plane::Magenta);
}

CKestImage* CKestImage24::GetYSpaceOfCMYK() const
{
    return newPlane(*this, Plane::Yellow);
}

CKestImage* CKestImage24::GetKSpaceOfCMYK() const
{
    return newPlane(*this, Plane::Black);
}

int CKestImage24::GetImageWithFilter(char filter, CKestImage& target) const
{
    if (target.IsEmpty())
        target.SetImagePtr(m_width, m_height);
    if (target.IsEmpty())
        return 0;
    Plane plane;
    if (ormalux::planeOfLetter(filter, plane))
        ormalux::extractPlane(view(), plane, ormalux::pixelsOf(target.view()));
    return 1;
}
