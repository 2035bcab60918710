#pragma once
// WrapButton: a push button whose caption wraps between words and keeps its line breaks.
//
// A caption that does not fit the button is painted in a smaller font rather than cut off.

#include <QPushButton>

namespace zorvane {

class WrapButton : public QPushButton {
    Q_OBJECT
  public:
    explicit WrapButton(QWidget* parent = nullptr);

    // The caption as assigned is text(); screen readers are told it without its line breaks.
    void SetCaption(const QString& caption);

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zorvane
