#pragma once

#include "tools/ToolBox.h"
#include "view/ImageView.h"
#include "view/ViewGeometry.h"
#include "view/ViewImage.h"
#include "view/ViewToolHost.h"

#include <QPointer>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

class QMenu;

namespace ormalux {

/// What the left button is dragging.
enum class Drag
{
    None,
    Idle,
    Pan,
    Tracker,
    RubberBand
};

/// The pixel under the pointer; none when x is -1.
struct HoveredPixel
{
    int x = -1;
    int y = -1;
    unsigned int value = 0;
    int bits = 0;

    bool operator==(const HoveredPixel&) const = default;
};

struct DragState
{
    Drag kind = Drag::None;
    int handle = -1; ///< 0 moves the tracker, 1 to 8 its handles, -1 draws a new one
    QPointF anchorDevice;
    CPoint anchorImage;
    CPoint currentImage;
    QPoint anchorScroll;
    CRect tracker; ///< the tracker as it would be now
    bool moved = false;
};

/// All that a view remembers.
struct ViewState
{
    mutable std::recursive_mutex lock; ///< guards image, preview, file, overlays, screenFile and tracker
    ViewImage image;
    std::unique_ptr<ViewImage> preview; ///< shown in the picture's place while a tool tries something
    std::string file;                   ///< that the picture was read from; empty once it was edited
    CDrawObjArray overlays;
    CString screenFile;

    float zoom = 1;
    float fitZoom = 1;
    bool fitAsked = false;      ///< ZoomFitTo chose the zoom: it follows the view's size
    QSize scrollSize{100, 100}; ///< until a picture or a zoom says otherwise
    bool overlayVisible = true;
    QImage frame; ///< what was painted last

    bool trackerMode = false;
    CRect tracker;
    int tool = TOOL_NONE;
    bool mouseEnabled = true;
    DragState drag;
    int wheelRest = 0;              ///< turns of a fine wheel that make no step yet
    std::optional<QPointF> pointer; ///< where the mouse is in the view
    HoveredPixel hovered;           ///< what was told last

    KestHostProc confirmProc = nullptr;
    KestHostProc moveProc = nullptr;
    KestHostProc upProc = nullptr;
    QPointer<QMenu> menu;

    /// What another thread has asked for and this one has not come round to.
    struct Asked
    {
        std::atomic<bool> update = false;
        std::atomic<bool> paint = false;
        std::atomic<bool> change = false;
        std::atomic<bool> edited = false;
    } asked;

    std::unique_ptr<ViewToolHost> toolHost; ///< before the tools, which use it to their end
    std::unique_ptr<ToolBox> tools;

    /// What is painted and read under the mouse: the preview while there is one of the picture's size.
    const ViewImage& shown() const
    {
        const bool fits = preview && preview->width() == image.width() && preview->height() == image.height();
        return fits ? *preview : image;
    }
};

} // namespace ormalux
