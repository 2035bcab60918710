#pragma once
// FrmThank: the closing window: thanks, a last way to the order form, and the end.

#include "program/forms/Form.h"

class QPushButton;

namespace zorvane {

class FrmThank : public Form {
    Q_OBJECT
  public:
    FrmThank();

    void CloseBtn_Click();
    void OrderBtn_Click();
};

}  // namespace zorvane
