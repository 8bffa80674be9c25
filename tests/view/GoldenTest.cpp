#include "tests/support/Golden.h"
#include "tests/support/ViewFixture.h"
#include "view/ViewPainter.h"
#include "view/XorFigures.h"

#include <vector>

namespace {

using ormalux::PixelSource;
using ormalux::ViewGeometry;
using ormalux::XorFigure;
using testing_support::expectGolden;
using testing_support::Likeness;

constexpr QRect everything(0, 0, 10000, 10000);

/// A gray ramp with a grid, or the same with a hue a quarter.
class Ramp
{
public:
    Ramp(int width, int height, int bits)
    {
        const int channels = bits / 8;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                for (int c = 0; c < channels; ++c) {
                    const int level = x % 10 == 0 || y % 10 == 0 ? 20 : 60 + 180 * (x + y) / (width + height);
                    const bool dim = channels == 3 && (c + 2 * x / width + 2 * (2 * y / height)) % 3 == 0;
                    m_bytes.push_back(std::uint8_t(dim ? level / 3 : level));
                }
        source = {m_bytes.data(), width, height, std::ptrdiff_t(width) * channels, bits};
    }
    PixelSource source;

private:
    std::vector<std::uint8_t> m_bytes;
};

ViewGeometry at(const PixelSource& picture, float zoom, QPoint scroll, QPoint center = {})
{
    return {zoom, center, scroll, QSize(picture.width, picture.height)};
}

/// A frame with a picture, as a view composes it.
QImage composed(const PixelSource& picture, const ViewGeometry& geometry, qreal scale = 1,
                CDrawObjArray* shapes = nullptr, QSize client = {180, 120})
{
    QImage frame;
    ormalux::prepareFrame(frame, client, scale);
    ormalux::paintPixels(frame, picture, geometry, everything);
    if (shapes)
        ormalux::paintOverlays(frame, *shapes, geometry);
    ormalux::paintLevels(frame, picture, geometry, everything);
    return frame;
}

void addEveryKind(CDrawObjArray& shapes, int style, int width)
{
    shapes.AddLine(4, 6, 50, 18, style, width, RGB(255, 60, 60), "");
    shapes.AddLine(50, 22, 4, 22, style, width, RGB(255, 160, 0), "");
    shapes.AddArrow(8, 60, 30, 30, 9, style, width, RGB(0, 255, 255), "");
    shapes.AddRectangle(40, 30, 64, 50, style, width, RGB(0, 255, 0), "");
    shapes.AddEllipse(42, 32, 62, 48, style, width, RGB(255, 255, 0), "");
    shapes.AddEllipse(70, 5, 75, 55, style, width, RGB(255, 0, 255), "");
    shapes.AddEllipse(20, 40, 130, 110, style, width, RGB(120, 200, 255), "");
    shapes.AddCrossLine(60, 12, 7, style, width, RGB(255, 255, 255), "");
    shapes.AddCrossLine(66, 12, 0, style, width, RGB(255, 255, 255), "");
}

} // namespace

TEST(Golden, Pictures)
{
    const Ramp gray(90, 60, 8);
    const Ramp color(90, 60, 24);
    expectGolden("gray_small_centred", composed(gray.source, at(gray.source, 0.7f, {}, {58, 39})),
                 Likeness::Same);
    expectGolden("color_2.5_scrolled", composed(color.source, at(color.source, 2.5f, {37, 12})),
                 Likeness::Same);
    expectGolden("color_end_beside", composed(color.source, at(color.source, 1.3f, {10, 5})), Likeness::Same);
    expectGolden("gray_1.5_fine", composed(gray.source, at(gray.source, 3.3f, {70, 50}), 1.5),
                 Likeness::Same);
}

TEST(Golden, Shapes)
{
    const Ramp gray(120, 80, 8);
    CDrawObjArray thin;
    addEveryKind(thin, 0, 1);
    expectGolden("shapes_thin", composed(gray.source, at(gray.source, 1.7f, {6, 3}), 1, &thin),
                 Likeness::Same);
    expectGolden("shapes_thin_far", composed(gray.source, at(gray.source, 13.0f, {400, 380}), 1, &thin),
                 Likeness::Same);
    CDrawObjArray wide;
    addEveryKind(wide, 0, 3);
    expectGolden("shapes_wide", composed(gray.source, at(gray.source, 1.7f, {6, 3}), 1, &wide),
                 Likeness::Nearly);
    CDrawObjArray dashed;
    addEveryKind(dashed, 1, 1);
    for (int style = 0; style <= 5; ++style)
        dashed.AddLine(5, 70 + style, 80, 70 + style, style, 1, RGB(0, 0, 255), "");
    expectGolden("shapes_dashed", composed(gray.source, at(gray.source, 1.7f, {6, 30}), 1, &dashed),
                 Likeness::Nearly);
    expectGolden("shapes_thin_scale_2", composed(gray.source, at(gray.source, 1.7f, {6, 3}), 2, &thin),
                 Likeness::Same);
}

TEST(Golden, LevelsAndTexts)
{
    const Ramp gray(40, 30, 8);
    expectGolden("levels", composed(gray.source, at(gray.source, 25, {212, 30})), Likeness::Texts);
    expectGolden("levels_scale_2", composed(gray.source, at(gray.source, 25, {212, 30}), 2), Likeness::Texts);
    CDrawObjArray texts;
    texts.AddText(3, 2, "양품 OK 98.7 %", 12, RGB(0, 255, 0), "");
    texts.AddText(3, 10, "불량 NG", 24, RGB(255, 60, 60), "");
    texts.AddText(-6, 24, "왼쪽에서 잘림", 16, RGB(255, 255, 0), "");
    const QImage written = composed(gray.source, at(gray.source, 3.5f, {}), 1, &texts);
    expectGolden("texts", written, Likeness::Texts);
    const QImage blank = composed(gray.source, at(gray.source, 3.5f, {}));
    EXPECT_FALSE(testing_support::isLike(written, blank, Likeness::Texts)) << "texts could go missing unseen";
}

TEST(Golden, InvertingFigures)
{
    const Ramp color(90, 60, 24);
    QImage frame = composed(color.source, at(color.source, 2, {}));
    ormalux::paintTracker(frame, {20, 15, 90, 70});
    ormalux::paintXor(frame, XorFigure::Line, {5, 110, 170, 40}, RGB(255, 0, 0));
    ormalux::paintXor(frame, XorFigure::Rectangle, {100, 50, 160, 100}, RGB(255, 0, 0));
    ormalux::paintXor(frame, XorFigure::FocusRectangle, {110, 10, 170, 40}, RGB(255, 255, 255));
    expectGolden("inverting", frame, Likeness::Nearly);
}

class GoldenView : public testing_support::ViewFixture
{
};

TEST_F(GoldenView, WhatADragShows)
{
    const Ramp gray(200, 140, 8);
    view->SetImagePtr(200, 140, 8, gray.source.bits);
    view->SetRowOrder(TOP_DOWN);
    view->ZoomFitTo();
    view->SetTrackerMode(1);
    view->SetTrackerPosition(CRect(30, 30, 80, 70));
    const CPoint grip = view->ImageToDevice(50, 50);
    press(QPointF(grip.x, grip.y));
    drag(QPointF(grip.x + 40, grip.y + 25));
    expectGolden("drag_tracker", seen(), Likeness::Nearly);
    release(QPointF(grip.x + 40, grip.y + 25));
    view->SetTrackerMode(0);
    view->Tool(TOOL_LINE);
    press({40, 200});
    drag({330, 90});
    expectGolden("drag_line", seen(), Likeness::Nearly);
}
