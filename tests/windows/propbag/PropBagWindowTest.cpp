#include <sys/stat.h>

#include <QAction>
#include <QDir>
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
    return {u"No Such Family", 13.75, 700, true, 161, true, true, true};
}

TEST_F(frmDemo2Test, KeptBlanksStandInTheExplanation) {
    const auto window = Open();
    EXPECT_EQ(Control<Label>(window.Get(), "Label1")->Caption(), Text(u"Form No : 1"));
    const QStringList lines = Control<QLabel>(window.Get(), "Label2")->text().split(u'\n');
    ASSERT_EQ(lines.size(), 5);
    for (const QString& line : lines.mid(1)) EXPECT_TRUE(line.startsWith("  "));
    EXPECT_TRUE(lines[4].contains("ZVPropertyBag  Object") && lines[4].endsWith("each Form ."));
    EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
    EXPECT_EQ(window->ParentObject().AsObject().Get(), Ref<Object>(window).Get());
    EXPECT_EQ(window->ClassName(), Text()) << "it is never made by name";
    Close(window);
}

TEST_F(frmDemo2Test, EveryPropertyComesBack) {
    const Text caption = Text(u"A caption of [*] my own\u00e9 \U0001F600") +
                         Text(std::u16string(2000, u'M'));
    auto window = Open();
    window->SetCaption(caption);
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
    EXPECT_EQ(window->Caption(), caption);
    EXPECT_LE(window->windowTitle().size(), 1000) << "a window manager would lay out all of it";
    EXPECT_EQ(window->BackColor(), 0x00336699U);
    EXPECT_EQ(window->ForeColor(), 0x00FFEEDDU);
    EXPECT_EQ(window->WindowFont(), OddFont());
    const TwipRect frame{window->Left(), window->Top(), window->Width(), window->Height()};
    EXPECT_EQ(frame, (TwipRect{1234.5F, 2345.25F, 6543.75F, 5432.125F}));
    Close(window);
}

TEST_F(frmDemo2Test, PropertiesAreStoredUnderTheirNamesWithTheirTypes) {
    Close(Open());
    ZVPropertyBag bag;
    bag.SetContents(session_.Bag().Item(u"DemoZVPropertyBag1"));
    EXPECT_EQ(session_.Bag().ObjName(u"DemoZVPropertyBag1"), Text());
    const std::pair<const char16_t*, VarType> properties[] = {
        {u"Left", VarType::Single},    {u"Top", VarType::Single},
        {u"Width", VarType::Single},   {u"Height", VarType::Single},
        {u"BackColor", VarType::Long}, {u"ForeColor", VarType::Long},
        {u"Caption", VarType::String}, {u"Font", VarType::ArrayFlag | VarType::Integer}};
    for (const auto& [name, type] : properties) {
        EXPECT_EQ(bag.Item(Text(name)).Type(), type) << Text(name);
    }
    EXPECT_EQ(bag.Count(), 8);
    EXPECT_EQ(bag.ObjName(u"Font"), Text(u"Font"));
    const auto window = Open();
    EXPECT_EQ(window->WindowFont(), ProgramFont()) << "a font that was never changed";
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
    // Pressed again in window 1 it is window 2's state once more, under the next
    // number; not exactly on top of it.
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
    QSet<QPair<int, int>> corners;
    for (const frmDemo2* one : open)
        corners << qMakePair(one->frameGeometry().x(), one->frameGeometry().y());
    EXPECT_EQ(corners.size(), 4) << "one stands exactly on another";
    Close(first);
}

TEST_F(frmDemo2Test, MenuItemsAskAndApplyUnlessCancelled) {
    const auto window = Open();
    const Text caption = window->Caption();
    for (const char* item : {"mnuCustomBackColor", "mnuCustomizeFont", "mnuCustomCaption"}) {
        Choose(window.Get(), item);
    }
    dialogs_.Answer = QString();  // an empty answer is none
    Choose(window.Get(), "mnuCustomCaption");
    EXPECT_EQ(window->Caption(), caption);
    EXPECT_EQ(window->WindowFont(), ProgramFont());

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

TEST_F(frmDemo2Test, TextStaysReadableWhereOnlyOneColourWasChosen) {
    constexpr OleColour kBlack = 0, kWhite = 0x00FFFFFF, kYellow = 0x0000FFFF;
    const struct {
        const char* what;
        bool dark;
        OleColour back, fore;
    } cases[] = {
        {"nothing chosen, light", false, kButtonFace, kButtonText},
        {"nothing chosen, dark", true, kButtonFace, kButtonText},
        {"white background in a dark palette", true, kWhite, kButtonText},
        {"black background in a light palette", false, kBlack, kButtonText},
        {"black text in a dark palette", true, kButtonFace, kBlack},
        {"yellow text in a light palette", false, kButtonFace, kYellow},
        {"grey background", false, 0x00808080, kButtonText},
        {"both chosen alike: as wished", false, kYellow, kYellow},
    };
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
        EXPECT_EQ(Contrast(back, fore) >= 4.5, c.back != c.fore);
        EXPECT_EQ(window->BackColor(), c.back) << "what is stored stays";
        EXPECT_EQ(window->ForeColor(), c.fore);
    }
    QApplication::setPalette(QPalette());
    Close(window);
}

TEST_F(frmDemo2Test, ALargeFontIsScrolledAndCoversNothing) {
    const auto window = Open();
    const auto* area = Control<QScrollArea>(window.Get(), "Explanation");
    for (const double size : {9.0, 36.0, 400.0}) {
        window->SetWindowFont({.Name = u"Liberation Sans", .Size = size});
        QCoreApplication::sendPostedEvents();
        for (const char* other : {"Label1", "cmdShowNext"}) {
            const QWidget* control = Control(window.Get(), other);
            EXPECT_FALSE(control->geometry().intersects(area->geometry())) << other << size;
        }
        EXPECT_GT(area->height(), 40) << size;
        EXPECT_EQ(area->verticalScrollBar()->maximum() > 0, size > 9) << size;
    }
    Close(window);
}

TEST_F(frmDemo2Test, WhereSettingsDoNotLastOneLineSaysWhy) {
    const QDir folder(folder_.path());
    ASSERT_TRUE(folder.mkdir("a folder") && QFile::link("/dev/null", folder.filePath("a device")));
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.filePath("a fifo")), 0600), 0);
    const struct {
        const char* name;
        const char* line;  // null: none
    } rows[] = {{"PropBag.dat", nullptr},
                {"no folder/PropBag.dat", "Settings cannot be kept here."},
                {"a folder", "Settings cannot be kept: no file."},
                {"a fifo", "Settings cannot be kept: no file."},
                {"a device", "Settings cannot be kept: no file."}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        file_ = ToText(folder.filePath(row.name));
        auto window = Open();
        const auto* line = Control<QLabel>(window.Get(), "Label3");
        EXPECT_EQ(line->isVisible(), row.line != nullptr);
        EXPECT_EQ(line->text(), row.line ? row.line : "");
        EXPECT_EQ(line->toolTip().isEmpty(), row.line == nullptr);
        EXPECT_LE(line->fontMetrics().horizontalAdvance(line->text()), line->width()) << "one line";
        Close(window);
    }
    EXPECT_EQ(dialogs_.Said.size(), 0U) << "nothing more is said";
}

}  // namespace
}  // namespace zorvane::test
