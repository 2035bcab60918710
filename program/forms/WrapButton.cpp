#include "program/forms/WrapButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>

#include "program/forms/FitText.h"
#include "program/forms/Strings.h"

namespace zorvane {
namespace {

// Pixels between the style's contents rectangle and the caption.
constexpr int kInset = 6;
constexpr int kInsetAbove = 3;

// What is drawn: a line break in front would push the lines out of the middle.
QString Drawn(const QString& text) {
    const QString shown = ForDisplay(text);
    const bool breaks = shown.startsWith(QLatin1Char('\n'));
    return breaks ? shown.mid(1) : shown;
}

}  // namespace

WrapButton::WrapButton(QWidget* parent) : QPushButton(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
}

void WrapButton::SetCaption(const QString& caption) {
    setText(caption);
    setAccessibleName(QString(caption).remove(QLatin1Char('&')).simplified());
    updateGeometry();
}

QSize WrapButton::minimumSizeHint() const {
    return sizeHint();
}

QSize WrapButton::sizeHint() const {
    constexpr int kUsualWidth = 260;
    const QSize taken = WrappedSize(font(), Drawn(text()), kUsualWidth);
    return taken + QSize(4 * kInset, 3 * kInset);
}

void WrapButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);  // bevel and focus frame alone

    QRect box = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
    box.adjust(kInset, kInsetAbove, -kInset, -kInsetAbove);
    if (isDown()) {
        box.translate(style()->pixelMetric(QStyle::PM_ButtonShiftHorizontal, &option, this),
                      style()->pixelMetric(QStyle::PM_ButtonShiftVertical, &option, this));
    }
    const QString caption = Drawn(text());
    painter.setFont(FittingFont(font(), caption, box.size()));
    const bool underline = style()->styleHint(QStyle::SH_UnderlineShortcut, &option, this) != 0;
    const int flags = Qt::AlignCenter | Qt::TextWordWrap |
                      (underline ? Qt::TextShowMnemonic : Qt::TextHideMnemonic);
    style()->drawItemText(&painter, box, flags, option.palette, isEnabled(), caption,
                          QPalette::ButtonText);
}

}  // namespace zorvane
