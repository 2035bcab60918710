#pragma once
// Label: plain text that wraps, with its caption kept as assigned.

#include <QLabel>

#include "zorvane/platform/Text.h"

namespace zorvane {

class Label : public QLabel {
    Q_OBJECT
  public:
    explicit Label(QWidget* parent = nullptr);

    [[nodiscard]] const Text& Caption() const noexcept { return caption_; }
    // Shown with each carriage return and line feed as one line break; never as rich text.
    void SetCaption(const Text& caption);
    // As in a layout from the left: in one from the right, left is right.
    void setAlignment(Qt::Alignment alignment);

  private:
    Text caption_;
};

}  // namespace zorvane
