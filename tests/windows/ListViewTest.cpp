#include "program/forms/ListView.h"

#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class ListViewTest : public WindowTest {
  protected:
    ListViewTest() {
        list_.AddColumn("Name", 2500);
        list_.AddColumn("Size", 1200, Qt::AlignRight);
        list_.SetRows({{"alpha", "1"}, {"beta", "110"}, {"Bravo", "11"}, {"a<b", "10"}, {"only"}});
        list_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&list_));
        list_.setFocus();
    }

    ListView list_;
};

TEST_F(ListViewTest, CellsCountFromOneAndMissingOnesAreEmpty) {
    list_.SetCell(5, 1, "set");
    list_.SetCell(9, 1, "nowhere");
    list_.AddRow({"last"});
    EXPECT_EQ(list_.columnWidth(0), 167) << "2500 twips";
    const std::tuple<int, int, const char*> rows[] = {
        {2, 1, "110"}, {5, 1, "set"}, {6, 0, "last"}, {6, 1, ""},
        {0, 0, ""},    {7, 0, ""},    {1, 2, ""},     {1, -1, ""},
    };
    for (const auto& [row, column, text] : rows) {
        EXPECT_EQ(list_.Cell(row, column), text) << row << ", " << column;
    }
}

TEST_F(ListViewTest, TypingFindsWordsAndARepeatedLetterWalks) {
    const std::tuple<const char*, int, const char*, int> rows[] = {
        {"a word", 0, "br", 3},
        {"case does not matter", 0, "BETA", 2},
        {"a letter leaves the row that it is on", 0, "a", 4},
        {"a repeated letter walks on", 0, "bb", 3},
        {"digits that repeat are a number", 1, "11", 2},
        {"nothing found stays", 0, "zz", 1},
    };
    for (const auto& [what, column, typed, row] : rows) {
        list_.setCurrentIndex(list_.model()->index(0, 0));
        list_.SetSearchColumn(column);
        list_.ForgetTyped();
        QTest::keyClicks(&list_, typed);
        EXPECT_EQ(list_.currentIndex().row() + 1, row) << what;
    }
}

TEST_F(ListViewTest, CopiesSelectedRowsAsTabbedTextAndTable) {
    const QClipboard* clipboard = QGuiApplication::clipboard();
    QGuiApplication::clipboard()->setText("before");
    QTest::keyClick(&list_, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard->text(), "before") << "nothing is selected";
    QTest::keyClick(&list_, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&list_, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard->text(), "alpha\t1\nbeta\t110\nBravo\t11\na<b\t10\nonly\t\n");
    list_.Copy(ListView::Rows::All, true);
    EXPECT_TRUE(clipboard->text().startsWith("Name\tSize\nalpha"));
    const QString html = clipboard->mimeData()->html();
    EXPECT_TRUE(html.contains("<th>Name</th>") && html.contains("<td>a&lt;b</td>"));
}

TEST_F(ListViewTest, TheViewIsToldOfACellAndOnceOfNewRowsWhichHaveNoOldToolTips) {
    const auto* model = list_.model();
    const QSignalSpy told(model, &QAbstractItemModel::dataChanged);
    const QSignalSpy inserted(model, &QAbstractItemModel::rowsInserted);
    const QSignalSpy reset(model, &QAbstractItemModel::modelReset);
    list_.SetCell(1, 1, "2");
    EXPECT_EQ(told.size(), 1);
    list_.SetCellToolTip(1, 1, "tip");
    EXPECT_EQ(model->index(0, 1).data(Qt::ToolTipRole), "tip");
    list_.SetRows({{"other", "1"}, {"another", "2"}, {"a third", "3"}});
    EXPECT_EQ(reset.size() + inserted.size(), 1) << "not for each row";
    EXPECT_TRUE(model->index(0, 1).data(Qt::ToolTipRole).isNull());
}

}  // namespace
}  // namespace zorvane::test
