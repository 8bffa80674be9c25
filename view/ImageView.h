#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "view/DrawObjArray.h"

#include <QAbstractScrollArea>
#include <QImage>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

class CKestImage;
class CKestImage24;

using CView = QAbstractScrollArea;
using CRuntimeClass = const QMetaObject;

/// What a host registers to learn about mouse actions: four coordinates in image pixels and the window
/// concerned. The value returned is ignored.
using KestHostProc = long (*)(int, int, int, int, CWnd*);

/// The drawing tool that the next drag with the left button follows.
enum TOOL_DRAW_SHAPE : int
{
    TOOL_NONE = 0,
    TOOL_LINE = 1,
    TOOL_RECTANGLE = 2
};

/// How the rows of a raw buffer run: the bottom row first, as device-independent bitmaps have it, or the top
/// row.
enum
{
    BOTTOM_UP = 0,
    TOP_DOWN = 1
};

namespace ormalux {
enum class ColorRows;
struct Picture;
struct PictureOrigin;
struct ViewGeometry;
struct ViewState;
class ViewToolHost;
} // namespace ormalux

/// The scrolling view that shows one picture, 8-bit gray or 24-bit colour, with overlays, a region of
/// interest that the operator edits (the tracker) and rubber bands. A window makes it from its QMetaObject.
///
/// All coordinates are image pixels of the picture as seen: (0, 0) is its top left pixel, whatever the order
/// of the rows in the buffer. The exceptions are GetPixel and its siblings, which address the buffer.
///
/// The view belongs to the thread of the application. From another thread a host may set and edit images and
/// overlays and ask for painting (see GetLock), after CKestWnd::ParentThreadMode(1); zooming, the tracker and
/// everything else stay with the application's thread. Nothing throws.
class ORMALUXVIEW_API CKestView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit CKestView(QWidget* parent = nullptr);
    ~CKestView() override;

    // The picture (view/ImageViewPicture.cpp; what is read and written of it: view/ImageViewPixels.cpp).
    // Buffers have rows padded to 4 bytes. Setting one keeps the zoom and adapts the scroll bars; sizes that
    // make no picture, null buffers and too little memory leave none.

    /// A black picture in a new buffer. The fit zoom becomes the smaller ratio of client and picture, without
    /// a margin; the zoom stays.
    void CreateImage(int width, int height, int bit_count);
    /// A copy of the caller's buffer, bottom row first. Null leaves the view without a picture.
    void SetImagePtr(int width, int height, int bit_count, const unsigned char* bits);
    /// A copy of a 24-bit buffer: as it is when filter is 'O', else its plane 'R', 'G', 'B' or 'A' (the mean)
    /// as a gray picture; other letters give a black one.
    void SetImagePtr(int width, int height, int bit_count, const unsigned char* bits, char filter);
    /// Shows the caller's buffer, bottom row first, without copying. It must live while it is shown; the view
    /// never frees it.
    void SetImagePtrLink(int width, int height, int bit_count, unsigned char* bits);
    /// Copies of images, top row first. An image without pixels leaves the view without a picture.
    void SetImage(const CKestImage& image);
    void SetImage(const CKestImage24& image);
    /// Says how the rows of the present buffer run, BOTTOM_UP or TOP_DOWN; the buffer's bytes stay.
    void SetRowOrder(int order);
    int GetRowOrder() const;
    int GetWidth() const;
    int GetHeight() const;
    /// 8 or 24; pictures of other depths are held but not painted.
    int GetBitCount() const;
    /// The view's own buffer, not a copy; null without a picture.
    unsigned char* GetImagePtr();
    /// A new image that the caller deletes: the picture, or the part of the rectangle that lies inside it; a
    /// colour picture as (R + G + B) / 3. Empty without a picture.
    CKestImage* GetImage() const;
    CKestImage* GetImage(int x, int y, int w, int h) const;
    /// The same as a colour image with padded rows; empty when the view shows no colour picture.
    CKestImage24* GetImage24() const;
    CKestImage24* GetImage24(int x, int y, int w, int h) const;

    /// The byte at width x y + x of the buffer, 0 outside it. Deliberate: the width, not the padded row, is
    /// the row step.
    unsigned char GetPixel(int x, int y) const;
    void SetPixel(int x, int y, unsigned char value);
    /// The bytes b0, b1, b2 from offset stride x y + x of the buffer as b2 x 65536 + b1 x 256 + b0; 0 outside
    /// it. Deliberate: x is not multiplied by 3.
    unsigned long GetPixel24(int x, int y) const;
    /// Writes b0 = bits 16 to 23, b1 = bits 8 to 15, b2 = bits 0 to 7 at the same offset. Deliberate: the
    /// reverse of GetPixel24's order.
    void SetPixel24(int x, int y, unsigned long value);

    /// Reads an 8- or 24-bit BMP; a palette is not applied. The buffer holds the bottom row first. Shows the
    /// picture at the fit zoom. Returns 1, or 0 with the view as it was.
    int LoadImage(const char* path);
    /// Reads every kind of picture: files of 8 bits a pixel as gray levels without their palette, all others
    /// as colour. The buffer holds the top row first. Shows the picture at the fit zoom. Returns 1, or 0 with
    /// the view as it was.
    int LoadImageGdip(const char* path);
    /// Reads every kind of picture as people see it and as `ormalux info` reads it: palettes as their
    /// colours, gray where all of them are, upright as the camera noted; damaged files are refused. The
    /// buffer holds the top row first. Shows the picture at the fit zoom. Returns 1, or 0 with the view as it
    /// was; told, when given, then holds the fault, else what 8 bits of one page lost (view/PictureOrigin.h).
    int LoadPicture(const char* path, ormalux::PictureOrigin* told = nullptr);
    /// Writes the picture as a BMP of its depth. Returns 1, or 0 when there is none or it cannot be written.
    int SaveImage(const char* path) const;

    /// Runs an operation on the picture in place: gray on a gray picture (top-down, unpadded), color on a
    /// colour picture, whose rows have the step that the operation uses. A null function does nothing.
    /// Nothing is repainted. Returns whether an operation was run.
    bool EditImage(const std::function<void(CKestImage&)>& gray,
                   const std::function<void(CKestImage24&)>& color, ormalux::ColorRows rows);

    // Zoom and painting (view/ImageViewZoom.cpp, view/ImageViewPaint.cpp)

    /// The smaller ratio of client and picture less 0.1, centred; it stays so when the view is resized.
    void ZoomFitTo();
    /// Zooms in, to 25.0 at most.
    void ZoomPlus(float step = 0.5f);
    /// Zooms out; returns to the fit zoom, and never below it, as soon as the whole picture fits the client
    /// area.
    void ZoomMinus(float step = 0.5f);
    /// One device pixel for each pixel.
    void Zoom100();
    float GetZoom() const;
    float GetFitZoom() const;
    /// Paints the view at once, also when it is hidden and only its screen file is wanted.
    void ImageUpdate();
    /// Paints the client area as the screen shows it onto a painter.
    void OnDraw(CDC* dc);
    /// The client area as it is painted, without the tracker.
    QImage GetScreen();
    /// The next painting is written to the path as a BMP, overlays included, the tracker not; then the path
    /// is forgotten.
    void ScreenToFile(const CString& path);
    /// The image pixel of a point of the client area (the fraction is dropped) and back; both also outside
    /// the picture.
    CPoint DeviceToImage(const QPointF& device) const;
    CPoint ImageToDevice(int x, int y) const;
    /// While 1 no view of the process changes its scroll sizes.
    static void SetParentThreadMode(int mode);

    // Overlays, tools and the tracker (view/ImageView.cpp; Reveal: view/ImageViewZoom.cpp)

    CDrawObjArray& GetOverlays();
    void SetOverlayVisible(int visible);
    int IsOverlayVisible() const;
    /// The drawing tool of the next drag; it is none again afterwards.
    void Tool(TOOL_DRAW_SHAPE tool);
    int GetTool() const;
    void SetTrackerMode(int mode);
    int IsTrackerMode() const;
    /// Stores the rectangle as given; (0, 0, 0, 0) is none.
    void SetTrackerPosition(const CRect& rect);
    /// The rectangle with its corners in order.
    CRect GetTrackerRect() const;
    /// 0 makes the view deaf to buttons and the wheel; 1 is the initial state.
    void EnableMouseAction(int enable);
    /// Called with the tracker and the view's parent when the operator confirms the region.
    void RegConfirmTrackerProc(KestHostProc proc);
    /// Called with the anchor, the current point and the view while the left button drags.
    void RegMouseMoveProc(KestHostProc proc);
    /// Called with both ends and the view when the rubber band of a tool ends.
    void RegMouseUpProc(KestHostProc proc);

    /// Runs a command of the view: 3300 confirms the tracker, 3301 leaves the tracker mode, 3302 toggles the
    /// overlays, 3303 and 3304 save the region as an OCR or match source. False for any other number.
    bool SendCommand(int command);

    /// Shows the dialog of a tool command (6601 to 6604, 6610, 6633, 6701, 6702, 6709 to 6712); false for any
    /// other number.
    bool OpenTool(int command);
    /// Whether there is a tool behind the command.
    static bool HasTool(int command);
    /// Scrolls as little as it takes to see the rectangle, right and bottom included.
    void Reveal(const RECT& rect);

    /// Guards picture and overlays against the painting thread; taken by every member here. Hold it while
    /// using GetImagePtr or GetOverlays from another thread.
    std::recursive_mutex& GetLock() const;

Q_SIGNALS:
    /// The mouse is over a pixel: its gray level, or 0xRRGGBB. (-1, -1, 0) when it has left the picture. Told
    /// again when the picture moves or changes under a mouse that rests.
    void pixelHovered(int x, int y, unsigned int value);
    void trackerConfirmed(int left, int top, int right, int bottom);
    /// The operator or the host has changed the tracker or its mode.
    void trackerChanged();
    void zoomChanged(float zoom);
    /// Another picture is shown, or none.
    void imageChanged();
    /// An operation has changed the pixels of the picture, or a host has asked for painting.
    void imageEdited();
    /// The left button was pressed and released over a pixel without a drag.
    void pixelClicked(int x, int y);
    /// The rubber band of a drawing tool has ended.
    void rubberBandEnded(int x1, int y1, int x2, int y2);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    friend class ormalux::ViewToolHost;

    QSize clientSize() const;
    ormalux::ViewGeometry placement() const;
    void updateScrollSizes();
    void layOutBars();
    void scrollTo(QPoint position);
    void zoomedFrom(QSize oldShown, QPoint oldScroll);
    void zoomAbout(QPointF device, float step);
    void askOnce(std::atomic<bool>& asked, const std::function<void()>& action);
    void updateNow();
    void requestPaint();
    void replaced(const char* file = "");
    int show(const ormalux::Picture& picture, const char* path);
    void pictureChanged();
    void tellEdited();
    void composeFrame(QRect exposed);
    void paintFigures();
    void startDrag(QPointF device);
    void continueDrag(QPointF device);
    void endTrackerDrag();
    void endRubberBand();
    void chooseCursor(QPointF device);
    void hover(QPointF device, bool again = false);
    void moveTracker(const CRect& rect);
    void openMenu(QPoint globalPosition);

    std::unique_ptr<ormalux::ViewState> m;
};
