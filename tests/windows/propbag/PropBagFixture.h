#pragma once
// What tests of the property-bag windows share: a session, a file for it, and answers to dialogs.

#include <algorithm>
#include <vector>

#include "program/demos/PropBagSession.h"
#include "program/demos/frmDemo2.h"
#include "tests/windows/AnsweringDialogs.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {

class PropBagTest : public WindowTest {
  protected:
    void TearDown() override {
        if (window_) Close();
        if (owner_) owner_->Unload();
        WindowTest::TearDown();
    }
    // As the program opens window 1: the file is read, the window restored and shown.
    void Restore() {
        session_.Load(file_);
        session_.Counter = 0;
        window_ = MakeObject<frmDemo2>(session_);
        const Variant restored =
            session_.Bag().ReadProperty(PropBagSession::EntryName(1), {.Default = window_});
        EXPECT_EQ(restored.AsObject().Get(), Ref<Object>(window_).Get()) << "restored in place";
    }
    void Open() {
        Restore();
        window_->ShowOwned(owner_.Get());
        EXPECT_TRUE(QTest::qWaitForWindowActive(window_.Get()));
        // Nobody drags a window that has no title bar yet.
        const bool bare = QGuiApplication::platformName() != QStringLiteral("xcb");
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return window_->FrameSettled() &&
                   (bare || !window_->windowHandle()->frameMargins().isNull());
        }));
    }
    void Close() {
        window_->Unload();
        window_ = nullptr;
        session_.Save(file_);
        QCoreApplication::sendPostedEvents();
    }
    template <class W = QWidget>
    [[nodiscard]] W* At(const char* name) const {
        return Control<W>(window_.Get(), name);
    }
    // The words under which window 1 is kept: all eight properties at once.
    Variant Stored() { return session_.Bag().Item(u"DemoZVPropertyBag1"); }

    // The windows that are open, lowest number first.
    static std::vector<frmDemo2*> OpenWindows() {
        std::vector<frmDemo2*> open;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* form = qobject_cast<frmDemo2*>(window);
            if (form && form->isVisible()) open.push_back(form);
        }
        std::ranges::sort(open, {}, &frmDemo2::Number);
        return open;
    }
    // The window of that number, after the button of `from` was pressed.
    static frmDemo2* Next(frmDemo2* from, std::int32_t number) {
        Click(Control(from, "cmdShowNext"));
        const std::vector<frmDemo2*> open = OpenWindows();
        const auto next = std::ranges::find(open, number, &frmDemo2::Number);
        if (next == open.end()) throw std::logic_error("no next window");
        EXPECT_TRUE(QTest::qWaitForWindowExposed(*next));
        EXPECT_TRUE(QTest::qWaitFor([&] { return (*next)->FrameSettled(); }));
        return *next;
    }

    Ref<Form> owner_;       // on the screen, or none
    Ref<frmDemo2> window_;  // number 1, or none
    QTemporaryDir folder_;
    std::filesystem::path file_ = folder_.filePath(QStringLiteral("PropBag.dat")).toStdU16String();
    PropBagSession session_;
    AnsweringDialogs dialogs_;
};

}  // namespace zorvane::test
