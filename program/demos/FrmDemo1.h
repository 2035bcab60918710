#pragma once
// FrmDemo1: the timing comparison: one column of times per container, and a chart of them.

#include <array>
#include <cstdint>
#include <optional>

#include "program/demos/TimingRun.h"
#include "program/demos/TimingTable.h"
#include "program/forms/Form.h"

class QLineEdit;
class QPushButton;

namespace zorvane {

class Label;
class ListView;
class TimingChart;

class FrmDemo1 : public Form {
    Q_OBJECT
  public:
    explicit FrmDemo1(TimingRun::Clocks clocks = {});

    void Command1_Click() { RunContender(Contender::Collection); }
    void Command2_Click() { RunContender(Contender::KeyList); }
    void Command3_Click() { RunContender(Contender::CollectionEx); }
    void Command5_Click() { RunContender(Contender::ZVCollection); }
    void CloseBtn_Click();
    void CopyBtn_Click();
    void OrderBtn_Click();
    void SaveBtn_Click();

  Q_SIGNALS:
    void OrderRequested();

  protected:
    void Form_Load() override;

  private:
    void AddToList(int row, int column, const Text& value);
    QPushButton* Button(const char* name, const QString& caption);
    void ClearColumn(int column);
    void LayOut();
    void Refresh();
    void RunContender(Contender contender);

    TimingRun::Clocks clocks_;
    std::optional<TimingRun> run_;  // from the load on
    TimingTable table_;
    Label* label1_;
    QLineEdit* text1_;
    Label* label2_;
    Label* lblStatus_;
    ListView* list_;
    TimingChart* chart_;
    std::array<QPushButton*, kContenders.size()> contenders_{};
    QPushButton* copyBtn_;
    QPushButton* saveBtn_;
    QPushButton* orderBtn_;
    QPushButton* closeBtn_;
};

}  // namespace zorvane
