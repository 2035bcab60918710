#pragma once
// ListModel: the cells of a report-style list, held as plain rows of text.

#include <QAbstractTableModel>
#include <QStringList>
#include <map>
#include <utility>
#include <vector>

namespace zorvane {

class ListModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    struct Column {
        QString Caption;
        Qt::Alignment Align;
    };

    using QAbstractTableModel::QAbstractTableModel;

    void AddColumn(Column column);
    void AddRow(QStringList cells);
    void SetCell(int row, int column, const QString& text);
    // All at once: the view is told a single time, whatever the number of rows.
    void SetRows(std::vector<QStringList> rows);
    void SetToolTip(int row, int column, const QString& text);

    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;

    // The cell's text; empty where the row has no such cell.
    [[nodiscard]] QString Cell(int row, int column) const;

  private:
    std::vector<Column> columns_;
    std::vector<QStringList> rows_;
    std::map<std::pair<int, int>, QString> toolTips_;
};

}  // namespace zorvane
