#include "program/forms/SmallScreen.h"

#include <QLayout>
#include <QScrollArea>

namespace zorvane {

void FitSmallScreen(QWidget& window, QSize room) {
    QLayout* layout = window.layout();
    const QSize needed = layout ? layout->totalMinimumSize() : QSize(0, 0);
    const QSize least = window.minimumSize().expandedTo(needed);
    if (least.boundedTo(room) == least || window.minimumSize() == window.maximumSize()) return;
    window.setMinimumSize(least.boundedTo(room));
    if (!layout) return;
    QWidget* focus = window.focusWidget();
    auto* body = new QWidget;
    layout->setSizeConstraint(QLayout::SetDefaultConstraint);
    body->setLayout(layout);  // the controls go along
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
