#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QString>

/// What the programs that walk through the dialogs do as an operator would. A control that is not there ends
/// the program with a message.
namespace operating {

/// Lets the window work for so long.
inline void settle(int milliseconds = 250)
{
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < milliseconds;)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

template <class Widget = QWidget>
Widget* find(QWidget* in, const char* name)
{
    auto* const found = in->findChild<Widget*>(QLatin1String(name));
    if (!found)
        qFatal("there is no %s", name);
    return found;
}

inline void click(QWidget* in, const char* button)
{
    find<QPushButton>(in, button)->click();
    settle();
}

} // namespace operating
