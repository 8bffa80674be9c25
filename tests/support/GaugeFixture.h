#pragma once

#include "tests/support/Random.h"
#include "tests/support/ToolFixture.h"
#include "tools/ResultTable.h"
#include "view/DrawObjArray.h"

#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QRadioButton>
#include <QSpinBox>
#include <QTemporaryDir>

#include <string>

namespace testing_support {

/// What the tests of the measuring tools share: a picture from every kind of source, and drawings compared
/// as they are painted.
class GaugeFixture : public ToolFixture
{
protected:
    enum Source
    {
        Memory,    ///< top row first
        BmpFile,   ///< bottom row first, rows padded
        DecodedPng ///< by the picture reader
    };
    static constexpr Source sources[] = {Memory, BmpFile, DecodedPng};

    void showFrom(Source source, const CKestImage& image)
    {
        if (source == Memory)
            return show(image);
        const std::string path = folder.filePath(source == BmpFile ? "p.bmp" : "p.png").toStdString();
        if (source == BmpFile) {
            EXPECT_TRUE(image.SaveImage(path.c_str()));
            EXPECT_TRUE(window.LoadImage(path.c_str()));
        } else {
            const auto pixels = image.view();
            const QImage png(pixels.pixels, pixels.width, pixels.height, pixels.stride,
                             QImage::Format_Grayscale8);
            EXPECT_TRUE(png.save(QString::fromStdString(path)));
            EXPECT_TRUE(window.LoadImageGdip(path.c_str()));
        }
        settle();
    }
    /// Smooth random hills with noise: edges of every contrast.
    static CKestImage hills(int width, int height, unsigned seed)
    {
        auto bytes = randomBytes(std::size_t(width) * std::size_t(height), seed);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                auto& byte = bytes[std::size_t(y) * std::size_t(width) + std::size_t(x)];
                const int wave = (x / 7 + y / 11) % 3 * 80;
                byte = std::uint8_t(wave + byte % 60);
            }
        CKestImage image;
        image.SetImagePtr(width, height, bytes.data());
        return image;
    }
    static ormalux::ResultTable* table(QDialog* dialog)
    {
        return control<ormalux::ResultTable>(dialog, "results");
    }
    static std::string csv(QDialog* dialog) { return ormalux::resultCsv(table(dialog)->results()); }
    static std::string message(QDialog* dialog)
    {
        const QLabel* const label = control<QLabel>(dialog, "message");
        return label->isVisible() ? label->text().toStdString() : std::string();
    }
    static void setLevel(QDialog* dialog, int level)
    {
        control<QCheckBox>(dialog, "autoThreshold")->setChecked(false);
        control<QSpinBox>(dialog, "threshold")->setValue(level);
    }
    static void choose(QDialog* dialog, const char* radio)
    {
        control<QRadioButton>(dialog, radio)->setChecked(true);
    }

    /// Drags with the left button between two pixels, as they are shown now.
    void dragPixels(CPoint from, CPoint to)
    {
        mouse(QEvent::MouseButtonPress, from);
        mouse(QEvent::MouseMove, to);
        mouse(QEvent::MouseButtonRelease, to);
        settle();
    }
    void clickPixel(int x, int y)
    {
        mouse(QEvent::MouseButtonPress, {x, y});
        mouse(QEvent::MouseButtonRelease, {x, y});
        settle();
    }
    void mouse(QEvent::Type type, CPoint pixel)
    {
        const CPoint corner = view->ImageToDevice(pixel.x, pixel.y);
        const CPoint next = view->ImageToDevice(pixel.x + 1, pixel.y + 1);
        const QPointF at((corner.x + next.x) / 2, (corner.y + next.y) / 2);
        const bool down = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, view->viewport()->mapToGlobal(at),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          down ? Qt::LeftButton : Qt::NoButton, {});
        QApplication::sendEvent(view->viewport(), &event);
    }

    /// Shapes as a list paints them.
    static QImage painted(CDrawObjArray& shapes, int width, int height, float zoom)
    {
        QImage canvas(int(float(width) * zoom) + 8, int(float(height) * zoom) + 8, QImage::Format_RGB32);
        canvas.fill(Qt::black);
        QPainter painter(&canvas);
        shapes.Draw(&painter, zoom, zoom, nullptr);
        return canvas;
    }
    void expectDrawn(CDrawObjArray& expected)
    {
        const CSize size(view->GetWidth(), view->GetHeight());
        EXPECT_EQ(view->GetOverlays().GetCount(), expected.GetCount());
        for (const float zoom : {0.37f, 1.0f, 4.5f, 12.0f})
            EXPECT_EQ(painted(view->GetOverlays(), size.cx, size.cy, zoom),
                      painted(expected, size.cx, size.cy, zoom))
                << zoom;
    }
    /// A cross and a frame around the pixel.
    static void addPoint(CDrawObjArray& shapes, int x, int y, int arm, int width, COLORREF color)
    {
        shapes.AddCrossLine(x, y, arm, 0, width, color, "");
        shapes.AddRectangle(x, y, x + 1, y + 1, 0, width, color, "");
    }

    QTemporaryDir folder;
};

} // namespace testing_support
