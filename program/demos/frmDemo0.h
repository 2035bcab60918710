#pragma once
// frmDemo0: the key-list demonstration: a thousand records in five columns, re-sorted and
// narrowed on request.

#include <array>
#include <cstdint>
#include <optional>

#include "program/demos/KeyListDemo.h"
#include "program/forms/Form.h"

class QLineEdit;
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
    void SaveBtn_Click();
    // Only rows that hold this text in a cell beside their position are shown, in whatever case.
    void txtFind_Change();

  Q_SIGNALS:
    void OrderRequested();

  protected:
    void Form_Load() override;
    void Form_Unload() override;

    void keyPressEvent(QKeyEvent* event) override;

  private:
    KeyListDemo& Demo();  // created on first use, kept for the window's life
    void LayOut();
    void ReSort(int button, bool descending);
    void ShowCount(const Text& more = {});
    void ShowSaved(const QString& path);
    void ShowList();

    std::optional<KeyListDemo> demo_;
    Label* description_;
    QLineEdit* txtFind_;
    Label* shown_;  // how many
    ListView* list_;
    std::array<QPushButton*, 4> command1_{};
    QPushButton* saveBtn_;
    QPushButton* orderBtn_;
    QPushButton* closeBtn_;
};

}  // namespace zorvane
