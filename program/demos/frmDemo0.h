#pragma once
// frmDemo0: the key-list demonstration: a thousand records in five columns, re-sorted on request.

#include <array>
#include <cstdint>
#include <optional>

#include "program/demos/KeyListDemo.h"
#include "program/forms/Form.h"

class QPushButton;

namespace zorvane {

class Label;
class ListView;

class frmDemo0 : public Form {
    Q_OBJECT
  public:
    frmDemo0();

    void CloseBtn_Click();
    void Command1_Click(std::int16_t Index) { ReSort(Index, false); }
    void OrderBtn_Click();

  Q_SIGNALS:
    void OrderRequested();

  protected:
    void Form_Load() override;

  private:
    KeyListDemo& Demo();  // created on first use, kept for the window's life
    void LayOut();
    void ReSort(int button, bool descending);
    void ShowList();

    std::optional<KeyListDemo> demo_;
    Label* description_;
    ListView* list_;
    std::array<QPushButton*, 4> command1_{};
    QPushButton* orderBtn_;
    QPushButton* closeBtn_;
};

}  // namespace zorvane
