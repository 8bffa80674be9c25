#include "view/DrawObjArray.h"

#include <QImage>
#include <QPainter>

#include <cstdio>

int main()
{
    CDrawObjArray shapes;
    shapes.AddLine(0, 5, 20, 5, 0, 1, RGB(255, 0, 0), "edge");
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    RECT clip{0, 0, 20, 10};
    shapes.Draw(&painter, 1.0f, 1.0f, &clip);
    painter.end();
    std::printf("%06x\n", picture.pixel(10, 5) & 0xffffff);
    return (picture.pixel(10, 5) & 0xffffff) == 0xff0000 ? 0 : 1;
}
