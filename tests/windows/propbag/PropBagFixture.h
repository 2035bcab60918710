#pragma once
// What tests of the property-bag windows share: a session, a file for it, and answers to dialogs.

#include <gtest/gtest.h>

#include <QPointer>
#include <QTemporaryDir>

#include "demos/PropBagSession.h"
#include "demos/frmDemo2.h"
#include "forms/Strings.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {

// Gives the answers in place of a person; no answer is a click on Cancel.
class AnsweringDialogs : public SpokenDialogs {
  public:
    std::optional<OleColour> Colour(QWidget*, OleColour shown) override {
        return ColourShown = shown, ColourAnswer;
    }
    std::optional<FontChoice> FontAndColour(QWidget*, const FontChoice& shown) override {
        return FontShown = shown, FontAnswer;
    }
    std::optional<QString> InputBox(QWidget*, const QString& title, const QString& prompt,
                                    const QString& shown) override {
        Asked = {title, prompt, shown};
        return Answer;
    }

    std::optional<OleColour> ColourShown, ColourAnswer;
    std::optional<FontChoice> FontShown, FontAnswer;
    QStringList Asked;
    std::optional<QString> Answer;
};

class PropBagTest : public WindowTest {
  protected:
    void TearDown() override {
        if (owner_) owner_->Unload();
        WindowTest::TearDown();
    }
    // As the program opens window 1: the file is read, the window restored and shown.
    Ref<frmDemo2> Open() {
        session_.Load(file_);
        session_.Counter = 0;
        const Ref<frmDemo2> window = Restored();
        window->ShowOwned(owner_.Get());
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.Get()));
        // Nobody drags a window that has no title bar yet.
        const bool bare = QGuiApplication::platformName() != QStringLiteral("xcb");
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return window->FrameSettled() &&
                   (bare || !window->windowHandle()->frameMargins().isNull());
        }));
        return window;
    }
    Ref<frmDemo2> Restored() {
        const Ref<frmDemo2> window = MakeObject<frmDemo2>(session_);
        const Variant restored =
            session_.Bag().ReadProperty(PropBagSession::EntryName(1), {.Default = window});
        EXPECT_EQ(restored.AsObject().Get(), Ref<Object>(window).Get()) << "restored in place";
        return window;
    }
    void Close(const Ref<frmDemo2>& window) {
        window->Unload();
        session_.Save(file_);
        QCoreApplication::sendPostedEvents();
    }
    // The windows that are open, lowest number first.
    static std::vector<frmDemo2*> OpenWindows() {
        std::vector<frmDemo2*> open;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* form = qobject_cast<frmDemo2*>(window);
            if (form && form->isVisible()) open.push_back(form);
        }
        std::sort(open.begin(), open.end(),
                  [](const auto* a, const auto* b) { return a->Number() < b->Number(); });
        return open;
    }
    // The window of that number, after the button of `from` was pressed.
    static frmDemo2* Next(frmDemo2* from, std::int32_t number) {
        Click(Control(from, "cmdShowNext"));
        for (frmDemo2* window : OpenWindows()) {
            if (window->Number() != number) continue;
            EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
            EXPECT_TRUE(QTest::qWaitFor([&] { return window->FrameSettled(); }));
            return window;
        }
        ADD_FAILURE() << "no window " << number;
        return nullptr;
    }

    Ref<Form> owner_;  // on the screen, or none
    QTemporaryDir folder_;
    Text file_ = ToText(folder_.filePath(QStringLiteral("PropBag.dat")));
    PropBagSession session_;
    AnsweringDialogs dialogs_;
};

}  // namespace zorvane::test
