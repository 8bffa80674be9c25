#include "image/VisionImage.h"

#include "image/AutoThreshold.h"
#include "image/GrayStatistics.h"
#include "image/Histogram.h"
#include "image/ImagePart.h"
#include "image/LocalThreshold.h"
#include "image/OtsuThreshold.h"
#include "image/PixelCollection.h"
#include "image/Threshold.h"

using namespace ormalux;

void CKestImage::Threshold(int t)
{
    threshold(pixelsOf(view()), t);
}

void CKestImage::DoubleThreshold(int upper, int lower, unsigned char value)
{
    doubleThreshold(pixelsOf(view()), upper, lower, value);
}

void CKestImage::AdaptiveThreshold(unsigned char fill)
{
    adaptiveThreshold(view(), fill);
}

int CKestImage::GetOtsuThreshold() const
{
    return otsuLevel(countLevels(view()));
}

int CKestImage::OtsuThreshold()
{
    const int level = GetOtsuThreshold();
    Threshold(level);
    return level;
}

int CKestImage::LocalThreshold(int method, int window, double offset)
{
    if (method != LOCAL_MEAN && method != LOCAL_GAUSSIAN)
        return 0;
    return localThreshold(view(), static_cast<LocalMean>(method), window, offset);
}

long CKestImage::GetAutoThreshold(char mode, int step) const
{
    return autoThreshold(view(), mode, step);
}

long CKestImage::GetAutoThreshold(int x1, int y1, int x2, int y2, char mode, int step) const
{
    return autoThreshold(partOf(view(), x1, y1, x2, y2).view, mode, step);
}

void CKestImage::Histogram(long* histogram) const
{
    if (!histogram)
        return;
    const LevelCounts counts = countLevels(view());
    for (int level = 0; level < 256; ++level)
        histogram[level] += long(counts[level]);
}

double CKestImage::GetGrayLevelAverage() const
{
    return grayAverage(view());
}

double CKestImage::GetGrayLevelAverage(int x1, int y1, int x2, int y2) const
{
    return grayAverage(partOf(view(), x1, y1, x2, y2).view);
}

long CKestImage::GetGrayLevelCount(unsigned char level) const
{
    return long(countInRange(view(), level, level));
}

void CKestImage::GetGravityCenter(int threshold, unsigned char polarity, long* cx, long* cy) const
{
    GetGravityCenter(0, 0, m_width - 1, m_height - 1, threshold, polarity, cx, cy);
}

void CKestImage::GetGravityCenter(int x1, int y1, int x2, int y2, int threshold, unsigned char polarity,
                                  long* cx, long* cy) const
{
    const ImagePart part = partOf(view(), x1, y1, x2, y2);
    const auto center = gravityCenter(part.view, threshold, polarity);
    if (!center)
        return;
    if (cx)
        *cx = part.x + center->x;
    if (cy)
        *cy = part.y + center->y;
}

int CKestImage::GetPixelArray(unsigned char low, unsigned char high, CPixelArray& ar) const
{
    collectPixels({view(), 0, 0}, low, high, ar);
    return ar.GetCount();
}

int CKestImage::GetPixelArray(int x1, int y1, int x2, int y2, unsigned char low, unsigned char high,
                              CPixelArray& ar) const
{
    collectPixels(partOf(view(), x1, y1, x2, y2), low, high, ar);
    return ar.GetCount();
}
