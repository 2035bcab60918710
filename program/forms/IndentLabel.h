#pragma once
// IndentLabel: a label whose wrapped lines begin below the first letter of their paragraph, not
// below the blanks before it.

#include "program/forms/Label.h"

namespace zorvane {

class IndentLabel : public Label {
    Q_OBJECT
  public:
    using Label::Label;

    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    // Calls with each paragraph's text and its place, from the left, in a label of that width;
    // gives the height of all.
    template <class Take>
    int LayOut(int width, Take take) const;
};

}  // namespace zorvane
