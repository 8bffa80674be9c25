#pragma once

#include <cstddef>
#include <cstdint>

namespace ormalux {

/// Blue, green, red bytes that somebody else owns, with the size of the whole buffer: the three ways in which
/// a colour image addresses it differ in their row step, so none is part of the view.
struct ColorView
{
    std::uint8_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::int64_t length = 0; ///< bytes that may be touched, never less than colorBytes()

    bool empty() const { return !pixels || width < 1 || height < 1; }
    std::int64_t pixelCount() const { return std::int64_t(width) * height; }
    /// The bytes of the unpadded rows.
    std::int64_t colorBytes() const { return 3 * pixelCount(); }
};

/// The same, read only.
struct ConstColorView
{
    const std::uint8_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::int64_t length = 0;

    ConstColorView() = default;
    ConstColorView(const std::uint8_t* p, int w, int h, std::int64_t n)
        : pixels(p), width(w), height(h), length(n)
    {}
    ConstColorView(const ColorView& view)
        : pixels(view.pixels), width(view.width), height(view.height), length(view.length)
    {}

    bool empty() const { return !pixels || width < 1 || height < 1; }
    std::int64_t pixelCount() const { return std::int64_t(width) * height; }
    std::int64_t colorBytes() const { return 3 * pixelCount(); }
    /// The pixel's bytes in the unpadded rows.
    const std::uint8_t* at(int x, int y) const { return pixels + 3 * (std::int64_t(width) * y + x); }
};

/// The bytes of a row padded to 4, as bitmap files have it.
constexpr std::int64_t paddedStride(std::int64_t width)
{
    return ((width * 24 + 31) >> 5) * 4;
}

} // namespace ormalux
