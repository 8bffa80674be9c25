#pragma once

#include <cstddef>
#include <cstdint>

/// What the command line has of the module of pictures, which alone knows the toolkit: a table of functions
/// in C, so that neither links the other. Both are of one build; the version tells when they are not.
extern "C" {

struct OrmaluxPixels
{
    const std::uint8_t* bits; ///< the top row first; 8-bit gray, or 24-bit blue, green, red
    int width, height;
    std::ptrdiff_t stride;
    int bitCount;
};

/// A decoded picture with what it was in its file (image/PictureOrigin.h).
struct OrmaluxDecoded
{
    OrmaluxPixels pixels;
    int bits, usedBits, pages, transparent;
    const std::uint16_t* deep; ///< of 16-bit gray levels: these, row by row; else null
    void* owner;               ///< of the pixels, until it is released
};

/// A shape as steps/Overlay.h has it.
struct OrmaluxShape
{
    int kind;
    double x1, y1, x2, y2, size;
    int width;
    std::uint32_t color;
    const char* label;
};

/// Every function that returns text returns null when it did its work, else why not, in words that last until
/// the next call; the very pointer noMemory where memory was short.
struct OrmaluxPictures
{
    const char* version;
    const char* noMemory;
    /// Comes first. What the toolkit dies of is told to the function.
    void (*start)(void (*complain)(const char* message));
    const char* (*whyNoPicture)(const std::uint8_t* beginning, std::size_t size);
    const char* (*decode)(const std::uint8_t* file, std::size_t size, OrmaluxDecoded* decoded);
    void (*release)(void* owner);
    // These name the file, in UTF-8, and write it whole or not at all.
    const char* (*write)(const char* path, const OrmaluxPixels* picture);
    const char* (*annotate)(const char* path, const OrmaluxPixels* picture, const OrmaluxShape* shapes,
                            std::size_t count);
    const char* (*plotHistogram)(const char* path, const long* counts);
};

/// The one function of the module.
using OrmaluxPicturesFunction = const OrmaluxPictures*(void);
}

#define ORMALUX_PICTURES_FUNCTION "ormalux_pictures"
