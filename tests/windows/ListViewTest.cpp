#include "forms/ListView.h"

#include <QClipboard>
#include <QMimeData>

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
    EXPECT_EQ(list_.Cell(2, 1), "110");
    for (const auto& [row, column] : {std::pair{5, 1}, {0, 0}, {6, 0}, {1, 2}, {1, -1}}) {
        EXPECT_EQ(list_.Cell(row, column), QString()) << row << ", " << column;
    }
    list_.SetCell(5, 1, "set");
    list_.SetCell(9, 1, "nowhere");
    EXPECT_EQ(list_.Cell(5, 1), "set");
    list_.AddRow({"last", "7"});
    EXPECT_EQ(list_.Cell(6, 1), "7");
    EXPECT_NEAR(list_.ColumnWidth(0), 2500, 15) << "to the pixel";
}

TEST_F(ListViewTest, TypingFindsWordsAndARepeatedLetterWalks) {
    const struct {
        const char* what;
        int column;
        const char* typed;
        int row;
    } rows[] = {{"a word", 0, "br", 3},
                {"case does not matter", 0, "BETA", 2},
                {"a repeated letter walks on", 0, "bb", 3},
                {"digits that repeat are a number", 1, "11", 2},
                {"and go on", 1, "110", 2},
                {"nothing found stays", 0, "zz", 1}};
    for (const auto& [what, column, typed, row] : rows) {
        SCOPED_TRACE(what);
        list_.setCurrentIndex(list_.model()->index(0, 0));
        list_.SetSearchColumn(column);
        list_.ForgetTyped();
        QTest::keyClicks(&list_, typed);
        EXPECT_EQ(list_.currentIndex().row() + 1, row);
    }
}

TEST_F(ListViewTest, CopiesSelectedRowsAsTabbedTextAndTable) {
    QGuiApplication::clipboard()->setText("before");
    QTest::keyClick(&list_, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "before") << "nothing is selected";
    QTest::keyClick(&list_, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&list_, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              "alpha\t1\nbeta\t110\nBravo\t11\na<b\t10\nonly\t\n");
    list_.Copy(ListView::Rows::All, true);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("Name\tSize\nalpha"));
    const QString html = QGuiApplication::clipboard()->mimeData()->html();
    EXPECT_TRUE(html.contains("<th>Name</th>"));
    EXPECT_TRUE(html.contains("<td>a&lt;b</td>"));
}

TEST_F(ListViewTest, TheViewIsToldOfACellAndOnceOfNewRowsWhichHaveNoOldToolTips) {
    int told = 0, resets = 0;
    QObject::connect(list_.model(), &QAbstractItemModel::modelReset, [&] { ++resets; });
    QObject::connect(list_.model(), &QAbstractItemModel::rowsInserted, [&] { ++resets; });
    QObject::connect(list_.model(), &QAbstractItemModel::dataChanged, [&] { ++told; });
    list_.SetCell(1, 1, "2");
    EXPECT_EQ(told, 1);
    const auto toolTip = [&] { return list_.model()->index(0, 1).data(Qt::ToolTipRole); };
    list_.SetCellToolTip(1, 1, "tip");
    EXPECT_EQ(toolTip(), "tip");
    list_.SetRows({{"other", "1"}, {"another", "2"}, {"a third", "3"}});
    EXPECT_EQ(resets, 1) << "not for each row";
    EXPECT_TRUE(toolTip().isNull());
}

}  // namespace
}  // namespace zorvane::test
