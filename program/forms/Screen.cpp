#include "program/forms/Screen.h"

#include <QCursor>
#include <QGuiApplication>

namespace zorvane {

Screen& Screen::The() {
    static Screen screen;
    return screen;
}

void Screen::SetMousePointer(Pointer value) {
    pointer_ = value;
    if (value == Pointer::Default) {
        while (QGuiApplication::overrideCursor()) QGuiApplication::restoreOverrideCursor();
        return;
    }
    const QCursor cursor(value == Pointer::Hourglass ? Qt::WaitCursor : Qt::ArrowCursor);
    if (QGuiApplication::overrideCursor()) {
        QGuiApplication::changeOverrideCursor(cursor);
    } else {
        QGuiApplication::setOverrideCursor(cursor);
    }
}

}  // namespace zorvane
