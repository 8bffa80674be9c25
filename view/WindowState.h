#pragma once

#include "view/ImageViewWnd.h"

#include <QPointer>

namespace ormalux {

/// All that a window remembers.
struct WindowState
{
    CKestView* view = nullptr; ///< a child of the window
    bool toolbarVisible = true;
};

} // namespace ormalux
