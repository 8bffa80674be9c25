#include "image/NamedFilters.h"

#include "image/RowWindow.h"
#include "image/kernels/NamedFilterKernels.h"

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

} // namespace

Convolution convolutionOf(NamedFilter name)
{
    return convolutions[static_cast<int>(name)];
}

bool filter(GrayView image, NamedFilter name)
{
    if (image.empty())
        return false;
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
