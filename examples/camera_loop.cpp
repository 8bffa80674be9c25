// Inspects frames where the camera's driver put them: one image, linked to each buffer in turn, nothing
// copied.
#include "image/VisionImage.h"

#include <cstdio>
#include <cstring>
#include <vector>

static const int width = 160, height = 120, buffers = 3;

/// Stands in for the driver: a bright part that moves on by 20 pixels a frame.
static void grab(unsigned char* frame, int number)
{
    std::memset(frame, 50, width * height);
    for (int y = 40; y < 60; ++y)
        std::memset(frame + y * width + 10 + 20 * number, 220, 20);
}

int main()
{
    std::vector<unsigned char> ring(buffers * width * height);
    CKestImage image;
    CBlobRectArray blobs;
    for (int number = 0; number < 6; ++number) {
        unsigned char* frame = &ring[number % buffers * width * height];
        grab(frame, number);
        image.SetImagePtrLink(width, height,
                              frame); // the buffer stays the driver's; the image never frees it

        blobs.RemoveAll(); // results are appended
        const int count = image.GetBlobList(128, 255, 5, width, 5, height, blobs);
        long x = 0, y = 0;
        image.GetGravityCenter(128, 255, &x, &y);
        std::printf("frame %d in buffer %d: %d part at (%ld, %ld)\n", number, number % buffers, count, x, y);
    }

    // What changes a linked image changes the camera's buffer; a copy has pixels of its own.
    CKestImage copy(image);
    copy.Invert();
    std::printf("buffer %d, copy %d\n", ring[2 * width * height], copy.GetPixel(0, 0));
    image.Invert();
    std::printf("buffer %d\n", ring[2 * width * height]);
}
