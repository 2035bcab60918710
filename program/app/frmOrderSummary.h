#pragma once
// frmOrderSummary: a complete order, to be copied, printed or saved, or to be gone over once more.

#include "program/app/Order.h"
#include "program/forms/Form.h"

class QPlainTextEdit;

namespace zorvane {

class Label;

class frmOrderSummary : public Form {
    Q_OBJECT
  public:
    explicit frmOrderSummary(const Order& order);

    // False while the buyer wants to go back to the form.
    [[nodiscard]] bool Finished() const noexcept { return finished_; }

    void BackBtn_Click();
    void CloseBtn_Click();
    void CopyBtn_Click();
    void PrintBtn_Click();
    void SaveBtn_Click();

  protected:
    bool Form_QueryUnload() override;

  private:
    void Keep(const Text& status);
    [[nodiscard]] QString SummaryText() const;

    QPlainTextEdit* text_;
    Label* status_;
    bool finished_ = true;
    bool kept_ = false;  // copied, printed or saved
};

}  // namespace zorvane
