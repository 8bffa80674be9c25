#pragma once

#include "platform/Types.h"

class QColor;
class QFont;
class QPen;

namespace ormalux {

/// The display's face, in which Latin and Korean letters come from one font on every system.
inline constexpr const char* displayFace = "굴림";

/// The colour without transparency.
QColor toQColor(COLORREF color);

/// Whether a pen of this description draws a solid line one pixel wide.
bool isThinPen(int style, int width);

/// The process-wide pen of this description, made at the first request and kept while the process runs. style
/// is 0 to 5 as overlay shapes have it; a pen wider than one pixel is solid. Safe from any thread.
const QPen& cachedPen(int style, int width, COLORREF color);

/// The process-wide font whose letters are height device pixels high (0: 12; the sign does not count), of
/// normal weight and smoothed. An empty or null face is the display's. Safe from any thread.
const QFont& cachedFont(int height, const char* face = nullptr);

/// The height of a cached font's letters above the line that they stand on.
int fontAscent(int height);

} // namespace ormalux
