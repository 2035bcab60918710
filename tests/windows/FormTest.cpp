#include "program/forms/Form.h"

#include "tests/support/Outcome.h"
#include "tests/windows/AnsweringDialogs.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

// Counts itself and notes what happens to it.
class Probe : public Form {
  public:
    Probe() : Form("Probe") {
        resize(300, 200);
        button_ = new QPushButton("&Go", this);
        On(button_, &QPushButton::clicked, [this] {
            if (Handler) Handler();
        });
        SetDefaultButton(button_);
        ++alive;
    }
    ~Probe() override {
        --alive;
        Note("gone");
    }
    std::function<void()> Handler, OnLoad, OnUnload;
    QPushButton* button_;
    static inline int alive = 0;
    static inline QStringList log;

  protected:
    void Form_Load() override {
        Note("load");
        if (OnLoad) OnLoad();
    }
    void Form_Unload() override {
        Note("unload");
        if (OnUnload) OnUnload();
    }

  private:
    void Note(const char* what) { log << objectName() + " " + what; }
};

class FormTest : public WindowTest {
  protected:
    FormTest() { Probe::log.clear(); }
    void TearDown() override {
        WindowTest::TearDown();
        EXPECT_EQ(Probe::alive, 0) << "a window was never freed, or freed twice";
    }
    static Ref<Probe> Placed(const TwipRect& frame) {
        const auto form = MakeObject<Probe>();
        form->Set(u"LEFT", frame.Left);
        form->Set(u"top", frame.Top);
        form->Set(u"Width", frame.Width);
        form->Set(u"Height", frame.Height);
        EXPECT_TRUE(Shown(*form));
        return form;
    }
};

TEST_F(FormTest, LoadRunsOnceShowsNothingAndUnloadFreesALaterLoad) {
    {
        const auto form = MakeObject<Probe>();
        auto* layout = new QVBoxLayout(form.Get());
        layout->addWidget(form->button_);
        form->setMinimumSize(form->screen()->availableGeometry().size() * 2);
        form->Load();
        form->Load();
        EXPECT_FALSE(form->isVisible());
        form->Unload();
        form->Unload();
        EXPECT_TRUE(Shown(*form));
        const QSize room = form->screen()->availableGeometry().size();
        EXPECT_EQ(form->size().boundedTo(room), form->size()) << "larger than the screen";
        form->Unload();
    }
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(Probe::log, (QStringList{"Probe load", "Probe unload", "Probe load", "Probe unload",
                                       "Probe gone"}));
}

TEST_F(FormTest, ALoadedWindowOutlivesItsMakerAndGoesAfterItsUnload) {
    QPointer<Probe> form;
    {
        const auto made = MakeObject<Probe>();
        form = made.Get();
        ASSERT_TRUE(Shown(*made));
    }
    ASSERT_FALSE(form.isNull());
    form->Handler = [&] {
        form->Unload();
        QCoreApplication::processEvents();
        ASSERT_FALSE(form.isNull()) << "freed in the middle of its own handler";
    };
    Click(form->button_);
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(form.isNull());
}

TEST_F(FormTest, AnErrorInAHandlerIsShownOnceAndTheProgramGoesOn) {
    AnsweringDialogs dialogs;
    const auto form = MakeObject<Probe>();
    ASSERT_TRUE(Shown(*form));
    form->Handler = [] { throw Error(28501, u"Some::Place", u"What went wrong"); };
    Click(form->button_);
    form->Handler = [] { throw std::bad_alloc(); };
    Click(form->button_);
    form->OnUnload = [] { throw Error(28502, Text(), u"At the end"); };
    form->Unload();
    EXPECT_EQ(dialogs.Said, (QStringList{"Run-time error 28501\nSome::Place\n\nWhat went wrong",
                                         "Run-time error 7\n\nOut of memory",
                                         "Run-time error 28502\n\nAt the end"}));
    EXPECT_FALSE(form->Loaded()) << "a failing Form_Unload does not keep the window";
}

TEST_F(FormTest, OwnedWindowsKnowTheirOwnerAndCloseFirstTheLastOpenedBeforeTheOthers) {
    const auto named = [](const char* name, Form* owner) {
        const auto form = MakeObject<Probe>();
        form->setObjectName(name);
        form->ShowOwned(owner);
        const QWindow* above = owner ? owner->windowHandle() : nullptr;
        EXPECT_EQ(form->windowHandle()->transientParent(), above) << "behind it, in the end";
        return form;
    };
    const auto owner = named("owner", nullptr);
    const auto first = named("first", owner.Get());
    const auto second = named("second", first.Get());
    Probe::log.clear();
    owner->Unload();
    EXPECT_EQ(Probe::log, (QStringList{"second unload", "first unload", "owner unload"}));
}

TEST_F(FormTest, AModalWindowIsNotShownTwiceNorAfterAnErrorInFormLoad) {
    const auto form = MakeObject<Probe>();
    form->OnLoad = [] { throw Error(PlatformError::InvalidCall); };
    EXPECT_EQ(NumberRaisedBy([&] { form->ShowModal(); }), 5) << "it reaches the opener";
    EXPECT_FALSE(form->Loaded() || form->isVisible());
    form->OnLoad = nullptr;
    WhenModal<Probe> driver([](Probe& window) {
        EXPECT_EQ(NumberRaisedBy([&] { window.ShowModal(); }), 400);
        window.Hide();
    });
    form->ShowModal();
    EXPECT_TRUE(form->Loaded()) << "hiding ends the show and unloads nothing";
    form->Unload();
}

TEST_F(FormTest, MembersByNameReadAndAssignAndRefuseOthers) {
    const auto form = MakeObject<Probe>();
    EXPECT_EQ(form->Get(u"ScaleWidth"), Variant(4500.0F));
    EXPECT_EQ(form->Get(u"Height"), Variant(form->Height()));
    form->Set(u"caption", u"Named");
    EXPECT_EQ(form->Get(u"CAPTION"), Variant(u"Named"));
    EXPECT_EQ(NumberRaisedBy([&] { form->Set(u"ScaleWidth", 1.0F); }), 438) << "it is only read";
    EXPECT_EQ(NumberRaisedBy([&] { return form->Get(u"Captain"); }), 438);
    EXPECT_EQ(NumberRaisedBy([&] { form->Set(u"Left", u"far"); }), 13);
}

TEST_F(FormTest, AFrameComesBackExactlyTenTimesOver) {
    for (const TwipRect& saved : {TwipRect{1234.5F, 987.25F, 6001.75F, 4444.125F},
                                  {90000, -60000, 0, -500},
                                  {-90000, 60000, 3e9F, 3e9F}}) {
        for (int cycle = 0; cycle < 10; ++cycle) {
            const auto form = Placed(saved);
            // Closed at once in every other cycle, before the borders are known.
            const bool atOnce = cycle % 2 == 1;
            EXPECT_TRUE(QTest::qWaitFor([&] { return atOnce || form->FrameSettled(); }));
            form->Unload();
            const TwipRect now{form->Left(), form->Top(), form->Width(), form->Height()};
            ASSERT_EQ(now, saved) << "cycle " << cycle;
        }
    }
}

TEST_F(FormTest, AFrameIsMovedWhenTooLittleOfItsTitleCanBeHeld) {
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    const std::tuple<const char*, QPoint, bool> rows[] = {
        {"enough to the right", {area.right() - 99, 50}, true},
        {"too little to the right", {area.right() - 39, 50}, false},
        {"enough at the foot", {50, area.bottom() - 19}, true},
        {"too little at the foot", {50, area.bottom() - 9}, false},
    };
    for (const auto& [what, at, stays] : rows) {
        const QRect frame(at, QSize(200, 150));
        EXPECT_EQ(WithinReach(frame) == frame, stays) << what;
    }
    EXPECT_TRUE(area.contains(WithinReach(QRect(50, 50, 100000, 100000))))
        << "its edges are far out";
}

TEST_F(FormTest, OnlyTheSidesThatThePersonChangedAreReadAnew) {
    const auto form = Placed({1501.25F, 1502.5F, 6003.75F, 4504.5F});
    ASSERT_TRUE(QTest::qWaitFor([&] { return form->FrameSettled(); }));
    form->move(form->frameGeometry().x() + 10, form->frameGeometry().y());
    EXPECT_TRUE(QTest::qWaitFor([&] { return form->Left() == 1650; })) << form->Left();
    EXPECT_EQ(form->Top(), 1502.5F);
    form->resize(form->width(), form->height() + 10);
    EXPECT_EQ(form->Height(), 4650.0F);
    EXPECT_EQ(form->Width(), 6003.75F);
    form->SetTop(3000.5F);
    form->SetWidth(std::numeric_limits<float>::quiet_NaN());
    form->SetLeft(std::numeric_limits<float>::infinity());
    EXPECT_EQ(form->Top(), 3000.5F);
    EXPECT_EQ(form->Left(), 1650.0F) << "assigning one side keeps what the person did to another";
    EXPECT_EQ(form->Width(), 6003.75F) << "what is no number is not assigned";
    form->Unload();
}

}  // namespace
}  // namespace zorvane::test
