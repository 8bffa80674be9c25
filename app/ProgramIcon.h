#pragma once

#include <QIcon>

namespace ormalux::viewer {

/// The program's icon at every size that windows and the about box show.
QIcon programIcon();

} // namespace ormalux::viewer
