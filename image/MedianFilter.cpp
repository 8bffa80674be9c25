#include "image/MedianFilter.h"

#include "image/RowWindow.h"
#include "image/kernels/MedianKernels.h"

namespace ormalux {

bool medianFilter(GrayView image, int size)
{
    if (image.empty() || (size != 3 && size != 5))
        return false;
    RowWindow window(image, size / 2, size / 2);
    if (!window.prepare(false))
        return false;
    window.run(Band{0, 0, image.height},
               [&](const std::uint8_t* const* source, std::uint8_t* out, int count) {
                   const auto rows = size == 3 ? kernels::medianRows3 : kernels::medianRows5;
                   rows(source, out, image.stride, std::size_t(image.width), count);
               });
    return true;
}

} // namespace ormalux
