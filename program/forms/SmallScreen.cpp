#include "program/forms/SmallScreen.h"

#include <QLayout>
#include <QScrollArea>

namespace zorvane {

void FitSmallScreen(QWidget& window, QSize room) {
    const QSize least = window.minimumSize();
    if (least.boundedTo(room) == least || least == window.maximumSize()) return;
    window.setMinimumSize(least.boundedTo(room));
    if (!window.layout()) return;
    QWidget* focus = window.focusWidget();
    auto* body = new QWidget;
    body->setLayout(window.layout());  // the controls go along
    body->setMinimumSize(least);
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(body);
    auto* around = new QVBoxLayout(&window);
    around->setContentsMargins(0, 0, 0, 0);
    around->addWidget(area);
    if (focus) focus->setFocus();
}

}  // namespace zorvane
