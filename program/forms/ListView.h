#pragma once
// ListView: a list in report mode: columns under a header, rows of text.
//
// Rows count from 1; column 0 is the row's text, 1 and up are its sub-items. Typing searches the
// search column, Ctrl+C copies the selected rows, and the header may mark one column as sorted; the
// view itself never sorts.

#include <QElapsedTimer>
#include <QTreeView>
#include <optional>
#include <vector>

class QAction;

namespace zorvane {

class ListModel;

class ListView : public QTreeView {
    Q_OBJECT
  public:
    explicit ListView(QWidget* parent = nullptr);

    // Width in twips.
    void AddColumn(const QString& caption, float width, Qt::Alignment align = Qt::AlignLeft);
    void AddRow(const QStringList& cells);
    [[nodiscard]] QString Cell(int row, int column) const;
    void SetCell(int row, int column, const QString& text);
    void SetCellToolTip(int row, int column, const QString& text);
    [[nodiscard]] int ColumnCount() const;
    [[nodiscard]] int RowCount() const;
    // Replaces every row; 1,000 rows cost about a millisecond. What was selected
    // and current stays so as far as there are rows with the same text in the column `key`.
    void SetRows(std::vector<QStringList> rows, int key = 0);
    // The column that typing searches.
    void SetSearchColumn(int column) noexcept { searchColumn_ = column; }
    // What is typed next begins a new word.
    void ForgetTyped() { typed_.clear(); }
    // The column that the header marks as ordered; none unmarks.
    void SetSortColumn(std::optional<int> column, bool descending = false);
    [[nodiscard]] std::optional<int> SortColumn() const noexcept { return sortColumn_; }
    [[nodiscard]] bool SortDescending() const noexcept { return sortDescending_; }

    // Rows as lines of tab-separated cells, the header first on request; all rows, or the selected
    // ones.
    enum class Rows { All, Selected };
    [[nodiscard]] QString AsText(Rows which, bool withHeader) const;
    [[nodiscard]] QString AsHtml(Rows which, bool withHeader) const;
    // Puts both forms onto the clipboard; nothing when there is nothing to copy.
    void Copy(Rows which, bool withHeader) const;

    void keyboardSearch(const QString& search) override;

  Q_SIGNALS:
    void ColumnClick(int column);

  private:
    bool Find(const QString& start, int ahead);
    [[nodiscard]] std::vector<QStringList> Lines(Rows which, bool withHeader) const;

    ListModel* model_;
    QElapsedTimer lastTyped_;
    QString typed_;
    int searchColumn_ = 0;
    std::optional<int> sortColumn_;
    bool sortDescending_ = false;
};

}  // namespace zorvane
