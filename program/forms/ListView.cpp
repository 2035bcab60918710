#include "program/forms/ListView.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMimeData>
#include <QSet>
#include <algorithm>

#include "program/forms/ListModel.h"
#include "program/forms/Twips.h"

namespace zorvane {

ListView::ListView(QWidget* parent) : QTreeView(parent), model_(new ListModel(this)) {
    setModel(model_);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(false);
    header()->setSectionsClickable(true);
    header()->setHighlightSections(false);
    connect(header(), &QHeaderView::sectionClicked, this, [this](int column) {
        SetSortColumn(sortColumn_,
                      sortDescending_);  // the header has just moved or turned its mark by itself
        Q_EMIT ColumnClick(column);
    });

    auto* copy = new QAction(QStringLiteral("&Copy"), this);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, [this] { Copy(Rows::Selected, false); });
    auto* copyWithHeader = new QAction(QStringLiteral("Copy with &Headings"), this);
    connect(copyWithHeader, &QAction::triggered, this, [this] { Copy(Rows::Selected, true); });
    auto* selectAll = new QAction(QStringLiteral("Select &All"), this);
    selectAll->setShortcut(QKeySequence::SelectAll);
    selectAll->setShortcutContext(Qt::WidgetShortcut);
    connect(selectAll, &QAction::triggered, this, [this] { QTreeView::selectAll(); });
    addActions({copy, copyWithHeader, selectAll});
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void ListView::AddColumn(const QString& caption, float width, Qt::Alignment align) {
    model_->AddColumn({caption, align});
    header()->resizeSection(model_->columnCount() - 1, ToPixels(width));
}

void ListView::AddRow(const QStringList& cells) {
    model_->AddRow(cells);
}

QString ListView::Cell(int row, int column) const {
    return model_->Cell(row - 1, column);
}

void ListView::SetCell(int row, int column, const QString& text) {
    model_->SetCell(row - 1, column, text);
}

void ListView::SetCellToolTip(int row, int column, const QString& text) {
    model_->SetToolTip(row - 1, column, text);
}

int ListView::ColumnCount() const {
    return model_->columnCount();
}

int ListView::RowCount() const {
    return model_->rowCount();
}

void ListView::SetRows(std::vector<QStringList> rows, int key) {
    QSet<QString> selected;
    for (const QModelIndex& row : selectionModel()->selectedRows()) {
        selected.insert(Cell(row.row() + 1, key));
    }
    const QString current = Cell(currentIndex().row() + 1, key);
    model_->SetRows(std::move(rows));
    if (RowCount() > 0) setCurrentIndex(model_->index(0, 0));  // typing and arrows start at the top
    clearSelection();
    scrollToTop();
    if (selected.isEmpty()) return;
    QItemSelection again;
    for (int row = 0; row < RowCount(); ++row) {
        const QModelIndex at = model_->index(row, 0);
        const QString cell = Cell(row + 1, key);
        if (selected.contains(cell)) again.select(at, at);
        if (cell == current) selectionModel()->setCurrentIndex(at, QItemSelectionModel::NoUpdate);
    }
    using Flag = QItemSelectionModel::SelectionFlag;
    selectionModel()->select(again, Flag::ClearAndSelect | Flag::Rows);
    scrollTo(currentIndex(), PositionAtCenter);
}

void ListView::SetSortColumn(std::optional<int> column, bool descending) {
    sortColumn_ = column;
    sortDescending_ = descending;
    header()->setSortIndicatorShown(column.has_value());
    header()->setSortIndicator(column.value_or(-1),
                               descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

QString ListView::AsText(Rows which, bool withHeader) const {
    QString text;
    for (const QStringList& line : Lines(which, withHeader)) {
        text += line.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

QString ListView::AsHtml(Rows which, bool withHeader) const {
    QString html = QStringLiteral("<table>\n");
    bool heading = withHeader;
    for (const QStringList& line : Lines(which, withHeader)) {
        const QString tag = heading ? QStringLiteral("th") : QStringLiteral("td");
        html += QStringLiteral("<tr>");
        for (const QString& cell : line) {
            html += QStringLiteral("<%1>%2</%1>").arg(tag, cell.toHtmlEscaped());
        }
        html += QStringLiteral("</tr>\n");
        heading = false;
    }
    return html + QStringLiteral("</table>\n");
}

void ListView::Copy(Rows which, bool withHeader) const {
    if (which == Rows::Selected && !selectionModel()->hasSelection()) return;
    auto* both = new QMimeData;  // the clipboard takes it over
    both->setText(AsText(which, withHeader));
    both->setHtml(AsHtml(which, withHeader));
    QGuiApplication::clipboard()->setMimeData(both);
}

void ListView::keyboardSearch(const QString& search) {
    constexpr qint64 kPause = 1000;  // milliseconds after which a new word begins
    if (RowCount() == 0 || search.isEmpty()) return;
    if (!lastTyped_.isValid() || lastTyped_.elapsed() > kPause) typed_.clear();
    lastTyped_.start();
    typed_ += search;
    if (Find(typed_, typed_.size() == 1 ? 1 : 0)) return;
    // The same letter again and again walks through the rows that begin with it.
    if (typed_.count(search) == typed_.size()) Find(search, 1);
}

// Looks from `ahead` rows behind the current one, around the end and back to it.
bool ListView::Find(const QString& start, int ahead) {
    const int count = RowCount();
    const int current = std::max(0, currentIndex().row());
    for (int step = ahead; step <= count; ++step) {
        const int row = (current + step) % count;
        if (!model_->Cell(row, searchColumn_).startsWith(start, Qt::CaseInsensitive)) continue;
        setCurrentIndex(model_->index(row, 0));
        return true;
    }
    return false;
}

std::vector<QStringList> ListView::Lines(Rows which, bool withHeader) const {
    std::vector<QStringList> lines;
    const auto add = [&](auto&& cellAt) {
        QStringList line;
        for (int column = 0; column < ColumnCount(); ++column) line << cellAt(column);
        lines.push_back(line);
    };
    if (withHeader) {
        add([this](int column) {
            return model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        });
    }
    for (int row = 0; row < RowCount(); ++row) {
        if (which == Rows::Selected && !selectionModel()->isRowSelected(row, {})) continue;
        add([this, row](int column) { return model_->Cell(row, column); });
    }
    return lines;
}

}  // namespace zorvane
