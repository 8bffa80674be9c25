#pragma once

#include "color/ColorRows.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <functional>

class CKestImage;
class CKestImage24;

namespace ormalux {

using GrayEdit = std::function<void(CKestImage&)>;
using ColorEdit = std::function<void(CKestImage24&)>;

// An operation on an area of an image alone: the area is cut out as an image of its own, changed, and put
// back, so that what lies around it has no part in the result. The area's right and bottom belong to it; it
// must lie inside the image. An operation that changes the size changes nothing, and neither does one for
// which there is too little memory.

/// False when there is too little memory.
ORMALUX_API bool editArea(CKestImage& image, const RECT& area, const GrayEdit& operation);

/// stored says how the rows stand in the image's buffer, rows how the operation steps through them.
ORMALUX_API bool editArea(CKestImage24& image, ColorRows stored, const RECT& area, const ColorEdit& operation,
                          ColorRows rows);

/// Runs a gray operation on each channel of a colour image with unpadded rows, as on a gray image.
ORMALUX_API bool editChannels(CKestImage24& image, const GrayEdit& operation);

} // namespace ormalux
