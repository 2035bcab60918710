#include "program/forms/HouseStyle.h"

#include <QDialogButtonBox>
#include <QStyleOptionHeader>

namespace zorvane {

void HouseStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    const auto* heading = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (element != CE_HeaderLabel || !heading) {
        return QProxyStyle::drawControl(element, option, painter, widget);
    }
    QStyleOptionHeader mirrored(*heading);
    mirrored.textAlignment =
        visualAlignment(heading->direction, heading->textAlignment) | Qt::AlignAbsolute;
    QProxyStyle::drawControl(element, &mirrored, painter, widget);
}

void HouseStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    const auto* heading = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (element != PE_IndicatorHeaderArrow || !heading) {
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    QStyleOptionHeader turned(*heading);
    if (heading->sortIndicator == QStyleOptionHeader::SortDown) {
        turned.sortIndicator = QStyleOptionHeader::SortUp;
    } else if (heading->sortIndicator == QStyleOptionHeader::SortUp) {
        turned.sortIndicator = QStyleOptionHeader::SortDown;
    }
    QProxyStyle::drawPrimitive(element, &turned, painter, widget);
}

void HouseStyle::drawItemText(QPainter* painter, const QRect& place, int flags,
                              const QPalette& palette, bool enabled, const QString& text,
                              QPalette::ColorRole role) const {
    const int runs = text.isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
    QProxyStyle::drawItemText(painter, place, flags | runs, palette, enabled, text, role);
}

int HouseStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    if (hint == SH_DialogButtonLayout) return QDialogButtonBox::WinLayout;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

}  // namespace zorvane
