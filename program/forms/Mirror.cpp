#include "program/forms/Mirror.h"

#include <QStyle>
#include <QWidget>

namespace zorvane {

void PlaceControl(QWidget* control, const QRect& fromTheLeft) {
    const QWidget* parent = control->parentWidget();
    control->setGeometry(
        QStyle::visualRect(parent->layoutDirection(), parent->rect(), fromTheLeft));
}

}  // namespace zorvane
