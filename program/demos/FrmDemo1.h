#pragma once
// FrmDemo1: the timing comparison: one column of times per container, and a chart of them.

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "program/demos/Growth.h"
#include "program/demos/TimingRun.h"
#include "program/demos/TimingTable.h"
#include "program/forms/Form.h"

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace zorvane {

class ChartPane;
class Label;
class TimingList;

class FrmDemo1 : public Form {
    Q_OBJECT
  public:
    explicit FrmDemo1(TimingRun::Clocks clocks = {});

    void Command1_Click() { RunContenders({Contender::Collection}); }
    void Command2_Click() { RunContenders({Contender::KeyList}); }
    void Command3_Click() { RunContenders({Contender::CollectionEx}); }
    void Command5_Click() { RunContenders({Contender::ZVCollection}); }
    void CloseBtn_Click();
    void CopyBtn_Click();
    void CopyPictureBtn_Click();
    void FineBox_Click();
    void MeasureBtn_Click();
    void OrderBtn_Click();
    void RunAllBtn_Click();
    void SaveBtn_Click();
    void SavePictureBtn_Click();
    // Enter in the box: what was run last, at first all four.
    void Text1_Enter();

  Q_SIGNALS:
    void OrderRequested();

  protected:
    void Form_Load() override;

  private:
    void AddToList(int row, int column);
    QPushButton* Button(const char* name, const QString& caption, const QString& toolTip,
                        void (FrmDemo1::*click)());
    void ClearColumn(int column);
    void LayOut();
    std::int32_t ReadCount();
    void Refresh();
    void RunContender(Contender contender);
    void RunContenders(const std::vector<Contender>& contenders);
    void Say(const Text& what, const QString& toolTip = {});
    void SaySavedAs(const std::optional<QString>& path);

    TimingRun::Clocks clocks_;
    std::optional<TimingRun> run_;  // from the load on
    TimingTable table_;
    Growth growth_;
    std::vector<Contender> lastRun_;
    Label* label1_;
    QLineEdit* text1_;
    Label* label2_;
    Label* lblStatus_;
    TimingList* list_;
    ChartPane* pane_;
    std::array<QPushButton*, kContenders.size()> contenders_{};
    QPushButton* runAllBtn_;
    QCheckBox* fineBox_;
    QPushButton* copyBtn_;
    QPushButton* saveBtn_;
    QPushButton* copyPictureBtn_;
    QPushButton* savePictureBtn_;
    QPushButton* orderBtn_;
    QPushButton* closeBtn_;
};

}  // namespace zorvane
