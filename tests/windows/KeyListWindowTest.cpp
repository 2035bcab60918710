#include <QHeaderView>
#include <QPushButton>
#include <algorithm>
#include <map>

#include "demos/frmDemo0.h"
#include "forms/Label.h"
#include "forms/ListView.h"
#include "forms/Strings.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class frmDemo0Test : public ShownWindowTest<frmDemo0> {
  protected:
    void SetUp() override {
        ShownWindowTest::SetUp();
        list_ = Control<ListView>(window_.Get(), "LV");
    }
    // Column 1 to 3 in text order, column 4 by number.
    [[nodiscard]] bool Ordered(int column) const {
        for (int row = 2; row <= list_->RowCount(); ++row) {
            const QString before = list_->Cell(row - 1, column);
            const QString after = list_->Cell(row, column);
            if (column == 4 ? before.toInt() > after.toInt() : before > after) return false;
        }
        return true;
    }
    [[nodiscard]] QStringList Keys() const {
        QStringList keys;
        for (int row = 1; row <= list_->RowCount(); ++row) keys << list_->Cell(row, 1);
        return keys;
    }
    void ClickHeader(int column) const {
        const QHeaderView* header = list_->header();
        Click(header->viewport(), {header->sectionViewportPosition(column) + 20, 8});
    }

    ListView* list_ = nullptr;
};

TEST_F(frmDemo0Test, OpensWithAThousandRecordsInKeyOrder) {
    EXPECT_TRUE(Control<QLabel>(window_.Get(), "Label1")->text().contains("Primary Key. \n"));
    EXPECT_EQ(list_->AsText(ListView::Rows::All, true).section('\n', 0, 0),
              "Index\tString Key\tVariant Item\tString Item\tLong Item");
    ASSERT_EQ(list_->RowCount(), 1000);
    EXPECT_EQ(Keys().mid(0, 4), (QStringList{"String1", "String10", "String100", "String1000"}));
    EXPECT_TRUE(Ordered(1));
    EXPECT_EQ(list_->SortColumn(), 1) << "the mark in the header";
    for (int row = 1; row <= 1000; ++row) {
        EXPECT_EQ(list_->Cell(row, 0).toInt(), row);
        EXPECT_TRUE(list_->Cell(row, 2).startsWith("Variant")) << row;
        EXPECT_TRUE(list_->Cell(row, 3).startsWith("str")) << row;
        const int number = list_->Cell(row, 4).toInt();
        EXPECT_TRUE(number >= 1 && number <= 1001) << row;
    }
}

TEST_F(frmDemo0Test, EachButtonAndEachHeaderGivesTheSameOrderTiesIncluded) {
    const QStringList records = Keys();
    std::map<int, QStringList> byButton;
    for (const bool byHeader : {false, true}) {
        for (const int button : {3, 2, 0, 1, 0}) {
            SCOPED_TRACE(testing::Message() << (byHeader ? "header " : "button ") << button);
            Screen::The().SetMousePointer(Pointer::Hourglass);
            if (byHeader) {
                ClickHeader(button + 1);
                EXPECT_EQ(Keys(), byButton[button]);
            } else {
                Click(Control(window_.Get(), "Command1", button));
                byButton[button] = Keys();
            }
            EXPECT_TRUE(Ordered(button + 1));
            EXPECT_EQ(list_->SortColumn(), button + 1);
            EXPECT_EQ(list_->header()->sortIndicatorSection(), button + 1);
            EXPECT_EQ(list_->header()->sortIndicatorOrder(), Qt::AscendingOrder);
            EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
            QStringList now = Keys();
            now.sort();
            EXPECT_EQ(now, records) << "no record lost, none twice";
        }
    }
    Click(Control(window_.Get(), "Command1", 3));
    const QString least = list_->Cell(1, 4);
    ClickHeader(1);
    for (const bool again : {false, true, false}) {
        ClickHeader(4);
        EXPECT_EQ(list_->SortDescending(), again);
        EXPECT_EQ(list_->header()->sortIndicatorOrder() == Qt::DescendingOrder, again);
        EXPECT_EQ(Ordered(4), !again);
        EXPECT_EQ(list_->Cell(again ? 1000 : 1, 4), least);
    }
    ClickHeader(4);
    Click(Control(window_.Get(), "Command1", 3));
    EXPECT_TRUE(Ordered(4)) << "a button always begins with the least";
    ClickHeader(0);
    EXPECT_EQ(list_->SortColumn(), 4) << "Index is no order of its own";
    EXPECT_EQ(list_->header()->sortIndicatorSection(), 4);
}

TEST_F(frmDemo0Test, MnemonicsSortAndTypingFindsInTheSortedColumn) {
    for (const auto& [key, column] :
         {std::pair{Qt::Key_L, 4}, {Qt::Key_I, 2}, {Qt::Key_S, 3}, {Qt::Key_K, 1}}) {
        QTest::keyClick(window_.Get(), key, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&, to = column] { return list_->SortColumn() == to; }));
        EXPECT_TRUE(Ordered(column));
        list_->setFocus();
        list_->ForgetTyped();
        const QString typed = list_->Cell(500, column).toLower();
        QTest::keyClicks(list_, typed);
        EXPECT_TRUE(list_->Cell(list_->currentIndex().row() + 1, column)
                        .startsWith(typed, Qt::CaseInsensitive))
            << typed.toStdString();
    }
}

TEST_F(frmDemo0Test, OrderIsAnnouncedAndEscapeCloses) {
    int announced = 0;
    QObject::connect(window_.Get(), &frmDemo0::OrderRequested, [&] { ++announced; });
    Click(Control(window_.Get(), "OrderBtn"));
    EXPECT_EQ(announced, 1);
    QTest::keyClick(list_, Qt::Key_Escape);
    EXPECT_FALSE(window_->Loaded());
}

TEST(KeyListDemoTest, FillRepeatsForTheSameGeneratorAndEveryOtherButtonOrdersByKey) {
    std::array<KeyListDemo, 2> demos;
    for (KeyListDemo& demo : demos) {
        Random random;
        demo.Fill(random);
    }
    for (const int button : {-1, 4, 99}) {
        demos[0].ReSort(3);
        demos[0].ReSort(button);
        EXPECT_EQ(KeyListDemo::ColumnOfButton(button), 1);
        for (std::int32_t position = 1; position <= KeyListDemo::kRecords; ++position) {
            ASSERT_EQ(demos[0].RowAt(position), demos[1].RowAt(position)) << position;
        }
    }
}

}  // namespace
}  // namespace zorvane::test
