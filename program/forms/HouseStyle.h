#pragma once
// HouseStyle: the desktop's style, with the toolkit's dialogs brought into line with our own forms.

#include <QProxyStyle>

namespace zorvane {

class HouseStyle : public QProxyStyle {
    Q_OBJECT
  public:
    // The name of the style that it follows in all else.
    explicit HouseStyle(const QString& name) : QProxyStyle(name) {}

    // A heading stands at the side of its cells, wherever the layout begins.
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    // A heading's mark points up where values ascend, towards the least.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    // A text runs as its own letters do, wherever the layout begins: the full stop stays at its
    // end.
    void drawItemText(QPainter* painter, const QRect& place, int flags, const QPalette& palette,
                      bool enabled, const QString& text, QPalette::ColorRole role) const override;
    // Buttons without pictures, and OK before Cancel.
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
};

}  // namespace zorvane
