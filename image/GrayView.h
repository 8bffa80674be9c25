#pragma once

#include <cstddef>
#include <cstdint>

namespace ormalux {

/// Gray pixels that somebody else owns: rows top-down, stride bytes apart.
struct GrayView
{
    std::uint8_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;

    std::uint8_t* row(int y) const { return pixels + y * stride; }
    bool empty() const { return !pixels || width < 1 || height < 1; }
};

/// The same, read only.
struct ConstGrayView
{
    const std::uint8_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;

    ConstGrayView() = default;
    ConstGrayView(const std::uint8_t* p, int w, int h, std::ptrdiff_t s)
        : pixels(p), width(w), height(h), stride(s)
    {}
    ConstGrayView(const GrayView& view)
        : pixels(view.pixels), width(view.width), height(view.height), stride(view.stride)
    {}

    const std::uint8_t* row(int y) const { return pixels + y * stride; }
    bool empty() const { return !pixels || width < 1 || height < 1; }
    /// The part with its top left corner at (x, y); must lie inside.
    ConstGrayView part(int x, int y, int w, int h) const { return {row(y) + x, w, h, stride}; }
};

} // namespace ormalux
