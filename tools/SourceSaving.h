#pragma once

#include "tools/SourceFile.h"
#include "tools/ToolHost.h"

#include <optional>

class QWidget;

namespace ormalux {

/// Asks for the key and a file, and saves what the picture shows in a rectangle (right and bottom belong to
/// it; cut to the picture) as a match source, whole or not at all; says how that went in a message box. The
/// level is proposed when it is given, else the automatic one of the rectangle. The dialogs belong to parent
/// and are open when this returns: `CMatchSrcDlg` or `COcrSrcDlg`, then `sourceFile`, then `sourceMessage`.
void saveSource(ToolHost& host, const RECT& rect, SourceKind kind, std::optional<int> level, QWidget* parent);

} // namespace ormalux
