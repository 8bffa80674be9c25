#include "bench/Pictures.h"
#include "view/ImageView.h"

#include <QApplication>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <random>
#include <string>

namespace {

constexpr int pictureWidth = 4000;
constexpr int pictureHeight = 3000;
constexpr int screenWidth = 1920; // pixels of the screen that the view takes
constexpr int screenHeight = 1040;
int clientWidth = screenWidth; // the same in the view's coordinates
int clientHeight = screenHeight;

/// One line of the table: a state of the view, and the milliseconds that a repaint of it may take (0: none
/// set).
struct Row
{
    std::string name;
    double goal;
    std::function<void(CKestView&)> prepare;
};

void showPicture(CKestView& view, int bits)
{
    if (view.GetBitCount() == bits && view.GetWidth() == pictureWidth)
        return;
    const int rowBytes = pictureWidth * bits / 8; // a multiple of 4
    view.SetImagePtr(pictureWidth, pictureHeight, bits,
                     bench::naturalPicture(rowBytes, pictureHeight).data());
}

/// 0 is the zoom at which the picture fits.
void zoomTo(CKestView& view, float zoom)
{
    view.ZoomFitTo();
    if (zoom > 0)
        view.ZoomPlus(zoom - view.GetZoom());
    view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum() / 2);
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum() / 2);
}

/// Small shapes of the kinds of measurement results within the first width x height pixels of the picture.
void addShapes(CDrawObjArray& shapes, int count, int width, int height, bool texts)
{
    static constexpr COLORREF colors[] = {RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255), RGB(255, 255, 0)};
    std::mt19937 engine(7);
    for (int i = 0; i < count; ++i) {
        const int x = int(engine() % unsigned(width)), y = int(engine() % unsigned(height));
        const int w = 4 + int(engine() % 40), h = 4 + int(engine() % 40);
        const COLORREF color = colors[engine() % 4];
        switch (i % (texts ? 6 : 5)) {
        case 0:
            shapes.AddLine(x, y, x + w, y + h, 0, 1, color, "result");
            break;
        case 1:
            shapes.AddArrow(x, y, x + w, y + h, 8, 0, 1, color, "result");
            break;
        case 2:
            shapes.AddRectangle(x, y, x + w, y + h, 0, 1, color, "result");
            break;
        case 3:
            shapes.AddEllipse(x, y, x + w, y + h, 0, 1, color, "result");
            break;
        case 4:
            shapes.AddCrossLine(x, y, 5, 0, 1, color, "result");
            break;
        default:
            shapes.AddText(x, y, "98.7%", 12, color, "result");
        }
    }
}

Row pictureRow(int bits, float zoom)
{
    char name[80];
    if (zoom > 0)
        std::snprintf(name, sizeof name, "%d bits, zoom %.1f", bits, double(zoom));
    else
        std::snprintf(name, sizeof name, "%d bits, fitted", bits);
    const bool levels = bits == 8 && zoom >= 25;
    return {std::string(name) + (levels ? ", 3,234 gray levels" : ""), levels ? 5.0 : 3.0,
            [=](CKestView& view) {
                view.GetOverlays().RemoveAllGraphics();
                showPicture(view, bits);
                zoomTo(view, zoom);
            }};
}

Row shapeRow(const char* name, double goal, int count, float zoom, bool everyOne, bool texts)
{
    return {name, goal, [=](CKestView& view) {
                showPicture(view, 8);
                zoomTo(view, zoom);
                view.GetOverlays().RemoveAllGraphics();
                const double visible = double(clientWidth) / zoom * clientHeight / zoom;
                if (everyOne && zoom > 0) {
                    CDrawObjArray& shapes = view.GetOverlays();
                    addShapes(shapes, count, int(clientWidth / zoom), int(clientHeight / zoom), texts);
                    view.horizontalScrollBar()->setValue(0);
                    view.verticalScrollBar()->setValue(0);
                } else if (everyOne) {
                    addShapes(view.GetOverlays(), count, pictureWidth, pictureHeight, texts);
                } else {
                    // A hundredth of an area that reaches beyond the picture is visible.
                    addShapes(view.GetOverlays(), count, clientWidth * 10,
                              int(visible * 100 / (clientWidth * 10)), texts);
                }
            }};
}

std::vector<Row> table()
{
    std::vector<Row> rows;
    for (const int bits : {8, 24})
        for (const float zoom : {0.0f, 0.7f, 1.0f, 2.5f, 7.3f, 25.0f})
            rows.push_back(pictureRow(bits, zoom));
    rows.push_back(shapeRow("10,000 shapes without texts, fitted", 16, 10000, 0, true, false));
    rows.push_back(shapeRow("10,000 shapes, fitted", 16, 10000, 0, true, true));
    rows.push_back(shapeRow("10,000 shapes, zoom 1.0", 16, 10000, 1, true, true));
    rows.push_back(shapeRow("10,000 shapes, zoom 2.5", 16, 10000, 2.5f, true, true));
    rows.push_back(shapeRow("100,000 shapes, 1 % visible, zoom 1.0", 10, 100000, 1, false, true));
    rows.push_back(shapeRow("10,000 shapes, 3,234 gray levels", 0, 10000, 25, true, true));
    return rows;
}

} // namespace

/// ormalux_display_bench [TEXT [ROUNDS]]: the milliseconds of repainting a view, all the way to the window's
/// store, for the rows whose name contains TEXT.
int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const char* const filter = argc > 1 ? argv[1] : "";
    const int rounds = std::clamp(argc > 2 ? std::atoi(argv[2]) : 40, 3, 100000);
    CKestView view;
    const double scale = view.devicePixelRatioF();
    clientWidth = int(screenWidth / scale);
    clientHeight = int(screenHeight / scale);
    const QStyle* const style = view.style();
    const int bar = style->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, view.verticalScrollBar());
    view.resize(clientWidth + bar, clientHeight + bar);
    view.show();
    QApplication::processEvents();
    // The processor's time beside the clock's: on a busy machine the clock counts others' work too.
    char title[60];
    std::snprintf(title, sizeof title, "1920 x 1040 pixels at scale %.2g, 12 MP", scale);
    std::printf("%-44s %9s %9s %9s %7s\n", title, "best ms", "median", "cpu mean", "goal");
    for (const Row& row : table()) {
        if (row.name.find(filter) == std::string::npos)
            continue;
        row.prepare(view);
        QApplication::processEvents();
        std::vector<double> times;
        const std::clock_t cpuStart = std::clock();
        for (int round = 0; round < rounds; ++round) {
            const auto start = std::chrono::steady_clock::now();
            view.viewport()->repaint();
            const auto taken = std::chrono::steady_clock::now() - start;
            times.push_back(std::chrono::duration<double, std::milli>(taken).count());
        }
        const double cpu = 1000.0 * double(std::clock() - cpuStart) / CLOCKS_PER_SEC / rounds;
        std::ranges::sort(times);
        const double median = times[times.size() / 2];
        std::printf("%-44s %9.2f %9.2f %9.2f %7.1f%s\n", row.name.c_str(), times.front(), median, cpu,
                    row.goal, row.goal > 0 && median > row.goal ? "  *" : "");
        std::fflush(stdout);
    }
}
