#pragma once

#include "color/ColorRows.h"
#include "platform/Types.h"

#include <QObject>

#include <functional>
#include <memory>
#include <string>

class CKestImage;
class CKestImage24;

namespace ormalux {

/// How a shape of a tool is drawn.
struct Stroke
{
    COLORREF color;
    int width = 1; ///< device pixels
    int style = 0; ///< 0 solid, 1 dash, 2 dot
};

/// Where a label stands unless that place is taken: left above its box, left below it, or in its left top
/// corner.
enum class LabelPlace
{
    Above,
    Below,
    Corner
};

/// What a tool sees of the window that shows the picture. All coordinates are pixels of the picture as seen.
/// Everything belongs to the application's thread, but the pictures handed out may be read by any.
class ToolHost : public QObject
{
    Q_OBJECT

public:
    using GrayOperation = std::function<void(CKestImage&)>;
    using ColorOperation = std::function<void(CKestImage24&)>;

    // The picture

    /// Both 0 without a picture.
    virtual CSize size() const = 0;
    virtual bool isColor() const = 0;
    /// A gray picture as it is, a colour picture as (R + G + B) / 3; previews are not in it. Never changed
    /// afterwards: a worker may go on reading it. Null without a picture.
    virtual std::shared_ptr<const CKestImage> grayPicture() = 0;
    /// A copy of a colour picture with padded rows, previews not in it; null for a gray one.
    virtual std::shared_ptr<const CKestImage24> colorPicture() = 0;
    /// The file that the picture was read from, when that is known.
    virtual std::string pictureFile() const = 0;
    /// The region of interest while it is shown, cut to the picture; else the whole picture. Right and bottom
    /// belong to it. (0, 0, -1, -1) without a picture.
    virtual CRect area() const = 0;

    // Trying and applying. On a colour picture color is run; when it is null, gray is tried on the gray form.

    /// Shows what an operation makes of the picture and leaves the picture itself alone; a later preview of
    /// any owner takes its place. False, with nothing shown, without a picture.
    virtual bool preview(const void* owner, const GrayOperation& gray, const ColorOperation& color,
                         ColorRows rows) = 0;
    /// Shows the picture again if the preview is the owner's.
    virtual void endPreview(const void* owner) = 0;
    /// Runs an operation on the picture. False, with the picture as it was, when there is none or when it is
    /// a colour picture and color is null.
    virtual bool apply(const GrayOperation& gray, const ColorOperation& color, ColorRows rows) = 0;

    // Drawings over the picture, on layers with a name; seen after repaint()

    virtual void clearLayer(const char* layer) = 0;
    virtual void addLine(const char* layer, POINT from, POINT to, Stroke stroke) = 0;
    virtual void addRectangle(const char* layer, const RECT& rect, Stroke stroke) = 0;
    virtual void addCross(const char* layer, POINT center, int arm, Stroke stroke) = 0;
    /// A short text about the rectangle. Labels do not cover each other; one without room is left out.
    virtual void addLabel(const char* layer, const RECT& rect, LabelPlace place, const std::string& text,
                          COLORREF color) = 0;
    virtual void repaint() = 0;
    /// Scrolls so that the rectangle can be seen.
    virtual void reveal(const RECT& rect) = 0;
    /// Lets the operator draw a line with the mouse; linePicked tells it.
    virtual void pickLine() = 0;
    /// The line is not wanted any more.
    virtual void cancelPick() {}
    /// Screen pixels that a pixel of the picture takes.
    virtual double zoom() const { return 1; }

Q_SIGNALS:
    /// Another picture, or none, or the picture's pixels have been changed.
    void pictureChanged();
    /// The region of interest is another one.
    void areaChanged();
    void zoomChanged();
    /// The operator clicked a pixel without dragging.
    void pixelClicked(int x, int y);
    void linePicked(int x1, int y1, int x2, int y2);
};

} // namespace ormalux
