#pragma once

#include "platform/Types.h"

/// A sampled pixel of a gray image.
struct _stPixel
{
    LONG x;
    LONG y;
    std::uint8_t gray_level;
    double parameter; ///< contrast of an edge point; 0.0 for a plain sample
};

/// A sampled pixel of a colour image.
struct _stColorPixel
{
    LONG x;
    LONG y;
    COLORREF color;
    double parameter; ///< 0.0 unless the caller sets it
};

/// A sampled colour pixel with its colour taken apart and converted.
struct _stColorPixelEx
{
    LONG x;
    LONG y;
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
    std::uint8_t cyan; ///< C, M, Y, K by full black generation
    std::uint8_t magenta;
    std::uint8_t yellow;
    std::uint8_t black;
    COLORREF color;
    std::uint32_t reserved[2];
    double parameter;
};

/// A gray level with the number and the share of the pixels that have it.
struct _stPixelBunch
{
    std::uint8_t gray_level;
    LONG total_count;
    float percent;
};

/// The bounding rectangle of a blob; right and bottom are its last column and row.
struct _stBlobRect
{
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
    LONG pixel_count;
    LONG value1; ///< set by the seven-value Add only
    LONG value2;
    POINT center; ///< written by CBlobRectArray::CenterPoint
    LONG reserved[4];
};

/// A binary template. Pixels are 0 or 255, rows top-down and unpadded.
struct _stMatchSource
{
    std::uint8_t key; ///< polarity of a pattern (0 black object, 255 white), character of an OCR source
    LONG threshold;   ///< the threshold at which the template was made; not used by matching
    LONG black_count; ///< template pixels equal to 0
    LONG white_count; ///< template pixels equal to 255
    LONG width;
    LONG height;
    std::uint8_t* data; ///< width x height bytes, shared by every copy of the record; null when empty
};

/// A candidate with its scores. Coordinates are inclusive.
struct _stMatchResult
{
    std::uint8_t key;
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
    LONG pixel_count;
    float black_yield; ///< agreement on black template pixels, 0 to 1, scaled by the size ratio
    float white_yield; ///< agreement on white template pixels, 0 to 1, scaled by the size ratio
    LONG threshold;    ///< set by MatchThresholdRange only
};

static_assert(sizeof(_stPixel) == 24 && sizeof(_stColorPixel) == 24 && sizeof(_stColorPixelEx) == 40);
static_assert(sizeof(_stPixelBunch) == 12 && sizeof(_stBlobRect) == 52);
