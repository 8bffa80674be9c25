#include "array/Array.h"
#include "color/VisionImage24.h"
#include "image/VisionImage.h"
#include "measure/EdgeMeasure.h"
#include "measure/PlaneMeasure.h"
#include "platform/Stdlib.h"

#include <cstdio>

// Every class of the processing module, linked and used once: what it prints is compared.
int main()
{
    CKestImage image(64, 48);
    image.Marking(10, 10, 19, 17, 200);
    image.Marking(30, 20, 37, 27, 220);
    CBlobRectArray blobs;
    const int count = image.GetBlobList(128, 255, 2, 64, 2, 48, blobs);
    blobs.SortPixelCount();
    std::printf("%d blobs, the largest has %d pixels\n", count, int(blobs[count - 1].pixel_count));

    CEdgeLine edge{};
    image.GetEdgeLine({14.5, 9.5, 6, 8, 0, 6}, {}, edge);
    CKestPlaneScale scale;
    scale.SetPerPixel(0.2);
    std::printf("edge at %.2f mm\n", scale.GetDistance({edge.x, 0}, {edge.x, edge.y}));

    CKestImage24 color;
    std::printf("empty %d, %s processors\n", color.IsEmpty() ? 1 : 0,
                CStdlib::GetNumOfProcessors() > 0 ? "some" : "no");
    CRectArray rects;
    rects.Add(1, 2, 3, 4);
    std::printf("%d\n", int(rects.GetBounds().bottom));
    return count == 2 ? 0 : 1;
}
