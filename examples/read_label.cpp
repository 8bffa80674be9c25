// Reads the digits of a label with sources made from drawn glyphs, though the label is grayer than they are.
#include "image/VisionImage.h"

#include <cstdio>
#include <string>

static const char* const glyphs[10] = {
    "####.##.##.####", ".#.##..#..#.###", "###..#####..###", "###..####..####", "#.##.####..#..#",
    "####..###..####", "####..####.####", "###..#..#..#..#", "####.#####.####", "####.####..####"};
static const int scale = 4, width = 3 * scale, height = 5 * scale;

/// Draws a digit of 3 x 5 squares with its top left corner at (x, y).
static void draw(CKestImage& image, int x, int y, int digit, unsigned char ink)
{
    for (int i = 0; i < 15; ++i)
        if (glyphs[digit][i] == '#') {
            const int left = x + i % 3 * scale, top = y + i / 3 * scale;
            image.Marking(left, top, left + scale - 1, top + scale - 1, ink);
        }
}

int main()
{
    // A source a digit, black on white. The pictures hold the pixels that the sources refer to.
    static CKestImage pictures[10];
    static unsigned char pixels[10][width * height];
    CMatchSrcArray sources;
    for (int digit = 0; digit < 10; ++digit) {
        CKestImage& picture = pictures[digit];
        picture.SetImagePtrLink(width, height, pixels[digit]);
        picture.Marking(0, 0, width - 1, height - 1, 255);
        draw(picture, 0, 0, digit, 0);
        for (_stMatchSource& source : sources.appendForOverwrite(1))
            source = {std::uint8_t('0' + digit),
                      128,
                      LONG(picture.GetGrayLevelCount(0)),
                      LONG(picture.GetGrayLevelCount(255)),
                      width,
                      height,
                      pixels[digit]};
    }

    CKestImage label(200, 60);
    label.Marking(0, 0, 199, 59, 170);
    const std::string text = "4071938265";
    for (int i = 0; i < int(text.size()); ++i)
        draw(label, 10 + 18 * i, 20, text[i] - '0', 90);

    CMatchResultArray results;
    const int count = label.OcrMatch(130, width / 2, width, height, height, sources, results);
    results.SortLeft();
    std::string read;
    for (int i = 0; i < count; ++i)
        read += char(results[i].key);
    std::printf("read %s, the first with yields of %.2f and %.2f\n", read.c_str(), results[0].black_yield,
                results[0].white_yield);
}
