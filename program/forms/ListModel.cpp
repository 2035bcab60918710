#include "program/forms/ListModel.h"

namespace zorvane {

void ListModel::AddColumn(Column column) {
    const int at = columnCount();
    beginInsertColumns({}, at, at);
    columns_.push_back(std::move(column));
    endInsertColumns();
}

void ListModel::AddRow(QStringList cells) {
    const int at = rowCount();
    beginInsertRows({}, at, at);
    rows_.push_back(std::move(cells));
    endInsertRows();
}

void ListModel::SetCell(int row, int column, const QString& text) {
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount()) return;
    QStringList& cells = rows_[static_cast<std::size_t>(row)];
    while (cells.size() <= column) cells.append(QString());
    cells[column] = text;
    const QModelIndex cell = index(row, column);
    Q_EMIT dataChanged(cell, cell);
}

void ListModel::SetRows(std::vector<QStringList> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    toolTips_.clear();
    endResetModel();
}

void ListModel::SetToolTip(int row, int column, const QString& text) {
    toolTips_[{row, column}] = text;
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole:
            return Cell(index.row(), index.column());
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(columns_[static_cast<std::size_t>(index.column())].Align |
                                       Qt::AlignVCenter);
        case Qt::ToolTipRole: {
            const auto found = toolTips_.find({index.row(), index.column()});
            return found == toolTips_.end() ? QVariant() : found->second;
        }
        default:
            return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    const Column& column = columns_[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) return column.Caption;
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(column.Align | Qt::AlignVCenter);
    return {};
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QString ListModel::Cell(int row, int column) const {
    if (row < 0 || row >= rowCount()) return {};
    return rows_[static_cast<std::size_t>(row)].value(column);
}

}  // namespace zorvane
