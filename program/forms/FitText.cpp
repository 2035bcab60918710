#include "program/forms/FitText.h"

#include <QFontInfo>
#include <QFontMetrics>

namespace zorvane {

QSize WrappedSize(const QFont& font, const QString& text, int width) {
    constexpr int kEndless = 100000;
    constexpr int kFlags = Qt::AlignLeft | Qt::TextWordWrap | Qt::TextShowMnemonic;
    const QRect box = QFontMetrics(font).boundingRect(QRect(0, 0, width, kEndless), kFlags, text);
    return box.size();
}

QFont FittingFont(QFont font, const QString& text, QSize room, double least) {
    constexpr double kStep = 0.25;
    double points = QFontInfo(font).pointSizeF();
    for (;;) {
        const QSize taken = WrappedSize(font, text, room.width());
        if (taken.width() <= room.width() && taken.height() <= room.height()) return font;
        points -= kStep;
        if (points < least) return font;
        font.setPointSizeF(points);
    }
}

}  // namespace zorvane
