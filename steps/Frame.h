#pragma once

#include <cstddef>
#include <string>

namespace ormalux {

class Work;

enum class PixelFormat
{
    Gray8 = 1,
    Bgr24,
    Rgb24,
    Bgra32,
    Gray16
};

/// A camera's frame: the top left pixel, row y at pixels + y * stride.
struct FrameSource
{
    const void* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;
    PixelFormat format = PixelFormat::Gray8;
    int bits = 0;                 ///< significant bits of 16-bit pixels; 0: as the recipe says, else all
    bool overridesRecipe = false; ///< the bits hold whatever the recipe says
};

/// Hands a frame to the steps; gray rows without gaps are borrowed. Returns what should be known of it, empty
/// as a rule. Throws PictureError for wrong arguments.
std::string takeFrame(const FrameSource& source, int recipeBits, Work& work);

} // namespace ormalux
