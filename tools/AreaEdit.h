#pragma once

#include "platform/Types.h"
#include "tools/ToolHost.h"

namespace ormalux {

// An operation on an area of an image alone: the area is cut out as an image of its own, changed, and put
// back, so that what lies around it has no part in the result. The area's right and bottom belong to it; it
// must lie inside the image. An operation that changes the size changes nothing, and neither does one for
// which there is too little memory.

void editArea(CKestImage& image, const RECT& area, const ToolHost::GrayOperation& operation);

/// stored says how the rows stand in the image's buffer, rows how the operation steps through them.
void editArea(CKestImage24& image, ColorRows stored, const RECT& area,
              const ToolHost::ColorOperation& operation, ColorRows rows);

/// Runs a gray operation on each channel of a colour image with unpadded rows, as on a gray image.
void editChannels(CKestImage24& image, const ToolHost::GrayOperation& operation);

} // namespace ormalux
