#pragma once
// FrmMainDemo: the main window, from which everything else is reached.

#include <array>
#include <cstdint>

#include "program/forms/Form.h"

class QPushButton;

namespace zorvane {

class Label;
class WrapButton;

class FrmMainDemo : public Form {
    Q_OBJECT
  public:
    FrmMainDemo();

    void CloseBtn_Click();
    // Kept: the pointer stays an hourglass; a window that is opened sets it back, or does not.
    void Command1_Click(std::int16_t Index);
    void OrderBtn_Click();

  protected:
    void Form_Load() override;
    void Form_Resize() override;

  private:
    void LayOut();
    void ShowNotice();
    void ShowPropBagDemo();

    Label* editLabel1_;
    std::array<WrapButton*, 3> command1_{};
    Label* label1_;
    Label* lblNotice_;  // why settings were not kept; hidden while they are
    QPushButton* orderBtn_;
    QPushButton* closeBtn_;
};

}  // namespace zorvane
