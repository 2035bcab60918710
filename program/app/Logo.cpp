#include "program/app/Logo.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace zorvane {

void PaintLogo(QPainter& painter, double side) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.scale(side / 64, side / 64);

    QLinearGradient ground(0, 0, 64, 64);
    ground.setColorAt(0, QColor(0x1d, 0x4e, 0x89));
    ground.setColorAt(1, QColor(0x0b, 0x8a, 0x8f));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(1, 1, 62, 62), 13, 13);

    const QColor white(0xff, 0xff, 0xff);
    const QColor amber(0xff, 0xc8, 0x4a);
    const auto record = [&painter](double left, double top, double width, const QColor& colour) {
        painter.setBrush(colour);
        painter.drawRoundedRect(QRectF(left, top, width, 7), 3.5, 3.5);
    };
    record(14, 13, 36, white);
    record(14, 44, 36, white);
    QPainterPath slant;
    slant.moveTo(41, 20);
    slant.lineTo(50, 20);
    slant.lineTo(23, 44);
    slant.lineTo(14, 44);
    slant.closeSubpath();
    painter.setBrush(white);
    painter.drawPath(slant);
    record(14, 26, 11, amber);
    record(39, 31, 11, amber);
    painter.restore();
}

QIcon LogoIcon() {
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        PaintLogo(painter, side);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

LogoBox::LogoBox(QWidget* parent) : QWidget(parent) {
    setAccessibleName(QStringLiteral("Zorvane logo"));
}

void LogoBox::paintEvent(QPaintEvent*) {
    const double side = std::min(width(), height());
    QPainter painter(this);
    painter.translate((width() - side) / 2, (height() - side) / 2);
    PaintLogo(painter, side);
}

}  // namespace zorvane
