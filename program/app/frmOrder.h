#pragma once
// frmOrder: the order form: a box for each of a buyer's details, none of which may stay empty.

#include <array>

#include "program/app/Order.h"
#include "program/forms/Form.h"

class QLineEdit;
class QPushButton;

namespace zorvane {

class frmOrder : public Form {
    Q_OBJECT
  public:
    frmOrder();

    void CancelBtn_Click();
    void OkBtn_Click();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    [[nodiscard]] Order Entered() const;
    void ShowHints();

    std::array<QLineEdit*, Order::kFields.size()> boxes_{};
};

}  // namespace zorvane
