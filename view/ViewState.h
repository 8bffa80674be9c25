#pragma once

#include "view/ImageView.h"
#include "view/ViewGeometry.h"
#include "view/ViewImage.h"

#include <QPointer>

#include <mutex>

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
    mutable std::recursive_mutex lock; ///< guards image, overlays and screenFile
    ViewImage image;
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
    int wheelRest = 0; ///< turns of a fine wheel that make no step yet
    bool hovering = false;

    KestHostProc confirmProc = nullptr;
    KestHostProc moveProc = nullptr;
    KestHostProc upProc = nullptr;
    QPointer<QMenu> menu;
};

} // namespace ormalux
