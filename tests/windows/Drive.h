#pragma once
// Driving windows as a person would: real events, also from inside a modal window's own loop.

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

#include <functional>

#include "program/forms/Form.h"
#include "program/forms/ListView.h"
#include "program/forms/Screen.h"

namespace zorvane::test {

// Through the window system, so that a modal window, a hidden control or another one on top of it
// stops the click.
inline void Click(QWidget* control, QPoint at = QPoint(-1, -1)) {
    ASSERT_NE(control, nullptr);
    QWidget* window = control->window();
    if (at.x() < 0) at = control->rect().center();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, control->mapTo(window, at));
}

// `index`: of the element of a control array.
template <class T = QWidget>
T* Control(const QWidget* window, const char* name, int index = -1) {
    for (T* one : window->findChildren<T*>(QLatin1String(name))) {
        if (index < 0 || one->property("Index") == index) return one;
    }
    ADD_FAILURE() << "no " << name << "(" << index << ")";
    return nullptr;
}

inline QStringList ColumnOf(const ListView& list, int column) {
    QStringList cells;
    for (int row = 1; row <= list.RowCount(); ++row) cells << list.Cell(row, column);
    return cells;
}

// Runs `act` once, as soon as a modal T is on the screen and active. Made before the call that
// opens the window. Never hangs: a failed check, or a window that does not come, closes what is
// open.
template <class T>
class WhenModal : public QObject {
  public:
    explicit WhenModal(std::function<void(T&)> act) : act_(std::move(act)) { startTimer(5); }
    ~WhenModal() override { EXPECT_TRUE(done_) << "the window never came"; }

  protected:
    void timerEvent(QTimerEvent* event) override {
        QWidget* top = QApplication::activeModalWidget();
        auto* wanted = dynamic_cast<T*>(top);
        const bool ready = wanted && top->windowHandle() && top->windowHandle()->isExposed() &&
                           top->isActiveWindow();
        if (!ready && --patience_ > 0) return;
        killTimer(event->timerId());
        done_ = ready;
        if (ready) act_(*wanted);
        if (ready && !testing::Test::HasFailure()) return;
        while (QWidget* open = QApplication::activeModalWidget()) {
            if (!open->close()) break;
        }
    }

  private:
    std::function<void(T&)> act_;
    int patience_ = 1000;
    bool done_ = false;
};

// Every test starts with a pointer that no window shows as it opens and leaves no window behind.
class WindowTest : public testing::Test {
  protected:
    void SetUp() override { Screen::The().SetMousePointer(Pointer::Arrow); }
    void TearDown() override {
        QCoreApplication::sendPostedEvents();
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (const auto* form = dynamic_cast<const Form*>(window)) {
                EXPECT_FALSE(form->Loaded()) << form->objectName().toStdString();
            }
        }
        Screen::The().SetMousePointer(Pointer::Default);
    }
};

inline bool Shown(Form& form) {
    form.ShowOwned();
    return QTest::qWaitForWindowActive(&form);
}

// One window, on the screen before the test begins.
template <class T>
class ShownWindowTest : public WindowTest {
  protected:
    explicit ShownWindowTest(Ref<T> window = MakeObject<T>()) : window_(std::move(window)) {}
    void SetUp() override {
        WindowTest::SetUp();
        ASSERT_TRUE(Shown(*window_));
    }
    void TearDown() override {
        window_->Unload();
        window_ = nullptr;
        WindowTest::TearDown();
    }
    template <class W = QWidget>
    [[nodiscard]] W* At(const char* name, int index = -1) const {
        return Control<W>(window_.Get(), name, index);
    }
    void Press(const char* name, int index = -1) const { Click(At(name, index)); }

    Ref<T> window_;
};

}  // namespace zorvane::test
