#pragma once
// frmOrder: the order form: a box for each of a buyer's details, none of which may stay empty.

#include <array>

#include "program/app/Order.h"
#include "program/forms/Form.h"

class QLineEdit;
class QPushButton;

namespace zorvane {

class Label;

class frmOrder : public Form {
    Q_OBJECT
  public:
    frmOrder();

    void CancelBtn_Click();
    void OkBtn_Click();

  protected:
    bool Form_QueryUnload() override;
    void changeEvent(QEvent* event) override;

  private:
    [[nodiscard]] Order Entered() const;
    void ShowHints();
    void ShowRemark(std::size_t at);

    std::array<QLineEdit*, Order::kFields.size()> boxes_{};
    std::array<Label*, Order::kFields.size()> remarks_{};
    bool ordered_ = false;
};

}  // namespace zorvane
