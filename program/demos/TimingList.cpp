#include "program/demos/TimingList.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QScrollBar>
#include <QStyleOptionHeader>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

#include "program/demos/TimingTable.h"
#include "program/forms/FontRecord.h"
#include "program/forms/Strings.h"
#include "program/forms/Twips.h"

namespace zorvane {
namespace {

// The stated columns are narrower than the longest caption: it may break behind a low line. A
// pointer that rests on a heading is told how many items its times stand for.
class TimingHeader : public QHeaderView {
  public:
    TimingHeader(const TimingTable& table, QWidget* parent)
        : QHeaderView(Qt::Horizontal, parent), table_(table) {
        setSectionsMovable(false);
        setHighlightSections(false);
        setMinimumSectionSize(1);
    }

  protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
        QHeaderView::initStyleOptionForIndex(option, section);
        option->text.replace(QLatin1Char('_'), QStringLiteral("_\u200B"));
        option->textAlignment |= static_cast<Qt::Alignment>(Qt::TextWordWrap);
        if (section > 0) option->textAlignment |= Qt::AlignAbsolute;  // as the numbers below it
    }
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override {
        const QSize one = QHeaderView::sectionSizeFromContents(section);
        return {one.width(), one.height() + fontMetrics().lineSpacing()};
    }
    bool viewportEvent(QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return QHeaderView::viewportEvent(event);
        const auto* help = static_cast<QHelpEvent*>(event);
        const int column = logicalIndexAt(help->pos());
        QToolTip::showText(help->globalPos(), ToQString(table_.ColumnToolTip(column)), this);
        return true;
    }

  private:
    const TimingTable& table_;
};

// Rows with a little air, so that fourteen of them can be told apart. Numbers read from left to
// right everywhere, or "0." would turn into ".0".
class TimingRows : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 4);
    }

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->direction != Qt::RightToLeft) return;
        option->direction = Qt::LeftToRight;
        if (index.column() == 0) option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
    }
};

}  // namespace

TimingList::TimingList(const TimingTable& table, QWidget* parent)
    : ListView(parent), table_(table) {
    setObjectName(QStringLiteral("LV"));
    setAccessibleName(QStringLiteral("Times of each container in seconds"));
    setFont(CompactFont(8.25));
    setHeader(new TimingHeader(table, this));
    setItemDelegate(new TimingRows(this));
}

void TimingList::Fill(int room) {
    for (int column = 0; column < TimingTable::kColumns; ++column) {
        AddColumn(ToQString(TimingTable::ColumnCaption(column)), TimingTable::ColumnWidth(column),
                  column == 0 ? Qt::AlignLeft : Qt::AlignRight);
    }
    for (int row = 1; row <= TimingTable::kRows; ++row) {
        AddRow({ToQString(TimingTable::Description(row))});
    }
    room_ = room;
    // On a small screen a third of the rows will do.
    setMinimumHeight(FullHeight() - TimingTable::kRows * 2 / 3 * sizeHintForRow(0));
    FitColumns();
}

int TimingList::FullHeight() const {
    return header()->sizeHint().height() + TimingTable::kRows * sizeHintForRow(0) +
           2 * frameWidth();
}

int TimingList::LeastWidth() const {
    return std::min(StatedWidth(true), room_);
}

void TimingList::ShowCell(int row, int column, bool finer) {
    SetCell(row, column,
            ToQString(finer ? table_.FinerShown(row, column) : table_.Shown(row, column)));
    SetCellToolTip(row, column, ToQString(table_.ToolTip(row, column)));
}

QSize TimingList::sizeHint() const {
    return {StatedWidth(Scrolled()), FullHeight()};
}

void TimingList::resizeEvent(QResizeEvent* event) {
    ListView::resizeEvent(event);
    FitColumns();
}

int TimingList::StatedWidth(bool scrolled) const {
    int width = 2 * frameWidth();
    for (int column = 0; column < TimingTable::kColumns; ++column) {
        width += ToPixels(TimingTable::ColumnWidth(column));
    }
    return scrolled ? width + verticalScrollBar()->sizeHint().width() : width;
}

void TimingList::FitColumns() {
    if (ColumnCount() == 0) return;
    const int stated = StatedWidth(Scrolled());
    setMinimumWidth(std::min(stated, room_));
    // Each as much as its part of what is left to give, so that no pixel is lost between them.
    int left = std::max(0, width() - stated);
    float twipsLeft = TimingTable::ColumnWidth(0);
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        twipsLeft += TimingTable::ColumnWidth(column);
    }
    for (int column = 0; column < TimingTable::kColumns; ++column) {
        const float twips = TimingTable::ColumnWidth(column);
        const int share = static_cast<int>(static_cast<float>(left) * twips / twipsLeft);
        left -= share;
        twipsLeft -= twips;
        header()->resizeSection(column, ToPixels(twips) + share);
    }
}

}  // namespace zorvane
