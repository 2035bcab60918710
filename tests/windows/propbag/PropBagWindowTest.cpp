#include <sys/stat.h>

#include <QAction>
#include <QDir>
#include <QScrollArea>
#include <QScrollBar>
#include <set>

#include "forms/Label.h"
#include "tests/windows/propbag/PropBagFixture.h"

namespace zorvane::test {
namespace {

class frmDemo2Test : public PropBagTest {
  protected:
    static void Choose(const Ref<frmDemo2>& window, const char* item) {
        Control<QAction>(window.Get(), item)->trigger();
    }
};

FontRecord OddFont() {
    return {u"No Such Family", 13.75, 700, true, 161, true, true, true};
}

TEST_F(frmDemo2Test, KeptBlanksStandInTheExplanation) {
    const auto window = Open();
    EXPECT_EQ(Control<QLabel>(window.Get(), "Label1")->text(), "Form No : 1");
    const QStringList lines = Control<QLabel>(window.Get(), "Label2")->text().split(u'\n');
    ASSERT_EQ(lines.size(), 5);
    for (const QString& line : lines.mid(1)) EXPECT_TRUE(line.startsWith("  "));
    EXPECT_TRUE(lines[4].contains("ZVPropertyBag  Object") && lines[4].endsWith("each Form ."));
    EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
    Close(window);
}

TEST_F(frmDemo2Test, EveryPropertyComesBackFromUnderItsNameWithItsType) {
    const Text caption =
        Text(u"A caption of [*] my own\u00e9 \U0001F600") + Text(std::u16string(2000, u'M'));
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

    ZVPropertyBag bag;
    bag.SetContents(Stored());
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
    EXPECT_EQ(session_.Bag().ObjName(u"DemoZVPropertyBag1"), Text()) << "it is never made by name";
}

TEST_F(frmDemo2Test, KeptAClosedWindowGivesItsNumberBack) {
    const auto first = Open();
    frmDemo2* second = Next(first.Get(), 2);
    Next(second, 3);
    second->Unload();
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

TEST_F(frmDemo2Test, TheNextWindowIsRestoredByItsOpenersNumberAndNotExactlyOnAnOpenOne) {
    auto first = Open();
    frmDemo2* second = Next(first.Get(), 2);
    second->SetCaption(u"Number two");
    const float left = second->Left();
    Close(first);

    first = Open();
    second = Next(first.Get(), 2);
    EXPECT_EQ(second->Caption(), Text(u"Number two"));
    EXPECT_EQ(second->Left(), left);
    // Pressed again in window 1 it is window 2's state once more, under the next number.
    const frmDemo2* third = Next(first.Get(), 3);
    EXPECT_EQ(third->Caption(), Text(u"Number two"));
    EXPECT_NE(third->frameGeometry().topLeft(), second->frameGeometry().topLeft());
    Close(first);
}

TEST_F(frmDemo2Test, WindowsOpenedAnewStandSideBySide) {
    const auto first = Open();
    first->SetLeft(75);
    first->SetTop(75);
    EXPECT_TRUE(QTest::qWaitFor([&] { return first->FrameSettled(); }));
    std::vector<QRect> frames{first->frameGeometry()};
    std::set<std::pair<int, int>> corners{{frames[0].x(), frames[0].y()}};
    frmDemo2* at = first.Get();
    for (std::int32_t number = 2; number <= 4; ++number) {
        at = Next(at, number);
        frames.push_back(at->frameGeometry());
        corners.emplace(frames.back().x(), frames.back().y());
    }
    EXPECT_EQ(corners.size(), 4U) << "one stands exactly on another";
    const QRect room = first->screen()->availableGeometry();
    if (room.width() > 2 * frames[0].width() + 20) {
        EXPECT_FALSE(frames[1].intersects(frames[0]));
        EXPECT_TRUE(room.contains(frames[1]));
    }
    Close(first);
}

TEST_F(frmDemo2Test, MenuItemsAskAndApplyUnlessCancelled) {
    const auto window = Open();
    const Text caption = window->Caption();
    for (const char* item : {"mnuCustomBackColor", "mnuCustomizeFont", "mnuCustomCaption"}) {
        Choose(window, item);
    }
    dialogs_.Answer = QString();  // an empty answer is none
    Choose(window, "mnuCustomCaption");
    EXPECT_EQ(window->Caption(), caption);
    EXPECT_EQ(window->WindowFont(), ProgramFont());
    EXPECT_EQ(dialogs_.ColourShown, kButtonFace);

    dialogs_.ColourAnswer = 0x00112233;
    Choose(window, "mnuCustomBackColor");
    dialogs_.FontAnswer = FontChoice{ProgramFont(), 0x00FFFFFF};
    Choose(window, "mnuCustomizeFont");
    EXPECT_EQ(dialogs_.FontShown->Colour, 0x00FFFFFFU) << "as it is seen on the dark background";
    EXPECT_EQ(window->ForeColor(), kButtonText) << "left as it was, it has not been chosen";
    dialogs_.FontAnswer = FontChoice{OddFont(), 0x00FEDCBA};
    Choose(window, "mnuCustomizeFont");
    for (const char* name : {"Label1", "Label2"}) {
        const auto* label = Control<QLabel>(window.Get(), name);
        EXPECT_EQ(label->font(), ToQFont(OddFont())) << name;
        EXPECT_EQ(FromQColor(label->palette().color(QPalette::WindowText)), 0x00FEDCBAU) << name;
    }

    dialogs_.Answer = "Mine";
    Choose(window, "mnuCustomCaption");
    EXPECT_EQ(dialogs_.Asked, "Customize Caption\nInsert a new caption");
    EXPECT_EQ(window->windowTitle(), "Mine");
    Choose(window, "mnuFileExit");
    EXPECT_FALSE(window->isVisible());
}

TEST_F(frmDemo2Test, TextStaysReadableWhereOnlyOneColourWasChosen) {
    constexpr OleColour kBlack = 0, kWhite = 0x00FFFFFF, kYellow = 0x0000FFFF;
    const struct {
        const char* what;
        bool dark;
        OleColour back, fore;
    } cases[] = {
        {"nothing chosen, dark", true, kButtonFace, kButtonText},
        {"white background in a dark palette", true, kWhite, kButtonText},
        {"black background in a light palette", false, kBlack, kButtonText},
        {"black text in a dark palette", true, kButtonFace, kBlack},
        {"yellow text in a light palette", false, kButtonFace, kYellow},
        {"both chosen alike: as wished", false, kYellow, kYellow},
    };
    const auto window = Open();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        QApplication::setPalette(QPalette(c.dark ? QColor(40, 40, 40) : QColor(239, 239, 239)));
        QCoreApplication::sendPostedEvents();
        window->SetBackColor(c.back);
        window->SetForeColor(c.fore);
        const QColor back = window->grab().toImage().pixelColor(3, window->height() - 3);
        const auto* label = Control<QLabel>(window.Get(), "Label2");
        const QColor fore = label->palette().color(QPalette::WindowText);
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
        SCOPED_TRACE(size);
        window->SetWindowFont({.Name = u"Liberation Sans", .Size = size});
        QCoreApplication::sendPostedEvents();
        for (const char* other : {"Label1", "cmdShowNext"}) {
            const QRect at = Control(window.Get(), other)->geometry();
            EXPECT_FALSE(at.intersects(area->geometry())) << other;
        }
        EXPECT_GT(area->height(), 40);
        EXPECT_EQ(area->verticalScrollBar()->maximum() > 0, size > 9);
    }
    Close(window);
}

TEST_F(frmDemo2Test, WhereSettingsDoNotLastOneLineSaysWhy) {
    const QDir folder(folder_.path());
    ASSERT_TRUE(folder.mkdir("a folder") && QFile::link("/dev/null", folder.filePath("a device")));
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.filePath("a fifo")), 0600), 0);
    const std::pair<const char*, const char*> rows[] = {
        {"PropBag.dat", ""},
        {"no folder/PropBag.dat", "Settings cannot be kept here."},
        {"a folder", "Settings cannot be kept: no file."},
        {"a fifo", "Settings cannot be kept: no file."},
        {"a device", "Settings cannot be kept: no file."}};
    for (const auto& [name, said] : rows) {
        SCOPED_TRACE(name);
        file_ = ToText(folder.filePath(name));
        const auto window = Open();
        const auto* line = Control<QLabel>(window.Get(), "Label3");
        EXPECT_EQ(line->isVisible(), *said != 0);
        EXPECT_EQ(line->text(), said);
        EXPECT_EQ(line->toolTip().isEmpty(), *said == 0);
        EXPECT_LE(line->fontMetrics().horizontalAdvance(said), line->width()) << "one line";
        Close(window);
    }
    EXPECT_TRUE(dialogs_.Said.empty()) << "nothing more is said";
}

}  // namespace
}  // namespace zorvane::test
