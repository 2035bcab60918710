#include <sys/resource.h>
#include <sys/stat.h>

#include <span>

#include "tests/windows/propbag/PropBagFixture.h"

namespace zorvane::test {
namespace {

class frmDemo2Test : public PropBagTest {
  protected:
    void SetUp() override {
        PropBagTest::SetUp();
        Open();
    }
    void Choose(const char* item) const { At<QAction>(item)->trigger(); }
};

FontRecord OddFont() {
    return {u"No Such Family", 13.75, 700, true, 161, true, true, true};
}

TEST_F(frmDemo2Test, KeptBlanksStandInTheExplanation) {
    EXPECT_EQ(At<QLabel>("Label1")->text(), "Form No : 1");
    const QStringList lines = At<QLabel>("Label2")->text().split(u'\n');
    ASSERT_EQ(lines.size(), 5);
    for (const QString& line : lines.mid(1)) EXPECT_TRUE(line.startsWith("  "));
    EXPECT_TRUE(lines[4].contains("ZVPropertyBag  Object") && lines[4].endsWith("each Form ."));
    EXPECT_EQ(Screen::The().MousePointer(), Pointer::Default);
}

TEST_F(frmDemo2Test, EveryPropertyComesBackFromUnderItsNameWithItsType) {
    const Text caption =
        Text(u"A caption of [*] my own\u00e9 \U0001F600") + Text(std::u16string(2000, u'M'));
    const std::pair<const char16_t*, Variant> properties[] = {
        {u"Left", 1234.5F},
        {u"Top", 2345.25F},
        {u"Width", 6543.75F},
        {u"Height", 5432.125F},
        {u"Caption", caption},
        {u"BackColor", std::int32_t{0x00336699}},
        {u"ForeColor", std::int32_t{0x00FFEEDD}}};
    for (const auto& [name, value] : std::span(properties).first(5)) window_->Set(name, value);
    window_->SetBackColor(0x00336699);
    window_->SetForeColor(0x00FFEEDD);
    window_->SetWindowFont(OddFont());
    Close();
    session_ = PropBagSession();  // as the next start of the program
    Open();
    EXPECT_EQ(window_->Caption(), caption);
    EXPECT_LE(window_->windowTitle().size(), 1000) << "a window manager would lay out all of it";
    EXPECT_EQ(window_->WindowFont(), OddFont());
    Close();
    ZVPropertyBag bag;
    bag.SetContents(Stored());
    for (const auto& [name, value] : properties) EXPECT_EQ(bag.Item(Text(name)), value);
    EXPECT_EQ(bag.Count(), 8);
    EXPECT_EQ(bag.ObjName(u"Font"), Text(u"Font"));
    EXPECT_EQ(session_.Bag().ObjName(u"DemoZVPropertyBag1"), Text()) << "it is never made by name";
}

TEST_F(frmDemo2Test, KeptAClosedWindowGivesItsNumberBack) {
    frmDemo2* second = Next(window_.Get(), 2);
    Next(second, 3);
    second->Unload();
    EXPECT_EQ(OpenWindows().size(), 2U) << "the third stays when the one between is closed";
    Next(window_.Get(), 3);
    std::vector<std::int32_t> numbers;
    for (const frmDemo2* window : OpenWindows()) numbers.push_back(window->Number());
    EXPECT_EQ(numbers, (std::vector<std::int32_t>{1, 3, 3}));
    Close();
    EXPECT_EQ(session_.Counter, 0);
    EXPECT_EQ(session_.Bag().Count(), 3);
}

TEST_F(frmDemo2Test, TheNextWindowIsRestoredByItsOpenersNumberAndNotExactlyOnAnOpenOne) {
    frmDemo2* second = Next(window_.Get(), 2);
    second->SetCaption(u"Number two");
    second->SetLeft(333.5F);
    Close();

    Open();
    second = Next(window_.Get(), 2);
    EXPECT_EQ(second->Caption(), Text(u"Number two"));
    EXPECT_EQ(second->Left(), 333.5F) << "beside its opener instead of where it was left";
    // Pressed again in window 1 it is window 2's state once more, under the next number.
    const frmDemo2* third = Next(window_.Get(), 3);
    EXPECT_EQ(third->Caption(), Text(u"Number two"));
    EXPECT_NE(third->frameGeometry().topLeft(), second->frameGeometry().topLeft());
}

TEST_F(frmDemo2Test, WindowsOpenedAnewStandSideBySide) {
    window_->SetLeft(75);
    window_->SetTop(75);
    window_->SetWidth(4500);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window_->FrameSettled(); }));
    std::vector<QRect> frames{window_->frameGeometry()};
    frmDemo2* at = window_.Get();
    const QRect room = window_->screen()->availableGeometry();
    for (std::int32_t number = 2; number <= 24; ++number) {
        at = Next(at, number);
        for (const QRect& one : frames) EXPECT_NE(one.topLeft(), at->frameGeometry().topLeft());
        frames.push_back(at->frameGeometry());
        EXPECT_TRUE(room.contains(frames.back().topLeft() + QPoint(100, 30))) << number;
    }
    if (room.width() > frames[0].width() + frames[1].width() + 20) {  // not at scale 2
        EXPECT_FALSE(frames[1].intersects(frames[0]));
        EXPECT_TRUE(room.contains(frames[1]));
    }
}

TEST_F(frmDemo2Test, MenuItemsAskAndApplyUnlessCancelled) {
    const Text caption = window_->Caption();
    for (const char* item : {"mnuCustomBackColor", "mnuCustomizeFont", "mnuCustomCaption"}) {
        Choose(item);
    }
    dialogs_.Answer = QString();  // an empty answer is none
    Choose("mnuCustomCaption");
    EXPECT_EQ(window_->Caption(), caption);
    EXPECT_EQ(window_->WindowFont(), ProgramFont());
    EXPECT_EQ(dialogs_.ColourShown, kButtonFace);

    dialogs_.ColourAnswer = 0x00112233;
    Choose("mnuCustomBackColor");
    dialogs_.FontAnswer = FontChoice{ProgramFont(), 0x00FFFFFF};
    Choose("mnuCustomizeFont");
    EXPECT_EQ(dialogs_.FontShown->Colour, 0x00FFFFFFU) << "as it is seen on the dark background";
    EXPECT_EQ(window_->ForeColor(), kButtonText) << "left as it was, it has not been chosen";
    dialogs_.FontAnswer = FontChoice{OddFont(), 0x00FEDCBA};
    Choose("mnuCustomizeFont");
    for (const char* name : {"Label1", "Label2"}) {
        const auto* label = At<QLabel>(name);
        EXPECT_EQ(label->font(), ToQFont(OddFont())) << name;
        EXPECT_EQ(FromQColor(label->palette().color(QPalette::WindowText)), 0x00FEDCBAU) << name;
    }

    dialogs_.Answer = "Mine";
    Choose("mnuCustomCaption");
    EXPECT_EQ(dialogs_.Asked, "Customize Caption\nInsert a new caption");
    EXPECT_EQ(window_->windowTitle(), "Mine");

    window_->SetWidth(6543.75F);
    Choose("mnuCustomReset");
    EXPECT_EQ(window_->Caption(), caption);
    EXPECT_EQ(window_->WindowFont(), ProgramFont());
    EXPECT_EQ(window_->BackColor(), kButtonFace);
    EXPECT_NE(window_->Width(), 6543.75F);
    Choose("mnuCustomUndo");
    EXPECT_EQ(window_->Width(), 6543.75F);
    for (int step = 0; step < 4; ++step) {
        EXPECT_EQ(window_->Caption(), step == 0 ? Text(u"Mine") : caption) << step;
        EXPECT_EQ(window_->ForeColor(), step < 2 ? 0x00FEDCBA : kButtonText) << step;
        Choose("mnuCustomUndo");
    }
    EXPECT_EQ(window_->BackColor(), kButtonFace);
    EXPECT_FALSE(At<QAction>("mnuCustomUndo")->isEnabled());
}

TEST_F(frmDemo2Test, TextStaysReadableWhereOnlyOneColourWasChosen) {
    constexpr OleColour kBlack = 0, kWhite = 0x00FFFFFF, kYellow = 0x0000FFFF;
    const std::tuple<const char*, bool, OleColour, OleColour> cases[] = {
        {"white background in a dark palette", true, kWhite, kButtonText},
        {"black background in a light palette", false, kBlack, kButtonText},
        {"black text in a dark palette", true, kButtonFace, kBlack},
        {"yellow text in a light palette", false, kButtonFace, kYellow},
        {"both chosen alike: as wished", false, kYellow, kYellow},
    };
    for (const auto& [what, dark, back, fore] : cases) {
        SCOPED_TRACE(what);
        QApplication::setPalette(QPalette(dark ? QColor(40, 40, 40) : QColor(239, 239, 239)));
        QCoreApplication::sendPostedEvents();
        window_->SetBackColor(back);
        window_->SetForeColor(fore);
        const QColor seen = window_->grab().toImage().pixelColor(3, window_->height() - 3);
        const auto* label = At<QLabel>("Label2");
        const QColor text = label->palette().color(QPalette::WindowText);
        EXPECT_EQ(Contrast(seen, text) >= 4.5, back != fore);
        EXPECT_EQ(window_->BackColor(), back) << "what is stored stays";
        EXPECT_EQ(window_->ForeColor(), fore);
    }
    QApplication::setPalette(QPalette());
}

TEST_F(frmDemo2Test, ALargeFontIsScrolledAndCoversNothing) {
    const auto* area = At<QScrollArea>("Explanation");
    for (const double size : {9.0, 36.0, 400.0}) {
        SCOPED_TRACE(size);
        window_->SetWindowFont({.Name = u"Liberation Sans", .Size = size});
        QCoreApplication::sendPostedEvents();
        for (const char* other : {"Label1", "cmdShowNext"}) {
            const QRect at = At(other)->geometry();
            EXPECT_FALSE(at.intersects(area->geometry())) << other;
        }
        EXPECT_GT(area->height(), 40);
        EXPECT_EQ(area->verticalScrollBar()->maximum() > 0, size > 9);
    }
}

TEST_F(frmDemo2Test, WhereSettingsDoNotLastOneLineSaysWhy) {
    const QDir folder(folder_.path());
    ASSERT_TRUE(folder.mkdir("a folder"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.filePath("a fifo")), 0600), 0);
    QFile text(folder.filePath("a text"));
    ASSERT_TRUE(text.open(QFile::WriteOnly) && text.write("no bag") > 0 && text.flush());
    QFile large(folder.filePath("a large file"));
    ASSERT_TRUE(large.open(QFile::WriteOnly) && large.resize(1'000'000'000));
    const std::pair<const char*, const char*> rows[] = {
        {"PropBag.dat", ""},
        {"no folder/PropBag.dat", "Settings cannot be kept here."},
        {"a folder", "Settings cannot be kept: a folder."},
        {"a fifo", "Settings cannot be kept: no file."},
        {"a text", "Old settings could not be read."},
        {"a large file", "Old settings could not be read."}};
    for (const auto& [name, said] : rows) {
        SCOPED_TRACE(name);
        Close();
        file_ = folder.filePath(name).toStdU16String();
        Open();
        const auto* line = At<QLabel>("Label3");
        EXPECT_EQ(line->isVisible(), *said != 0);
        EXPECT_EQ(line->text(), said);
        EXPECT_EQ(line->toolTip().isEmpty(), *said == 0);
        EXPECT_LE(line->fontMetrics().horizontalAdvance(said), line->width()) << "one line";
    }
    EXPECT_TRUE(dialogs_.Said.empty()) << "nothing more is said";
}

TEST_F(frmDemo2Test, AfterASaveThatFailedTheNextWindowSaysSo) {
    rlimit usual{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &usual), 0);
    for (const char* said : {"Settings were not kept.", ""}) {
        const rlimit small{16, usual.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, *said == 0 ? &usual : &small), 0);
        Close();
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &usual), 0);
        Open();
        EXPECT_EQ(At<QLabel>("Label3")->text(), said);
    }
}

}  // namespace
}  // namespace zorvane::test
