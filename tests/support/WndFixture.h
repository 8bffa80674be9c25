#pragma once

#include "image/VisionImage.h"
#include "tests/support/Random.h"
#include "view/DrawButton.h"
#include "view/ImageViewWnd.h"

#include <QApplication>
#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace testing_support {

/// A shown window of 800 x 600.
class WndFixture : public testing::Test
{
protected:
    WndFixture()
    {
        window.resize(800, 600);
        window.show();
        QApplication::processEvents();
    }

    /// Shows random pixels, top row first.
    void showGray(int width, int height)
    {
        pixels = randomBytes(std::size_t(width) * std::size_t(height), unsigned(width));
        CKestImage image;
        image.SetImagePtr(width, height, pixels.data());
        window.SetImage(image);
    }
    void showColor(int width, int height)
    {
        pixels = randomBytes(std::size_t((width * 24 + 31) / 32 * 4) * std::size_t(height), unsigned(width));
        window.SetImagePtr(width, height, 24, pixels.data());
    }

    CDrawButton2* button(int command)
    {
        return window.findChild<CDrawButton2*>(QStringLiteral("command_%1").arg(command));
    }
    QAction* item(int command)
    {
        return window.findChild<QAction*>(QStringLiteral("command_%1").arg(command));
    }
    void click(int command) { QTest::mouseClick(button(command), Qt::LeftButton); }

    static std::vector<unsigned char> bytesOf(CKestImage& image)
    {
        return {image.view().pixels, image.view().pixels + image.GetImageLen()};
    }
    /// The gray picture as seen, by rows.
    std::vector<unsigned char> seen() const
    {
        const std::unique_ptr<CKestImage> image(window.GetImage());
        return bytesOf(*image);
    }

    CKestWnd window;
    std::vector<std::uint8_t> pixels;
};

} // namespace testing_support
