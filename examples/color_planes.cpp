// Takes a colour picture apart into gray planes and finds the red part among others.
#include "color/VisionImage24.h"

#include <cstdio>
#include <memory>

int main()
{
    const int width = 160, height = 120; // a width that is a multiple of 4 has rows without padding
    unsigned char black[3 * width * height] = {};
    CKestImage24 image(width, height, black);
    image.Marking(0, 0, width, height, 90, 90, 90); // right and bottom lie outside here
    image.Marking(20, 20, 50, 60, 200, 30, 40);
    image.Marking(60, 20, 90, 60, 30, 180, 50);
    image.Marking(100, 20, 130, 60, 40, 50, 190);

    const std::unique_ptr<CKestImage> hue(image.GetHSpaceOfHSI()), saturation(image.GetSSpaceOfHSI()),
        intensity(image.GetISpaceOfHSI()), black_plane(image.GetKSpaceOfCMYK());
    for (const POINT p : {POINT{30, 40}, POINT{70, 40}, POINT{110, 40}, POINT{10, 10}})
        std::printf("(%d, %d): hue %d, saturation %d, intensity %d, black %d\n", p.x, p.y,
                    hue->GetPixel(p.x, p.y), saturation->GetPixel(p.x, p.y), intensity->GetPixel(p.x, p.y),
                    black_plane->GetPixel(p.x, p.y));

    CBlobRectArray red;
    image.GetColorRangeBlobList(RGB(150, 0, 0), RGB(255, 80, 80), 10, width, 10, height, red);
    for (const _stBlobRect& blob : red.records())
        std::printf("red part (%d, %d) to (%d, %d)\n", blob.left, blob.top, blob.right, blob.bottom);
    CBlobRectArray colored;
    std::printf("%d coloured parts\n", saturation->GetBlobList(100, 255, 10, width, 10, height, colored));
}
