#include <algorithm>

#include "program/demos/frmDemo0.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class frmDemo0Test : public ShownWindowTest<frmDemo0> {
  protected:
    [[nodiscard]] QStringList Column(int column) const { return ColumnOf(*list_, column); }
    // Column 1 to 3 in text order, column 4 by number.
    [[nodiscard]] bool Ordered(int column) const {
        const QStringList cells = Column(column);
        return std::is_sorted(cells.begin(), cells.end(), [&](const auto& one, const auto& other) {
            return column == 4 ? one.toInt() < other.toInt() : one < other;
        });
    }
    void ClickHeader(int column) const {
        Click(header_->viewport(), {header_->sectionViewportPosition(column) + 20, 8});
    }

    ListView* list_ = At<ListView>("LV");
    QHeaderView* header_ = list_->header();
};

TEST_F(frmDemo0Test, OpensWithAThousandRecordsInKeyOrder) {
    EXPECT_TRUE(At<QLabel>("Label1")->text().contains("Primary Key. \n"));
    const QString text = list_->AsText(ListView::Rows::All, true);
    EXPECT_TRUE(text.startsWith("Index\tString Key\tVariant Item\tString Item\tLong Item\n"));
    ASSERT_EQ(list_->RowCount(), 1000);
    EXPECT_EQ(Column(1).mid(0, 4), (QStringList{"String1", "String10", "String100", "String1000"}));
    EXPECT_TRUE(Ordered(1));
    EXPECT_EQ(header_->sortIndicatorSection(), 1);
    const QRegularExpression record("^(\\d+)\tString\\d+\tVariant\\d+\tstr\\d+\t(\\d+)$");
    for (int row = 1; row <= 1000; ++row) {
        const auto found = record.match(text.section('\n', row, row));
        EXPECT_EQ(found.captured(1).toInt(), row);
        EXPECT_TRUE(found.captured(2).toInt() >= 1 && found.captured(2).toInt() <= 1001) << row;
    }
}

TEST_F(frmDemo0Test, EachMnemonicAndEachHeadingGivesTheSameOrderTiesIncluded) {
    const QStringList byKey = Column(1);
    for (const auto& [key, column] : {std::pair{Qt::Key_L, 4}, {Qt::Key_S, 3}, {Qt::Key_I, 2}}) {
        SCOPED_TRACE(column);
        QTest::keyClick(window_.Get(), key, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&, to = column] { return list_->SortColumn() == to; }));
        const QStringList sorted = Column(1);
        EXPECT_TRUE(Ordered(column));
        EXPECT_TRUE(std::is_permutation(byKey.begin(), byKey.end(), sorted.begin(), sorted.end()));
        EXPECT_EQ(header_->sortIndicatorSection(), column);
        EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
        list_->setFocus();
        const QString typed = list_->Cell(500, column).toLower();
        list_->ForgetTyped();
        QTest::keyClicks(list_, typed);
        const QString found = list_->Cell(list_->currentIndex().row() + 1, column);
        EXPECT_TRUE(found.startsWith(typed, Qt::CaseInsensitive)) << "sought in another column";

        Press("Command1", 0);
        EXPECT_TRUE(Column(1) == byKey);
        for (const bool descending : {false, true, false, true}) {
            ClickHeader(column);
            EXPECT_EQ(list_->SortDescending(), descending);
            EXPECT_EQ(header_->sortIndicatorOrder() == Qt::DescendingOrder, descending);
            EXPECT_EQ(Ordered(column), !descending);
        }
        Press("Command1", column - 1);
        EXPECT_TRUE(Ordered(column)) << "a button always begins with the least";
        Press("Command1", 0);
        ClickHeader(column);
        EXPECT_TRUE(Column(1) == sorted);
        Press("Command1", 0);
    }
    for (const bool byHeading : {true, false}) {
        window_->Command1_Click(3);
        byHeading ? ClickHeader(0) : window_->Command1_Click(4);
        EXPECT_TRUE(Column(1) == byKey) << "Index restores that, and there is no fifth button";
        EXPECT_EQ(header_->sortIndicatorSection(), 1);
    }
}

TEST_F(frmDemo0Test, WhatIsTypedNarrowsTheRowsAndTheirText) {
    QTest::keyClick(window_.Get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(window_->focusWidget(), "STRING99");
    window_->Command1_Click(4);
    const QStringList found{"String99",  "String990", "String991", "String992",
                            "String993", "String994", "String995", "String996",
                            "String997", "String998", "String999"};
    EXPECT_EQ(Column(1), found) << "a re-sort shows all, or 'string' is sought as it is typed";
    EXPECT_EQ(At<QLabel>("lblShown")->text(), "11 of 1000 records");
    EXPECT_EQ(list_->AsText(ListView::Rows::All, true).count('\n'), 12);
    QTest::keyClick(window_->focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(list_->RowCount(), 1000);
}

}  // namespace
}  // namespace zorvane::test
