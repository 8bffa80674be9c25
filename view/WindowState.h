#pragma once

#include "view/ImageViewWnd.h"
#include "view/Toolbar.h"

#include <optional>

namespace ormalux {

/// All that a window remembers.
struct WindowState
{
    CKestView* view = nullptr; ///< a child of the window
    std::optional<Toolbar> toolbar;
    bool toolbarVisible = true;
};

} // namespace ormalux
