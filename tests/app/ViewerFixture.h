#pragma once

#include "app/MainWindow.h"
#include "view/ImageViewWnd.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace testing_support {

using ormalux::viewer::MainWindow;
using ormalux::viewer::Preferences;

/// The viewer's window with settings and files in a folder of its own, whose name is Korean.
class ViewerFixture : public testing::Test
{
protected:
    ViewerFixture()
    {
        QApplication::setOrganizationName("Ormalux");
        QApplication::setApplicationName("ormalux-view-test");
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        QDir(folder.path()).mkdir("검사 그림");
        QSettings().setValue("language", "ko"); // chosen before
        start();
    }

    /// As when the program is started again.
    void start()
    {
        viewer.reset();
        viewer = std::make_unique<MainWindow>(Preferences::read());
        viewer->setReporter([this](const QString& message) { reports << message; });
        viewer->resize(640, 480);
        viewer->show();
        viewer->activateWindow();
        QApplication::processEvents();
    }

    QString path(const QString& name) const { return folder.path() + "/검사 그림/" + name; }

    /// Colours that tell every pixel from its neighbours and every corner from the others.
    static QImage colors(int width, int height)
    {
        QImage image(width, height, QImage::Format_RGB888);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                image.setPixel(x, y, qRgb(x * 7 % 256, y * 11 % 256, (x + 3 * y) % 256));
        return image;
    }
    QString saved(const QImage& image, const QString& name) const
    {
        EXPECT_TRUE(image.save(path(name))) << qPrintable(name);
        return path(name);
    }
    QString written(const QByteArray& bytes, const QString& name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path(name);
    }

    CKestWnd& window() { return viewer->window(); }
    QAction* action(const QString& name) { return viewer->findChild<QAction*>(name); }
    /// A shortcut as an operator presses it.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(viewer.get(), key, modifiers);
        QApplication::processEvents();
    }
    /// Does something with the next modal window once it is there.
    template <typename Window>
    void withModal(std::function<void(Window&)> act)
    {
        QTimer::singleShot(10, viewer.get(), [this, act] {
            if (auto* const modal = qobject_cast<Window*>(QApplication::activeModalWidget()))
                act(*modal);
            else
                withModal(act);
        });
    }

    QTemporaryDir folder;
    QStringList reports;
    std::unique_ptr<MainWindow> viewer;
};

} // namespace testing_support
