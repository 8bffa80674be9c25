#include "view/ImageViewWnd.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>

// Every class of the display module, linked and used once.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CDrawObjArray shapes;
    shapes.AddLine(0, 5, 20, 5, 0, 1, RGB(255, 0, 0), "edge");
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    RECT clip{0, 0, 20, 10};
    shapes.Draw(&painter, 1.0f, 1.0f, &clip);
    painter.end();

    CKestWnd window;
    window.resize(400, 300);
    window.CreateImage(64, 48, 8);
    window.Invert();
    window.Zoom100();
    window.AddCrossLine(CPoint(10, 12), 0, 0, 1, RGB(0, 0, 255), "mark");
    const QImage screen = window.GetView()->GetScreen();
    const bool known = window.SendCommand(6618) && !window.SendCommand(1);
    const CView* const other = window.UserCreateView(&CKestView::staticMetaObject);
    const CPoint mark = window.GetView()->ImageToDevice(10, 12);
    std::printf("%06x %d %d %06x\n", picture.pixel(10, 5) & 0xffffff, known ? 1 : 0,
                window.GetView() == other ? 1 : 0, screen.pixel(mark.x, mark.y) & 0xffffff);
    return 0;
}
