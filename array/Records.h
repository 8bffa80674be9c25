#pragma once

#include "platform/Types.h"

/// A sampled pixel of a gray image.
struct _stPixel
{
    LONG x = 0;
    LONG y = 0;
    std::uint8_t gray_level = 0;
    double parameter = 0.0; ///< contrast of an edge point; 0.0 for a plain sample
};

/// A sampled pixel of a colour image.
struct _stColorPixel
{
    LONG x = 0;
    LONG y = 0;
    COLORREF color = 0;
    double parameter = 0.0; ///< 0.0 unless the caller sets it
};

/// A sampled colour pixel with its colour taken apart and converted.
struct _stColorPixelEx
{
    LONG x = 0;
    LONG y = 0;
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t cyan = 0; ///< C, M, Y, K by full black generation
    std::uint8_t magenta = 0;
    std::uint8_t yellow = 0;
    std::uint8_t black = 0;
    COLORREF color = 0;
    std::uint32_t reserved[2] = {};
    double parameter = 0.0;
};

/// A gray level with the number and the share of the pixels that have it.
struct _stPixelBunch
{
    std::uint8_t gray_level = 0;
    LONG total_count = 0;
    float percent = 0.0f;
};

/// The bounding rectangle of a blob; right and bottom are its last column and row.
struct _stBlobRect
{
    LONG left = 0;
    LONG top = 0;
    LONG right = 0;
    LONG bottom = 0;
    LONG pixel_count = 0;
    LONG value1 = 0; ///< set by the seven-value Add only
    LONG value2 = 0;
    POINT center = {}; ///< written by CBlobRectArray::CenterPoint
    LONG reserved[4] = {};
};

/// A binary template. Pixels are 0 or 255, rows top-down and unpadded.
struct _stMatchSource
{
    std::uint8_t key = 0; ///< polarity of a pattern (0 black object, 255 white), character of an OCR source
    LONG threshold = 0;   ///< the threshold at which the template was made; not used by matching
    LONG black_count = 0; ///< template pixels equal to 0
    LONG white_count = 0; ///< template pixels equal to 255
    LONG width = 0;
    LONG height = 0;
    std::uint8_t* data =
        nullptr; ///< width x height bytes, shared by every copy of the record; null when empty
};

/// A candidate with its scores. Coordinates are inclusive.
struct _stMatchResult
{
    std::uint8_t key = 0;
    LONG left = 0;
    LONG top = 0;
    LONG right = 0;
    LONG bottom = 0;
    LONG pixel_count = 0;
    float black_yield = 0.0f; ///< agreement on black template pixels, 0 to 1, scaled by the size ratio
    float white_yield = 0.0f; ///< agreement on white template pixels, 0 to 1, scaled by the size ratio
    LONG threshold = 0;       ///< set by MatchThresholdRange only
};

static_assert(sizeof(_stPixel) == 24 && sizeof(_stColorPixel) == 24 && sizeof(_stColorPixelEx) == 40);
static_assert(sizeof(_stPixelBunch) == 12 && sizeof(_stBlobRect) == 52);
