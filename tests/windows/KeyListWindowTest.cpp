#include <QHeaderView>
#include <QPushButton>
#include <algorithm>

#include "demos/frmDemo0.h"
#include "forms/Label.h"
#include "forms/ListView.h"
#include "forms/Strings.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

class frmDemo0Test : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        window_ = MakeObject<frmDemo0>();
        ASSERT_TRUE(Shown(*window_));
        list_ = Control<ListView>(window_.Get(), "LV");
    }
    void TearDown() override {
        window_->Unload();
        window_ = nullptr;
        WindowTest::TearDown();
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

    Ref<frmDemo0> window_;
    ListView* list_ = nullptr;
};

TEST_F(frmDemo0Test, OpensWithAThousandRecordsInKeyOrder) {
    EXPECT_EQ(window_->Caption(), u"Zorvane - Class Code Generator Demonstration");
    EXPECT_EQ(list_->RowCount(), 1000);
    EXPECT_EQ(Keys().mid(0, 5),
              (QStringList{"String1", "String10", "String100", "String1000", "String101"}));
    EXPECT_TRUE(Ordered(1));
    EXPECT_EQ(list_->SortColumn(), 1) << "the mark in the header";
    EXPECT_EQ(list_->Cell(1, 0), "1");
    EXPECT_EQ(list_->Cell(1000, 0), "1000");
    EXPECT_EQ(list_->AsText(ListView::Rows::All, true).section('\n', 0, 0),
              "Index\tString Key\tVariant Item\tString Item\tLong Item");
    for (int row = 1; row <= 1000; ++row) {
        EXPECT_TRUE(list_->Cell(row, 2).startsWith("Variant")) << row;
        EXPECT_TRUE(list_->Cell(row, 3).startsWith("str")) << row;
        const int number = list_->Cell(row, 4).toInt();
        EXPECT_TRUE(number >= 1 && number <= 1001) << row;
    }
}

TEST_F(frmDemo0Test, DescriptionKeepsItsWordsAndLineBreaks) {
    EXPECT_EQ(Control<Label>(window_.Get(), "Label1")->Caption(),
              u"Demonstrates storage of Multiple data types in a single Sorted Key List with each "
              u"item using a common UNIQUE string KEY as the Primary Key. \r\n"
              u"This particular ZVKeyList demonstration stores Variant Data, String Data and Long "
              u"Data Types. You may have any number of Data Types in a ZVKeyList, ZVCollection, "
              u"ZVList or ZVQueue based Class Object.\r\n"
              u"The data in the List Class may be RESORTED using any of the Data Items.");
}

TEST_F(frmDemo0Test, EachButtonAndEachHeaderOrdersByItsColumnAndEndsTheHourglass) {
    QStringList records = Keys();
    records.sort();
    for (const bool byHeader : {false, true}) {
        for (const int button : {3, 2, 0, 1, 0}) {
            SCOPED_TRACE(testing::Message() << (byHeader ? "header " : "button ") << button);
            Screen::The().SetMousePointer(Pointer::Hourglass);
            if (byHeader) {
                ClickHeader(button + 1);
            } else {
                Click(Control(window_.Get(), "Command1", button));
            }
            const int column = button == 0 ? 1 : button + 1;
            EXPECT_TRUE(Ordered(column));
            EXPECT_EQ(list_->SortColumn(), column);
            EXPECT_EQ(list_->header()->sortIndicatorSection(), column);
            EXPECT_EQ(list_->header()->sortIndicatorOrder(), Qt::AscendingOrder);
            EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
            QStringList now = Keys();
            now.sort();
            EXPECT_EQ(now, records) << "no record lost, none twice";
        }
    }
}

TEST_F(frmDemo0Test, HeaderClicksGiveTheSameOrderAsTheButtonsTiesIncluded) {
    Click(Control(window_.Get(), "Command1", 3));
    const QStringList byButton = Keys();
    Click(Control(window_.Get(), "Command1", 0));
    ClickHeader(4);
    EXPECT_EQ(Keys(), byButton);
    ClickHeader(4);
    EXPECT_TRUE(Ordered(4)) << "a second click does not turn the order round";
    ClickHeader(0);
    EXPECT_EQ(list_->SortColumn(), 4) << "Index is no order of its own";
    EXPECT_EQ(list_->header()->sortIndicatorSection(), 4);
}

TEST_F(frmDemo0Test, MnemonicsSortAndTypingFindsInTheSortedColumn) {
    QTest::keyClick(window_.Get(), Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return list_->SortColumn() == 4; }));
    EXPECT_TRUE(Ordered(4));
    QTest::keyClick(window_.Get(), Qt::Key_K, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return list_->SortColumn() == 1; }));
    list_->setFocus();
    QTest::keyClicks(list_, "string77");
    EXPECT_EQ(list_->Cell(list_->currentIndex().row() + 1, 1), "String77");
}

TEST_F(frmDemo0Test, OrderIsAnnouncedAndEscapeCloses) {
    int announced = 0;
    QObject::connect(window_.Get(), &frmDemo0::OrderRequested, [&] { ++announced; });
    Click(Control(window_.Get(), "OrderBtn"));
    EXPECT_EQ(announced, 1);
    QTest::keyClick(list_, Qt::Key_Escape);
    EXPECT_FALSE(window_->Loaded());
}

TEST(KeyListDemoTest, FillRepeatsForTheSameGenerator) {
    std::array<KeyListDemo, 2> demos;
    for (KeyListDemo& demo : demos) {
        Random random;
        demo.Fill(random);
        ASSERT_EQ(demo.Count(), KeyListDemo::kRecords);
    }
    for (std::int32_t position = 1; position <= KeyListDemo::kRecords; ++position) {
        ASSERT_EQ(demos[0].RowAt(position), demos[1].RowAt(position)) << position;
    }
}

TEST(KeyListDemoTest, EveryOtherButtonOrdersByKey) {
    KeyListDemo demo;
    Random random;
    demo.Fill(random);
    for (const int button : {-1, 4, 99}) {
        demo.ReSort(3);
        demo.ReSort(button);
        EXPECT_EQ(demo.RowAt(2)[1], u"String10") << button;
        EXPECT_EQ(KeyListDemo::ColumnOfButton(button), 1);
    }
}

}  // namespace
}  // namespace zorvane::test
