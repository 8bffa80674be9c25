// Measures a slanted edge: single points along lines, then the whole edge.
#include "image/VisionImage.h"

#include <cstdio>

int main()
{
    // Dark on the left; the edge moves 1 pixel to the right every 4 rows.
    CKestImage image(200, 200);
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x)
            image.SetPixel(x, y, x < 75 + y / 4 ? 40 : 210);

    // Along a horizontal line the profile rises once from dark to bright.
    for (int y = 40; y <= 160; y += 40) {
        long x = 0, edgeY = 0;
        if (image.GetPointGauge(20, y, 180, y, BLACK_AND_WHITE, 128, &x, &edgeY))
            std::printf("row %d: the edge is at x = %ld\n", y, x);
    }
    CPixelArray none;
    std::printf("%d edges from bright to dark\n",
                image.GetPointGauge(20, 100, 180, 100, WHITE_AND_BLACK, 128, none));

    _stLineGaugeResult edge{};
    if (image.GetLineGauge(20, 20, 180, 180, BLACK_AND_WHITE, DIRECTION_VERTICAL, 1, 128, edge))
        std::printf("edge through (%d, %d), %.1f degrees\n", edge.center_x, edge.center_y, edge.angle);
    std::printf("its ends: (%d, %d) and (%d, %d)\n", edge.x1, edge.y1, edge.x2, edge.y2);
    std::printf("drawn at %.1f degrees\n", CKestImage::GetAngle(75, 199, 75 - 50, 199 - 200));
}
