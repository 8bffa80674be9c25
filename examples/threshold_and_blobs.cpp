// Finds the bright parts of a picture: automatic threshold, blobs, their sizes.
#include "image/VisionImage.h"

#include <cstdio>

int main()
{
    CKestImage image(320, 240);
    image.Marking(0, 0, 319, 239, 60); // the conveyor
    image.Marking(40, 30, 99, 69, 180);
    image.Marking(150, 100, 169, 199, 200);
    image.Marking(230, 50, 289, 109, 190);
    image.Marking(250, 70, 269, 89, 60);  // a hole in the third part
    image.Marking(10, 220, 12, 222, 255); // dirt
    image.Blur();                         // a lens is never quite sharp: edges rise over several pixels
    image.Blur();

    const int threshold = int(image.GetAutoThreshold('A', 1));
    std::printf("threshold %d\n", threshold);

    // Bright objects of 10 to 200 pixels a side: the dirt is too small.
    CBlobRectArray blobs;
    const int count = image.GetBlobList(threshold, 255, 10, 200, 10, 200, blobs);
    blobs.SortPixelCount();
    for (int i = 0; i < count; ++i) {
        const _stBlobRect& blob = blobs[i];
        std::printf("part (%d, %d) to (%d, %d), %d pixels\n", blob.left, blob.top, blob.right, blob.bottom,
                    blob.pixel_count);
    }

    image.Threshold(threshold);
    std::printf("%ld bright pixels\n", image.GetGrayLevelCount(255));
}
