#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#ifndef _WIN32
using HBITMAP = const QImage&;
using HINSTANCE = void*;
#endif

/// Helpers that hosts and the library share. All static and safe to call from any thread unless said
/// otherwise. The drawing, clipboard and bitmap functions belong to the display module and need it to be
/// linked.
class CStdlib
{
public:
    /// The processors that this process may run on (its affinity), at least 1.
    ORMALUX_API static int GetNumOfProcessors();
    /// The instruction set that operations run with: "AVX-512", "AVX2", "SSE4.2" or "plain".
    ORMALUX_API static const char* GetInstructionSet();
    /// The folder of a module, without a trailing separator. Null means the processing module itself; else
    /// any address inside the module on systems without module handles. Empty when the module is not known.
    ORMALUX_API static CString GetInstancePath(void* instance);
    /// Euclidean distance, truncated: the squares are summed in double, the sum and its root rounded to
    /// float.
    ORMALUX_API static long Distance(int x1, int y1, int x2, int y2);
    ORMALUX_API static void Swap(int* a, int* b);
    ORMALUX_API static void Swap(long* a, long* b);

    // The display's (view/StdlibDisplay.cpp). Drawing does nothing without an active painter and leaves the
    // painter's state as it was; it belongs to the painter's thread.

    /// A solid line, one pixel wide or of the given width; both ends belong to it.
    ORMALUXVIEW_API static void DrawLine(CDC* dc, int x1, int y1, int x2, int y2, COLORREF color);
    ORMALUXVIEW_API static void DrawLine(CDC* dc, int x1, int y1, int x2, int y2, COLORREF color, int width);
    /// A solid rectangle outline through both corners.
    ORMALUXVIEW_API static void DrawRectLine(CDC* dc, int left, int top, int right, int bottom,
                                             COLORREF color, int width);
    /// One line of text in UTF-8 with its top left corner at the point. height is that of the letters in
    /// pixels (0: 12), weight 1 to 1000 (0: 400, 700 is bold), italic 0 or 1; a null or empty face is the
    /// display's own. Needs a QGuiApplication.
    ORMALUXVIEW_API static void DrawTextA(CDC* dc, int x, int y, const char* text, int height, int weight,
                                          int italic, COLORREF color, const char* face);
    /// Fills a rectangle; right and bottom do not belong to it.
    ORMALUXVIEW_API static void FillSolidRect(CDC* dc, const RECT& rect, COLORREF color);
    /// Fills a polygon, its outline included, by the even-odd rule.
    ORMALUXVIEW_API static void FillPolygon(CDC* dc, const POINT* points, int count, COLORREF color);
    /// A cross-hair at (x, y) across the rectangle (right and bottom do not belong to it), drawn by inverting
    /// every other pixel: drawing it twice erases it.
    ORMALUXVIEW_API static void DrawFocusCrossLine(CDC* dc, int left, int top, int right, int bottom, int x,
                                                   int y);
    /// Fills a rectangle (right and bottom do not belong to it) with colours that run from the top row's to
    /// the bottom row's.
    ORMALUXVIEW_API static void DrawGradationTB(CDC* dc, RECT rect, COLORREF top, COLORREF bottom);
    /// Draws a bitmap of 8 gray bits or 24 colour bits a pixel, bottom row first and rows padded to 4 bytes,
    /// into a rectangle (right and bottom do not belong to it) by nearest pixels.
    ORMALUXVIEW_API static void DrawBitmap(CDC* dc, CRect rect, unsigned char* bits, int width, int height,
                                           int bit_count);
    /// Writes the top left part of a bitmap, limited to its size, as a BMP file: 8 bits for a gray bitmap,
    /// else 24. A width or height of 0 means the whole. Returns 1, or 0 when the file cannot be written.
    ORMALUXVIEW_API static int BitmapToFile(const QImage& bitmap, const char* path, CSize size);
    /// Puts a text in UTF-8 on the clipboard for the window. Returns 1, or 0 without a clipboard. To be
    /// called from the application's own thread.
    ORMALUXVIEW_API static int CopyToClipboard(CWnd* owner, const CString& text);
};
