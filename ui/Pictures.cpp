#include "ui/Pictures.h"

#include <QPainter>
#include <QPainterPath>

#include <array>

namespace tarvessa::pictures {

namespace {

// Drawn on a square of this many units.
constexpr double canvas = 32.0;
constexpr std::array<int, 7> sizes = {16, 20, 24, 32, 48, 64, 128};

QIcon drawn(void (*draw)(QPainter&)) {
    QIcon icon;
    for (const int size : sizes) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / canvas, size / canvas);
        draw(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

void drawCheck(QPainter& painter) {
    painter.setPen(QPen(QColor(0x1B, 0x87, 0x3B), 5.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath mark(QPointF(6, 17));
    mark.lineTo(13, 24);
    mark.lineTo(26, 8);
    painter.drawPath(mark);
}

void drawError(QPainter& painter) {
    painter.setPen(QPen(QColor(0xC6, 0x28, 0x28), 5.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(8, 8), QPointF(24, 24));
    painter.drawLine(QPointF(24, 8), QPointF(8, 24));
}

void drawTrash(QPainter& painter) {
    const QColor metal(0xC6, 0x28, 0x28);
    painter.setPen(QPen(metal, 3.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(QPointF(5, 8), QPointF(27, 8));
    painter.drawPolyline(QPolygonF({{12, 7}, {13, 3}, {19, 3}, {20, 7}}));
    painter.drawPolyline(QPolygonF({{8, 9}, {10, 28}, {22, 28}, {24, 9}}));
    for (const int bar : {13, 19})
        painter.drawLine(QPointF(bar, 13), QPointF(bar, 24));
}

// A month's sheet with its rings and one day marked.
void drawCalendar(QPainter& painter) {
    painter.setPen(QPen(QColor(0x45, 0x5A, 0x64), 2.0));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(4, 6, 24, 22), 3, 3);
    painter.setBrush(QColor(0x1F, 0x4E, 0x79));
    painter.drawRect(QRectF(4, 6, 24, 6));
    painter.setPen(QPen(QColor(0x45, 0x5A, 0x64), 3.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(11, 4), QPointF(11, 8));
    painter.drawLine(QPointF(21, 4), QPointF(21, 8));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1F, 0x4E, 0x79));
    painter.drawRect(QRectF(17, 18, 6, 6));
    painter.setBrush(QColor(0x9A, 0xB3, 0xCC));
    painter.drawRect(QRectF(9, 18, 6, 6));
}

void drawPrinter(QPainter& painter) {
    painter.setPen(QPen(QColor(0x37, 0x47, 0x4F), 2.0));
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(9, 3, 14, 10));
    painter.setBrush(QColor(0x90, 0xA4, 0xAE));
    painter.drawRoundedRect(QRectF(3, 12, 26, 12), 3, 3);
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(8, 19, 16, 10));
    painter.setPen(QPen(QColor(0x37, 0x47, 0x4F), 1.5));
    painter.drawLine(QPointF(11, 23), QPointF(21, 23));
    painter.drawLine(QPointF(11, 26), QPointF(18, 26));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1B, 0x87, 0x3B));
    painter.drawEllipse(QPointF(25, 16), 1.8, 1.8);
}

// A document with its settled mark, the same as packaging/icon/tarvessa.svg.
void drawApplication(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1F, 0x4E, 0x79));
    painter.drawRoundedRect(QRectF(1, 1, 30, 30), 6, 6);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(6, 4, 20, 24), 2, 2);
    painter.setPen(QPen(QColor(0x9A, 0xB3, 0xCC), 2.0, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(10, 9), QPointF(22, 9));
    painter.drawLine(QPointF(10, 13), QPointF(22, 13));
    painter.setPen(QPen(QColor(0x1B, 0x87, 0x3B), 3.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath mark(QPointF(10.5, 20.5));
    mark.lineTo(14.5, 24.5);
    mark.lineTo(22, 16.5);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(mark);
}

} // namespace

QIcon check() {
    return drawn(drawCheck);
}

QIcon error() {
    return drawn(drawError);
}

QIcon trash() {
    return drawn(drawTrash);
}

QIcon calendar() {
    return drawn(drawCalendar);
}

QIcon printer() {
    return drawn(drawPrinter);
}

QIcon application() {
    return drawn(drawApplication);
}

} // namespace tarvessa::pictures
