#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace bench {

struct Extent
{
    const char* name;
    int width;
    int height;
};
inline constexpr Extent extents[] = {{"5 MP", 2448, 2048}, {"VGA", 640, 480}};

/// Smooth structures, parts and noise: what a camera picture of a board looks like to an operation.
inline std::vector<std::uint8_t> naturalPicture(int width, int height)
{
    std::mt19937 engine(42);
    std::vector<std::uint8_t> pixels(std::size_t(width) * height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int wave = ((x / 37) * 29 + (y / 53) * 31) % 120 + (x + y) % 41;
            const int noise = int(engine() % 17);
            pixels[std::size_t(y) * width + x] = std::uint8_t(40 + wave + noise);
        }
    return pixels;
}

/// Uniform noise.
inline std::vector<std::uint8_t> noisePicture(int width, int height)
{
    std::mt19937 engine(43);
    std::vector<std::uint8_t> pixels(std::size_t(width) * height);
    for (auto& p : pixels)
        p = std::uint8_t(engine() >> 24);
    return pixels;
}

/// Bright parts of 20 to 60 pixels on a dark ground.
inline std::vector<std::uint8_t> partsPicture(int width, int height)
{
    std::mt19937 engine(44);
    std::vector<std::uint8_t> pixels(std::size_t(width) * height, 30);
    for (int part = 0; part < width * height / 10000; ++part) {
        const int w = 20 + int(engine() % 41), h = 20 + int(engine() % 41);
        const int x0 = int(engine() % std::uint32_t(width)), y0 = int(engine() % std::uint32_t(height));
        for (int y = y0; y < y0 + h && y < height; ++y)
            for (int x = x0; x < x0 + w && x < width; ++x)
                pixels[std::size_t(y) * width + x] = 200;
    }
    return pixels;
}

} // namespace bench
