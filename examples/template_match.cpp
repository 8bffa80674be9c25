// Teaches a template from one picture, keeps it in a file and finds the same shape in another picture.
#include "image/VisionImage.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>

/// A dark T on light ground with its top left corner at (x, y).
static void drawMark(CKestImage& image, int x, int y, unsigned char ink)
{
    image.Marking(x, y, x + 29, y + 9, ink);
    image.Marking(x + 10, y + 10, x + 19, y + 39, ink);
}

/// The file of a match source: key, four numbers and the size in little-endian order, then the pixels.
static void writeSource(const std::filesystem::path& path, CKestImage part, int threshold, unsigned char key)
{
    part.Threshold(threshold);
    const int width = part.GetWidth(), height = part.GetHeight();
    std::ofstream file(path, std::ios::binary);
    file.put(char(key));
    for (long number :
         {part.GetGrayLevelCount(0), part.GetGrayLevelCount(255), long(threshold), long(width), long(height)})
        for (int shift = 0; shift < 32; shift += 8)
            file.put(char(number >> shift));
    const std::unique_ptr<unsigned char[]> pixels(part.GetImagePtr(0, 0, width - 1, height - 1));
    file.write(reinterpret_cast<const char*>(pixels.get()), part.GetImageLen());
}

int main()
{
    CKestImage taught(100, 100);
    taught.Marking(0, 0, 99, 99, 200);
    drawMark(taught, 35, 30, 40);
    taught.SetROIPlacement(35, 30, 64, 69);
    const auto path = std::filesystem::temp_directory_path() /
                      ("ormalux-example-" + std::to_string(std::random_device{}()) + ".mcs");
    writeSource(path, taught, 128, 0); // key 0: a dark object
    CMatchSrcArray sources;
    sources.Add(path.string().c_str());
    std::filesystem::remove(path);

    CKestImage image(320, 240);
    image.Marking(0, 0, 319, 239, 180);
    image.Marking(30, 40, 59, 79, 70); // a box of the template's size
    drawMark(image, 200, 150, 60);
    CMatchResultArray results;
    const int count = image.Match(120, sources, results);
    results.SortYieldAverage(); // the best comes last
    for (int i = 0; i < count; ++i)
        std::printf("(%d, %d) to (%d, %d): black %.2f, white %.2f\n", results[i].left, results[i].top,
                    results[i].right, results[i].bottom, results[i].black_yield, results[i].white_yield);
}
