// Reads a picture as "width height connectivity threshold object", then its bytes, from the standard input,
// again and again; writes the number of blobs and a line of features a blob. compare/features.py asks it.
#include "image/VisionImage.h"
#include "measure/BlobFeature.h"

#include <cstdio>

int main()
{
    int width, height, connectivity, threshold, object;
    std::vector<unsigned char> pixels;
    std::vector<CBlobFeature> found;
    while (std::scanf("%d %d %d %d %d", &width, &height, &connectivity, &threshold, &object) == 5) {
        pixels.resize(std::size_t(width) * std::size_t(height));
        std::getchar();
        if (std::fread(pixels.data(), 1, pixels.size(), stdin) != pixels.size())
            return 1;
        const CKestImage image(width, height, pixels.data());
        std::printf("%d\n", image.GetBlobFeatures(threshold, object, connectivity, found));
        for (const CBlobFeature& f : found)
            std::printf("%lld %.17g %.17g %d %d %d %d %.17g %.17g %.17g %.17g %lld %.17g\n", f.area,
                        f.centroid_x, f.centroid_y, f.left, f.top, f.right, f.bottom, f.perimeter,
                        f.orientation, f.major, f.minor, f.holes, f.mean);
        std::fflush(stdout);
    }
    return 0;
}
