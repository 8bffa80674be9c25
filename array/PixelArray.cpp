#include "array/PixelArray.h"

#include "array/RecordFind.h"
#include "array/RecordSort.h"

void CPixelArray::SortX()
{
    sortBy([](const _stPixel& p) { return p.x; });
}

void CPixelArray::SortY()
{
    CPixelArray::SortX(); // Deliberate: callers know both as one ordering.
}

void CPixelArray::SortGrayLevel()
{
    sortBy([](const _stPixel& p) { return p.gray_level; });
}

void CPixelArray::SortParameter()
{
    sortBy([](const _stPixel& p) { return p.parameter; });
}

int CPixelBunchArray::Find(unsigned char gray_level, long total_count, float percent, int start)
{
    return ormalux::findFrom<_stPixelBunch>(records(), start, [=](const _stPixelBunch& b) {
        return b.gray_level == gray_level && b.total_count == LONG(total_count) && b.percent == percent;
    });
}

void CPixelBunchArray::SortTotalCount()
{
    sortBy([](const _stPixelBunch& b) { return b.total_count; });
}

void CPixelBunchArray::SortGrayLevel()
{
    sortBy([](const _stPixelBunch& b) { return b.gray_level; });
}

void CPixelBunchArray::SortPercent()
{
    sortBy([](const _stPixelBunch& b) { return b.percent; });
}
