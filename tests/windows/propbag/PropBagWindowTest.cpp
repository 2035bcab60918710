#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include "forms/Label.h"
#include "tests/windows/propbag/PropBagFixture.h"

namespace zorvane::test {
namespace {

class frmDemo2Test : public PropBagTest {
  protected:
    static void Choose(frmDemo2* window, const char* item) {
        Control<QAction>(window, item)->trigger();
    }
};

FontRecord OddFont() {
    return {.Name = u"No Such Family",
            .Size = 13.75,
            .Weight = 700,
            .Bold = true,
            .Charset = 161,
            .Italic = true,
            .Strikethrough = true,
            .Underline = true};
}

TEST_F(frmDemo2Test, TextsStandAsTheyAreMeant) {
    const auto window = Open();
    EXPECT_EQ(Control<Label>(window.Get(), "Label1")->Caption(), Text(u"Form No : 1"));
    const QStringList lines = Control<QLabel>(window.Get(), "Label2")->text().split(u'\n');
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0],
              "Demonstrates use of Zorvane generated IZVPropertyBag Interface and ZVPropertyBag "
              "Objects to Persist Data to a Disk.");
    EXPECT_TRUE(lines[1].startsWith("  Z") && lines[1].contains("IZVPropertyBag"));
    EXPECT_EQ(lines[2],
              "  You may customize the Size, Position, Caption and Background Color of the form.");
    EXPECT_EQ(lines[3],
              "  When you close the Form, the current settings will be automatically stored in a "
              "ZVPropertyBag Class Object.");
    EXPECT_EQ(
        lines[4],
        "  When the application ends, the data in the ZVPropertyBag  Object will be persisted "
        "in a binary formatted file, and your settings will be re-instated in the next "
        "session for each Form .");
    EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
    Close(window);
}

TEST_F(frmDemo2Test, EveryPropertyComesBack) {
    auto window = Open();
    window->SetCaption(u"A caption of [*] my own\u00e9 \U0001F600");
    window->SetBackColor(0x00336699);
    window->SetForeColor(0x00FFEEDD);
    window->SetWindowFont(OddFont());
    window->SetLeft(1234.5F);
    window->SetTop(2345.25F);
    window->SetWidth(6543.75F);
    window->SetHeight(5432.125F);
    Close(window);

    session_ = PropBagSession();  // as the next start of the program
    window = Open();
    EXPECT_EQ(window->Caption(), Text(u"A caption of [*] my own\u00e9 \U0001F600"));
    EXPECT_EQ(window->BackColor(), 0x00336699U);
    EXPECT_EQ(window->ForeColor(), 0x00FFEEDDU);
    EXPECT_EQ(window->WindowFont(), OddFont());
    EXPECT_EQ(window->Left(), 1234.5F);
    EXPECT_EQ(window->Top(), 2345.25F);
    EXPECT_EQ(window->Width(), 6543.75F);
    EXPECT_EQ(window->Height(), 5432.125F);
    Close(window);
}

TEST_F(frmDemo2Test, PropertiesAreStoredUnderTheirNamesWithTheirTypes) {
    Close(Open());
    ZVPropertyBag bag;
    bag.SetContents(session_.Bag().Item(u"DemoZVPropertyBag1"));
    EXPECT_EQ(session_.Bag().ObjName(u"DemoZVPropertyBag1"), Text());
    const struct {
        const char16_t* name;
        VarType type;
    } properties[] = {
        {u"Left", VarType::Single},    {u"Top", VarType::Single},
        {u"Width", VarType::Single},   {u"Height", VarType::Single},
        {u"BackColor", VarType::Long}, {u"ForeColor", VarType::Long},
        {u"Caption", VarType::String}, {u"Font", VarType::ArrayFlag | VarType::Integer}};
    for (const auto& [name, type] : properties) {
        const Variant value = bag.Item(Text(name));
        EXPECT_EQ(value.Type(), type) << Text(name);
    }
    EXPECT_EQ(bag.Count(), 8);
    EXPECT_EQ(bag.ObjName(u"Font"), Text(u"Font"));
}

TEST_F(frmDemo2Test, AFontThatWasNeverChangedComesBackEqual) {
    Close(Open());
    const auto window = Open();
    EXPECT_EQ(window->WindowFont(), ProgramFont());
    Close(window);
}

TEST_F(frmDemo2Test, KeptAClosedWindowGivesItsNumberBack) {
    const auto first = Open();
    frmDemo2* second = Next(first.Get(), 2);
    frmDemo2* third = Next(second, 3);
    ASSERT_TRUE(second && third);
    second->Unload();
    EXPECT_EQ(session_.Counter, 2);
    EXPECT_EQ(OpenWindows().size(), 2U) << "the third stays when the one between is closed";
    Next(first.Get(), 3);
    std::vector<std::int32_t> numbers;
    for (const frmDemo2* window : OpenWindows()) numbers.push_back(window->Number());
    EXPECT_EQ(numbers, (std::vector<std::int32_t>{1, 3, 3}));
    Close(first);
    EXPECT_EQ(session_.Counter, 0);
    EXPECT_EQ(OpenWindows().size(), 0U);
    for (const char16_t* name :
         {u"DemoZVPropertyBag1", u"DemoZVPropertyBag2", u"DemoZVPropertyBag3"})
        EXPECT_EQ(session_.Bag().PropIsObject(Text(name)), false);
    EXPECT_EQ(session_.Bag().Count(), 3);
}

TEST_F(frmDemo2Test, TheNextWindowIsRestoredByItsOpenersNumber) {
    auto first = Open();
    frmDemo2* second = Next(first.Get(), 2);
    ASSERT_TRUE(second);
    second->SetCaption(u"Number two");
    second->SetBackColor(0x0000FF00);
    const float left = second->Left();
    Close(first);

    first = Open();
    second = Next(first.Get(), 2);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->Caption(), Text(u"Number two"));
    EXPECT_EQ(second->BackColor(), 0x0000FF00U);
    EXPECT_EQ(second->Left(), left);
    // Pressed again in window 1 it is window 2's state once more, under the next number; not
    // exactly on top of it.
    frmDemo2* third = Next(first.Get(), 3);
    ASSERT_TRUE(third);
    EXPECT_EQ(third->Caption(), Text(u"Number two"));
    EXPECT_NE(third->frameGeometry().topLeft(), second->frameGeometry().topLeft());
    Close(first);
}

TEST_F(frmDemo2Test, WindowsOpenedAnewStandSideBySide) {
    const auto first = Open();
    first->SetLeft(75);
    first->SetTop(75);
    EXPECT_TRUE(QTest::qWaitFor([&] { return first->FrameSettled(); }));
    frmDemo2* at = first.Get();
    for (std::int32_t number = 2; number <= 4 && at; ++number) at = Next(at, number);
    const std::vector<frmDemo2*> open = OpenWindows();
    ASSERT_EQ(open.size(), 4U);
    const QRect room = first->screen()->availableGeometry();
    if (room.width() > 2 * open[0]->frameGeometry().width() + 20) {
        EXPECT_FALSE(open[1]->frameGeometry().intersects(open[0]->frameGeometry()));
        EXPECT_TRUE(room.contains(open[1]->frameGeometry()));
    }
    for (const frmDemo2* one : open)
        for (const frmDemo2* other : open) {
            if (one == other) continue;
            EXPECT_NE(one->frameGeometry().topLeft(), other->frameGeometry().topLeft());
        }
    Close(first);
}

TEST_F(frmDemo2Test, MenuItemsAskAndApply) {
    const auto window = Open();
    dialogs_.ColourAnswer = 0x00112233;
    Choose(window.Get(), "mnuCustomBackColor");
    EXPECT_EQ(dialogs_.ColourShown, kButtonFace);
    EXPECT_EQ(window->BackColor(), 0x00112233U);

    dialogs_.FontAnswer = FontChoice{OddFont(), 0x00FFFFFF};
    Choose(window.Get(), "mnuCustomizeFont");
    EXPECT_EQ(window->ForeColor(), kButtonText) << "left as it was, it has not been chosen";
    window->SetWindowFont(ProgramFont());

    dialogs_.FontAnswer = FontChoice{OddFont(), 0x00FEDCBA};
    Choose(window.Get(), "mnuCustomizeFont");
    EXPECT_EQ(dialogs_.FontShown->Font, ProgramFont());
    EXPECT_EQ(dialogs_.FontShown->Colour, 0x00FFFFFFU) << "as it is seen on the dark background";
    for (const char* name : {"Label1", "Label2"}) {
        const auto* label = Control<QLabel>(window.Get(), name);
        EXPECT_EQ(label->font(), ToQFont(OddFont())) << name;
        EXPECT_EQ(FromQColor(label->palette().color(QPalette::WindowText)), 0x00FEDCBAU) << name;
    }

    dialogs_.Answer = QStringLiteral("Mine");
    Choose(window.Get(), "mnuCustomCaption");
    EXPECT_EQ(dialogs_.Asked.value(0), "Customize Caption");
    EXPECT_EQ(dialogs_.Asked.value(1), "Insert a new caption");
    EXPECT_EQ(window->windowTitle(), "Mine");
    Choose(window.Get(), "mnuFileExit");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(session_.Bag().Count(), 1);
}

TEST_F(frmDemo2Test, CancelledQuestionsChangeNothing) {
    const auto window = Open();
    const Text caption = window->Caption();
    for (const char* item : {"mnuCustomBackColor", "mnuCustomizeFont", "mnuCustomCaption"})
        Choose(window.Get(), item);
    dialogs_.Answer = QString();  // an empty answer is none
    Choose(window.Get(), "mnuCustomCaption");
    EXPECT_EQ(window->Caption(), caption);
    EXPECT_EQ(window->BackColor(), kButtonFace);
    EXPECT_EQ(window->WindowFont(), ProgramFont());
    Close(window);
}

// The dialogs as the toolkit shows them, answered by key.
class DialogKeysTest : public PropBagTest {
  protected:
    void SetUp() override { toolkits_.emplace(real_); }
    void TearDown() override { toolkits_.reset(); }

    Dialogs real_;
    std::optional<ScopedDialogs> toolkits_;
};

TEST_F(DialogKeysTest, EscapeEndsTheFontDialogAndEnterTakesTheFont) {
    const auto window = Open();
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        WhenModal<QDialog> dialog([key](QDialog& shown) {
            QTest::keyClick(shown.findChild<QLineEdit*>(), key);
            EXPECT_FALSE(shown.isVisible()) << "nothing happened, or an empty frame was left";
        });
        Control<QAction>(window.Get(), "mnuCustomizeFont")->trigger();
        EXPECT_TRUE(dialog.Done());
    }
    EXPECT_EQ(window->WindowFont(), ProgramFont());
    Close(window);
}

TEST_F(frmDemo2Test, TextStaysReadableWhereOnlyOneColourWasChosen) {
    constexpr OleColour kBlack = 0, kWhite = 0x00FFFFFF, kYellow = 0x0000FFFF;
    const struct {
        const char* what;
        bool dark;
        OleColour back, fore;
        bool readable;
    } cases[] = {
        {"nothing chosen, light", false, kButtonFace, kButtonText, true},
        {"nothing chosen, dark", true, kButtonFace, kButtonText, true},
        {"white background in a dark palette", true, kWhite, kButtonText, true},
        {"black background in a light palette", false, kBlack, kButtonText, true},
        {"black text in a dark palette", true, kButtonFace, kBlack, true},
        {"yellow text in a light palette", false, kButtonFace, kYellow, true},
        {"grey background", false, 0x00808080, kButtonText, true},
        {"both chosen alike: as wished", false, kYellow, kYellow, false},
    };
    const QPalette usual = QApplication::palette();
    const auto window = Open();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        QApplication::setPalette(c.dark ? QPalette(QColor(40, 40, 40))
                                        : QPalette(QColor(239, 239, 239)));
        QCoreApplication::sendPostedEvents();
        window->SetBackColor(c.back);
        window->SetForeColor(c.fore);
        const QColor back = window->grab().toImage().pixelColor(3, window->height() - 3);
        const QColor fore =
            Control<QLabel>(window.Get(), "Label2")->palette().color(QPalette::WindowText);
        EXPECT_EQ(Contrast(back, fore) >= 4.5, c.readable);
        EXPECT_EQ(window->BackColor(), c.back) << "what is stored stays";
        EXPECT_EQ(window->ForeColor(), c.fore);
    }
    QApplication::setPalette(usual);
    Close(window);
}

TEST_F(frmDemo2Test, ALargeFontIsScrolledAndCoversNothing) {
    const auto window = Open();
    for (const double size : {9.0, 36.0, 400.0}) {
        window->SetWindowFont({.Name = u"Liberation Sans", .Size = size});
        QCoreApplication::sendPostedEvents();
        const QRect explanation = Control<QScrollArea>(window.Get(), "Explanation")->geometry();
        const QRect number = Control(window.Get(), "Label1")->geometry();
        const QRect button = Control(window.Get(), "cmdShowNext")->geometry();
        EXPECT_FALSE(number.intersects(explanation)) << size;
        EXPECT_FALSE(button.intersects(explanation)) << size;
        EXPECT_GT(explanation.height(), 40) << size;
        auto* area = Control<QScrollArea>(window.Get(), "Explanation");
        EXPECT_EQ(area->verticalScrollBar()->maximum() > 0, size > 9) << size;
    }
    Close(window);
}

TEST_F(frmDemo2Test, WhereSettingsDoNotLastOneLineSaysSo) {
    auto window = Open();
    EXPECT_FALSE(Control<QLabel>(window.Get(), "Label3")->isVisible());
    Close(window);
    file_ = ToText(folder_.filePath(QStringLiteral("no folder/PropBag.dat")));
    window = Open();
    const auto* line = Control<QLabel>(window.Get(), "Label3");
    EXPECT_TRUE(line->isVisible());
    EXPECT_TRUE(line->text().contains("cannot be kept"));
    EXPECT_LE(line->fontMetrics().horizontalAdvance(line->text()), line->width()) << "one line";
    Close(window);
    EXPECT_EQ(dialogs_.Said.size(), 0U) << "nothing more is said";
}

TEST_F(frmDemo2Test, IsItsOwnParentAndIsNeverMadeByName) {
    const auto window = Open();
    EXPECT_EQ(window->ParentObject().AsObject().Get(), Ref<Object>(window).Get());
    EXPECT_EQ(window->ClassName(), Text());
    window->InitProperties();
    Close(window);
}

}  // namespace
}  // namespace zorvane::test
