#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "view/DrawObjArray.h"
#include "view/ImageView.h"

#include <QFrame>

#include <functional>
#include <memory>

class CKestImage;
class CKestImage24;

namespace ormalux {
struct PictureOrigin;
struct WindowState;
} // namespace ormalux

/// The window that a host places in its own dialog or frame to show a picture: one image view and above it a
/// strip of buttons with which an operator opens and saves pictures, zooms, sets a region of interest, turns,
/// filters and opens the tools.
///
/// Most members forward to the view (view/ImageView.h), which says more about each. Image coordinates are
/// pixels of the picture as seen: (0, 0) is its top left pixel. Paths and texts are UTF-8. Nothing throws.
///
/// The window belongs to the thread of the application, which makes and destroys it. Another thread may set,
/// read and edit pictures and overlays after ParentThreadMode(1), and read the tracker; zooming, the tracker
/// and what else only has an effect it may ask for too: that happens as soon as the window's thread comes
/// round to it, in order.
///
/// The keys Ctrl+O, Ctrl+S, Ctrl+1, Ctrl+0, Ctrl++, Ctrl+- and Ctrl+R run the button whose tip names them
/// while the focus is in the window and no shortcut of the host takes them.
class ORMALUXVIEW_API CKestWnd : public QFrame
{
    Q_OBJECT

public:
    /// Makes the view and the buttons; the strip of buttons is visible.
    explicit CKestWnd(QWidget* parent = nullptr);
    ~CKestWnd() override;

    /// The view inside; never null. Its signals report the mouse, the zoom, the tracker and the picture.
    CKestView* GetView() const;
    /// Replaces the view by one made from this class, which must be CKestView or derive from it and have an
    /// invokable constructor that takes the parent widget. Null, with the view kept, when that fails.
    CView* UserCreateView(CRuntimeClass* type);

    // The picture (view/ImageViewWndPicture.cpp). Buffers have rows padded to 4 bytes, bottom row first.

    /// A black picture. The fit zoom becomes the smaller ratio of client and picture; the zoom stays.
    void CreateImage(int width, int height, int bit_count);
    /// A copy of the caller's buffer. Null leaves no picture.
    void SetImagePtr(int width, int height, int bit_count, const unsigned char* bits);
    /// A copy of a 24-bit buffer: as it is when filter is 'O', else one plane of it as a gray picture.
    void SetImagePtr(int width, int height, int bit_count, const unsigned char* bits, char filter);
    /// Shows the caller's buffer without copying. It must live while it is shown and is never freed.
    void SetImagePtrLink(int width, int height, int bit_count, unsigned char* bits);
    /// Copies of images, which have the top row first.
    void SetImage(const CKestImage& image);
    void SetImage(const CKestImage24& image);
    /// Says how the rows of the present buffer run: BOTTOM_UP or TOP_DOWN. The bytes stay.
    void SetRowOrder(int order);
    int GetRowOrder() const;
    int GetWidth() const;
    int GetHeight() const;
    int GetBitCount() const;
    /// The view's own buffer, not a copy; null without a picture.
    unsigned char* GetImagePtr();
    /// A new image, top row first, which the caller deletes; a colour picture as (R + G + B) / 3.
    CKestImage* GetImage() const;
    CKestImage* GetImage(int x, int y, int w, int h) const;
    /// The same in colour; empty when the picture is gray.
    CKestImage24* GetImage24() const;
    CKestImage24* GetImage24(int x, int y, int w, int h) const;
    /// Bytes of the buffer at width x y + x, or, of three bytes each, at stride x y + x; 0 outside it.
    /// Deliberate: these offsets, and SetPixel24's reversed order of the bytes; callers rely on both.
    unsigned char GetPixel(int x, int y) const;
    void SetPixel(int x, int y, unsigned char value);
    unsigned long GetPixel24(int x, int y) const;
    void SetPixel24(int x, int y, unsigned long value);
    /// Reads a BMP. Returns 1, or 0 with the picture as it was.
    int LoadImage(const char* path);
    /// Reads every kind of picture that the system decodes. Returns 1, or 0 with the picture as it was.
    int LoadImageGdip(const char* path);
    /// Reads every kind of picture as people see it (CKestView::LoadPicture). Returns 1, or 0 with the
    /// picture as it was.
    int LoadPicture(const char* path, ormalux::PictureOrigin* told = nullptr);
    /// Writes the picture as a BMP. Returns 1, or 0 when there is none or it cannot be written.
    int SaveImage(const char* path) const;

    // The view (view/ImageViewWnd.cpp)

    void ZoomFitTo();
    void Zoom100();
    /// Zoom by 0.5.
    void ZoomPlus();
    void ZoomMinus();
    /// Paints the view at once.
    void ImageUpdate();
    /// The next painting of the view is written to the path as a BMP.
    void ScreenToFile(const CString& path);
    /// 0 makes the view deaf to the mouse.
    void EnableMouseAction(int enable);
    void RegConfirmTrackerProc(KestHostProc proc);
    void RegMouseMoveProc(KestHostProc proc);
    void RegMouseUpProc(KestHostProc proc);
    /// The region of interest that the operator edits while the mode is 1.
    void SetTrackerMode(int mode);
    void SetTrackerPosition(const CRect& rect);
    int IsTrackerMode() const;
    CRect GetTrackerRect() const;
    /// The drawing tool of the next drag with the left button; TOOL_NONE is none.
    void Tool(TOOL_DRAW_SHAPE tool);
    /// 1 shows the strip of buttons, anything else hides it.
    void ViewToolBar(int visible);
    int IsViewToolBar() const;
    /// While 1 no view of the process changes its scroll sizes: for hosts that drive windows from threads of
    /// their own.
    static void ParentThreadMode(int mode);

    // Overlays (view/ImageViewWndOverlays.cpp), see view/DrawObjArray.h. Adding paints nothing by itself.

    void AddLine(int x1, int y1, int x2, int y2, int style, int width, COLORREF color, const char* tag);
    void AddLine(CPoint from, CPoint to, int style, int width, COLORREF color, const char* tag);
    void AddArrow(int x1, int y1, int x2, int y2, int head, int style, int width, COLORREF color,
                  const char* tag);
    void AddArrow(CPoint from, CPoint to, int head, int style, int width, COLORREF color, const char* tag);
    void AddRectangle(int x1, int y1, int x2, int y2, int style, int width, COLORREF color, const char* tag);
    void AddRectangle(CRect rect, int style, int width, COLORREF color, const char* tag);
    void AddEllipse(int x1, int y1, int x2, int y2, int style, int width, COLORREF color, const char* tag);
    void AddEllipse(CRect rect, int style, int width, COLORREF color, const char* tag);
    void AddEllipse(CPoint center, int radius, int style, int width, COLORREF color, const char* tag);
    void AddCrossLine(int x, int y, int arm, int style, int width, COLORREF color, const char* tag);
    void AddCrossLine(CPoint center, int arm, int style, int width, COLORREF color, const char* tag);
    void AddText(int x, int y, const char* text, int size, COLORREF color, const char* tag);
    void AddText(CPoint at, const char* text, int size, COLORREF color, const char* tag);
    void AddLabel(const CRect& box, LABEL_PLACE place, const char* text, COLORREF color, const char* tag);
    /// Deliberate: adds nothing; callers rely on no polyline ever being drawn.
    void AddPolyline(POINT* points, int count, int style, int width, COLORREF color, const char* tag);
    void RemoveGraphics(const char* tag);
    void RemoveAllGraphics();

    // Processing (view/ImageViewWndPicture.cpp): the operation of the same name of CKestImage or, for a
    // colour picture, of CKestImage24, in place. Nothing is painted: call ImageUpdate. The Histo operations
    // exist for gray pictures only and leave others as they are.

    void Invert();
    void Rotate180();
    /// Quarter turns about the centre (width / 2, height / 2): the size stays.
    void Rotate90L();
    void Rotate90R();
    void RotateHorzFlip();
    void RotateVertFlip();
    void Rotate(int cx, int cy, float angle, unsigned char fill);
    void Offset(int dx, int dy);
    void Gamma(float gamma);
    void Light(long brightness, long contrast);
    void Erode();
    void Dilate();
    void OpenBox();
    void CloseBox();
    void Sharpen();
    void Blur();
    void Soften();
    void Gassian5x5();
    void Gassian3x3();
    void Emboss();
    void Edge();
    void Laplacian();
    void HistoEqualize();
    void HistoNormalize();
    void HistoRoot();
    void HistoLog();
    void HistoStretch();

    // Conversions of single colours (view/ImageViewWndColor.cpp), channels 0 to 255; color/ColorConversion.h
    // tells the formulas. From any thread.

    /// h in degrees, 0 <= h < 360; s and i in 0 to 1.
    static void RGBToHSI(unsigned char r, unsigned char g, unsigned char b, double* h, double* s, double* i);
    static void HSIToRGB(double h, double s, double i, unsigned char* r, unsigned char* g, unsigned char* b);
    static void RGBToCMYK(unsigned char r, unsigned char g, unsigned char b, unsigned char* c,
                          unsigned char* m, unsigned char* y, unsigned char* k);
    static void CMYKToRGB(unsigned char c, unsigned char m, unsigned char y, unsigned char k,
                          unsigned char* r, unsigned char* g, unsigned char* b);
    static unsigned char RGBToGray(unsigned char r, unsigned char g, unsigned char b);
    static void GrayToRGB(unsigned char gray, unsigned char* r, unsigned char* g, unsigned char* b);

    // Commands (view/ImageViewWndCommands.cpp)

    /// Runs a command by its number as its button or menu item does; the view's own commands, 3300 to 3304,
    /// too. False for an unknown number and from any other thread than the
    /// window's.
    bool SendCommand(int command);

    /// The host's own way of running commands: asked first for every one that a button, a menu item, a key or
    /// SendCommand runs; where it returns true the window does nothing more. Null takes it away.
    void SetCommandHandler(std::function<bool(int command)> handler);
    /// While false the button, menu items and key of a command are disabled, also where the window itself
    /// would allow it; SendCommand runs it all the same.
    void EnableCommand(int command, bool enable);
    /// What a button's tip says in place of the window's own text, which an empty one brings back.
    void SetCommandTip(int command, const QString& tip);

    // Sizes (view/ImageViewWnd.cpp)

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The operator has opened a picture, or saved it, through the buttons.
    void imageOpened(const QString& path);
    void imageSaved(const QString& path);
    /// A command was run, by the operator or by SendCommand.
    void commandSent(int command);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void adoptView(CKestView* view);
    void placeView();
    void showState();
    bool canSend(int command) const;
    bool hostRuns(int command) const;
    void onOwnThread(const std::function<void(CKestView&)>& action);
    bool edit(const std::function<void(CKestImage&)>& gray, const std::function<void(CKestImage24&)>& color,
              ormalux::ColorRows rows);

    std::unique_ptr<ormalux::WindowState> m;
};
