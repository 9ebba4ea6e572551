// core/screens/program_icon.cpp — draws the icon: an open register.
#include "core/screens/program_icon.h"

#include <QPainter>
#include <QPixmap>

namespace orvan {

namespace {

// On a square of 16 units.
void drawRegister(QPainter& painter) {
    painter.setPen(QPen(QColor(0x1F, 0x3A, 0x5F), 1));
    painter.setBrush(QColor(0x2E, 0x6D, 0xA4));
    painter.drawRoundedRect(QRectF(1, 2, 14, 12), 1.5, 1.5);
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(2.5, 3.5, 5, 9));
    painter.drawRect(QRectF(8.5, 3.5, 5, 9));
    painter.setPen(QPen(QColor(0x7F, 0x9D, 0xB9), 0.7));
    for (const double line : {5.5, 7.5, 9.5}) {
        painter.drawLine(QPointF(3.5, line), QPointF(6.5, line));
        painter.drawLine(QPointF(9.5, line), QPointF(12.5, line));
    }
}

} // namespace

QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap picture(size, size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 16.0, size / 16.0);
        drawRegister(painter);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

} // namespace orvan
