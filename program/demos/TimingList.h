#pragma once
// TimingList: the table of the timing comparison on the screen: five columns, fourteen rows.
//
// The columns have their stated widths, and share what room there is beyond them. The list is never
// narrower than its columns, unless the screen is.

#include "program/forms/ListView.h"

namespace zorvane {

class TimingTable;

class TimingList : public ListView {
    Q_OBJECT
  public:
    explicit TimingList(const TimingTable& table, QWidget* parent = nullptr);

    // Adds the columns and the rows. `room`: the pixels that a window on this screen has for it.
    void Fill(int room);
    // With every row, and no scroll bar.
    [[nodiscard]] int FullHeight() const;
    // That it may ever ask for: its columns and a scroll bar beside them, or the room there is.
    [[nodiscard]] int LeastWidth() const;
    // Shows what the table holds for a cell: as stated, or with the finer clock's time.
    void ShowCell(int row, int column, bool finer);

    // Of all columns as stated, and of a scroll bar beside them.
    [[nodiscard]] int StatedWidth(bool scrolled) const;

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void FitColumns();
    [[nodiscard]] bool Scrolled() const { return height() < FullHeight(); }

    const TimingTable& table_;
    int room_ = 0;
};

}  // namespace zorvane
