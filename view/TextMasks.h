#pragma once

#include "view/DeviceCanvas.h"

#include <memory>
#include <string_view>
#include <vector>

namespace ormalux {

/// How much of each pixel a line of text covers, 0 to 255; cut to what is inked.
struct TextMask
{
    int left = 0; ///< of the ink, in device pixels from the text's top left corner
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> cover;
};

/// The longest letters that masks are kept for; larger ones are rare and left to a painter.
inline constexpr int tallestMask = 64;

/// The mask of a UTF-8 text with letters of this height (cachedFont) on a screen of this scale. The last some
/// thousand are kept: writing a text again costs a look-up. Safe from any thread; needs a QGuiApplication.
std::shared_ptr<const TextMask> textMask(std::string_view text, int height, qreal scale);

/// What a halo of so many pixels around such a text covers, the text itself included. Kept as well.
std::shared_ptr<const TextMask> haloMask(std::string_view text, int height, qreal scale, int width);

/// Inks what the mask covers, its ink's left top corner at (x, y).
void blendMask(const DeviceCanvas& canvas, std::int64_t x, std::int64_t y, const TextMask& mask, QRgb color);

} // namespace ormalux
