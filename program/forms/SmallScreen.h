#pragma once
// Windows on a screen that is smaller than they can be made.

#include <QSize>

class QWidget;

namespace zorvane {

// Lets a window shrink to `room`. What its layout cannot make that small is scrolled; a window that
// places its controls by itself sees to them as it is sized. Nothing where the room suffices.
void FitSmallScreen(QWidget& window, QSize room);

}  // namespace zorvane
