#include "program/forms/Label.h"

#include "program/forms/Strings.h"

namespace zorvane {

Label::Label(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

void Label::SetCaption(const Text& caption) {
    caption_ = caption;
    setText(ForDisplay(ToQString(caption)));
}

}  // namespace zorvane
