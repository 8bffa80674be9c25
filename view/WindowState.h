#pragma once

#include "view/ImageViewWnd.h"
#include "view/Toolbar.h"

#include <functional>
#include <optional>
#include <set>

namespace ormalux {

/// All that a window remembers.
struct WindowState
{
    CKestView* view = nullptr; ///< a child of the window
    std::optional<Toolbar> toolbar;
    bool toolbarVisible = true;
    std::function<bool(int command)> handler; ///< the host's; may be null
    std::set<int> disabled;                   ///< commands that the host has switched off
};

} // namespace ormalux
