#include "image/VisionImage.h"

#include "measure/CompareGolden.h"

int CKestImage::Compare(const CKestImage& golden, const CAlignment& alignment, int threshold, int grow,
                        CKestImage& marks) const
{
    if (&marks == this || &marks == &golden)
        return 0;
    std::int64_t compared = 0;
    if (!view().empty() && marks.SetSizeForOverwrite(m_width, m_height))
        compared = ormalux::compareGolden(view(), golden.view(), alignment, threshold, grow, marks.view());
    if (compared == 0)
        marks.SetEmpty();
    return int(compared);
}
