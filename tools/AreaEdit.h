#pragma once

#include "platform/Types.h"
#include "tools/ToolHost.h"

namespace ormalux {

/// The operation on an area of a gray image alone: the area is cut out as an image of its own, changed, and
/// put back, so that what lies around it has no part in the result. The area's right and bottom belong to it;
/// it must lie inside the image. An operation that changes the size changes nothing.
void editArea(CKestImage& image, const RECT& area, const ToolHost::GrayOperation& operation);

} // namespace ormalux
