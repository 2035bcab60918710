#pragma once
// Placing controls by numbers from the left, in a layout that may run from the right.

#include <QRect>

class QWidget;

namespace zorvane {

// Gives the control its place within its parent; the numbers are those of a layout from the left,
// and are mirrored where the parent's runs from the right.
void PlaceControl(QWidget* control, const QRect& fromTheLeft);

}  // namespace zorvane
