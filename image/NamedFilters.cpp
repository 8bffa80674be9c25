#include "image/NamedFilters.h"

#include "image/RowWindow.h"
#include "image/kernels/EmbossKernels.h"
#include "image/kernels/NamedFilterKernels.h"

#include <cstring>
#include <utility>

namespace ormalux {

namespace {

constexpr long sharpen[] = {-1, -1, -1, -1, 15, -1, -1, -1, -1};
constexpr long blur[] = {1, 1, 1, 1, 1, 1, 1, 1, 1};
constexpr long soften[] = {1, 1, 1, 1, 8, 1, 1, 1, 1};
constexpr long gassian3x3[] = {1, 2, 1, 2, 4, 2, 1, 2, 1};
constexpr long gassian5x5[] = {0, 1, 2, 1, 0, 1, 3, 4, 3, 1, 2, 4, 8, 4, 2, 1, 3, 4, 3, 1, 0, 1, 2, 1, 0};
constexpr long emboss[] = {0, 0, -1, 0, 0, 0, 1, 0, 0};
constexpr long laplacian[] = {-1, -1, -1, -1, 8, -1, -1, -1, -1};

// In the order of NamedFilter.
constexpr Convolution convolutions[] = {
    {sharpen, 3, 7, 0},     {blur, 3, 9, 0},      {soften, 3, 16, 0},      {gassian3x3, 3, 16, 0},
    {gassian5x5, 5, 52, 0}, {emboss, 3, -1, 127}, {laplacian, 3, -1, 255}, {laplacian, 3, -1, 0},
};

// Two rows of scratch do: the kernel sees one row above, which is kept, and one below, which is still there.
bool embossInPlace(GrayView image)
{
    const std::size_t width = std::size_t(image.width),
                      stride = 64 + std::size_t(wholeLines(std::ptrdiff_t(image.width) + 1));
    const ScratchBytes scratch = scratchBytes(2 * stride);
    if (!scratch)
        return false;
    std::uint8_t *above = scratch.get() + 64, *kept = above + stride;
    std::memcpy(above, image.pixels, width);
    above[width] = above[width - 1];
    for (int y = 0; y + 1 < image.height; ++y) {
        kernels::embossRow(above, image.row(y), image.row(y + 1), kept, width);
        std::swap(above, kept);
    }
    std::memcpy(kept, image.row(image.height - 1), width);
    kernels::embossRow(above, image.row(image.height - 1), kept, kept, width);
    return true;
}

} // namespace

Convolution convolutionOf(NamedFilter name)
{
    return convolutions[static_cast<int>(name)];
}

bool filter(GrayView image, NamedFilter name)
{
    if (image.empty())
        return false;
    if (name == NamedFilter::Emboss)
        return embossInPlace(image);
    const int reach = int(convolutionOf(name).size / 2);
    RowWindow window(image, reach, reach);
    if (!window.prepare(false))
        return false;
    const kernels::RowFilter rows = kernels::namedFilterRows(static_cast<int>(name));
    window.run(Band{0, 0, image.height},
               [&](const std::uint8_t* const* source, std::uint8_t* out, int count) {
                   rows(source, out, image.stride, std::size_t(image.width), count);
               });
    return true;
}

} // namespace ormalux
