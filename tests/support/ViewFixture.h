#pragma once

#include "tests/support/Random.h"
#include "view/ImageView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace testing_support {

/// A shown view of 400 x 300 with the mouse, wheel and keys of an operator.
class ViewFixture : public testing::Test
{
protected:
    ViewFixture()
    {
        frame.resize(400, 300);
        QObject* const made = CKestView::staticMetaObject.newInstance(Q_ARG(QWidget*, &frame));
        view = qobject_cast<CKestView*>(made);
        view->setGeometry(0, 0, 400, 300);
        frame.show();
        QApplication::processEvents();
    }

    /// Shows random pixels; the bytes are those of the padded buffer, bottom row first.
    void showRandom(int width, int height, int bits)
    {
        bytes = randomBytes(std::size_t((width * bits + 31) / 32 * 4) * std::size_t(height),
                            unsigned(width + bits));
        view->SetImagePtr(width, height, bits, bytes.data());
    }

    void send(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons buttons,
              Qt::KeyboardModifiers keys = {})
    {
        QMouseEvent event(type, at, view->viewport()->mapToGlobal(at), button, buttons, keys);
        QApplication::sendEvent(view->viewport(), &event);
    }
    void press(QPointF at) { send(QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton); }
    void drag(QPointF to) { send(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton); }
    void release(QPointF at) { send(QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton); }
    void hover(QPointF at) { send(QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton); }
    void dragFromTo(QPointF from, QPointF to)
    {
        press(from);
        drag((from + to) / 2);
        drag(to);
        release(to);
    }
    void wheel(int turn, QPointF at = {50, 50}, Qt::KeyboardModifiers keys = {})
    {
        QWheelEvent event(at, view->viewport()->mapToGlobal(at), {}, {0, turn}, Qt::NoButton, keys,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(view->viewport(), &event);
    }
    void key(int code, Qt::KeyboardModifiers keys = {})
    {
        QKeyEvent event(QEvent::KeyPress, code, keys);
        QApplication::sendEvent(view, &event);
    }
    QPoint scroll() const
    {
        return {view->horizontalScrollBar()->value(), view->verticalScrollBar()->value()};
    }
    /// What the viewport shows, at the screen's own resolution.
    QImage seen() { return view->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    QWidget frame;
    CKestView* view = nullptr;
    std::vector<std::uint8_t> bytes;
};

} // namespace testing_support
