#include "program/forms/Label.h"

#include <QStyle>

#include "program/forms/Strings.h"

namespace zorvane {

Label::Label(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAlignment(alignment());
}

// The toolkit goes by the text's own direction, and ours reads from the left everywhere.
void Label::setAlignment(Qt::Alignment alignment) {
    QLabel::setAlignment(QStyle::visualAlignment(layoutDirection(), alignment) | Qt::AlignAbsolute);
}

void Label::SetCaption(const Text& caption) {
    caption_ = caption;
    setText(ForDisplay(ToQString(caption)));
}

}  // namespace zorvane
