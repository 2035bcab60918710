// Frames: the same eight numbers after any number of openings, whatever the window manager adds.
// That the display shows what the toolkit tells is the tour's to see.

#include <utility>

#include "program/app/FrmMainDemo.h"
#include "tests/windows/propbag/PropBagFixture.h"

namespace zorvane::test {
namespace {

// As the window system told it: on a busy machine a widget keeps borders from before it had any.
QRect FrameOf(const QWidget& window) {
    return window.windowHandle()->frameGeometry();
}

// The frame once it stands still.
QRect StillFrame(const QWidget& window) {
    QRect before;
    QRect now = FrameOf(window);
    do {
        QTest::qWait(100);
        before = std::exchange(now, FrameOf(window));
    } while (now != before);
    return now;
}

QRect ToldFrame(const Form& window) {
    return {ToPixels(window.Left()), ToPixels(window.Top()), ToPixels(window.Width()),
            ToPixels(window.Height())};
}

class FramesTest : public PropBagTest {
  protected:
    void SetUp() override {
        PropBagTest::SetUp();
        owner_ = MakeObject<FrmMainDemo>();  // before the first of them, as in the program
        ASSERT_TRUE(Shown(*owner_));
    }
};

TEST_F(FramesTest, EachMoveIsFoundAgainExactlyAtEveryReopening) {
    for (int move = 0; move < 8; ++move) {
        Open();
        const QSize size(400 + 39 * move, 300 + 31 * move);
        const QPoint place(20 + 29 * move, 15 + 23 * move);
        // As a person drags it, who waits until it stands: before, the window manager may still be
        // placing it, and takes the place that is asked for as that of the inner window.
        static_cast<void>(StillFrame(*window_));
        window_->move(place);
        window_->resize(size);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return window_->size() == size && FrameOf(*window_).topLeft() == place; }));
        const QRect frame = StillFrame(*window_);
        Close();
        const Variant stored = Stored();
        for (int cycle = 0; cycle < (move == 0 ? 10 : 2); ++cycle) {
            SCOPED_TRACE(testing::Message() << "move " << move << ", cycle " << cycle);
            session_ = PropBagSession();
            Open();
            ASSERT_TRUE(QTest::qWaitFor([&] { return FrameOf(*window_) == frame; }));
            Close();
            ASSERT_TRUE(Stored() == stored);
        }
    }
}

// As the program shows it: modal, over the main window, with another one beside it.
TEST_F(FramesTest, WhatIsToldIsWhatIsOnTheScreen) {
    for (int opening = 1; opening <= 2; ++opening) {
        SCOPED_TRACE(opening);
        Restore();
        const QRect wanted = ToldFrame(*window_);
        WhenModal<frmDemo2> act([&](frmDemo2& first) {
            EXPECT_TRUE(QTest::qWaitFor([&] { return ToldFrame(first) == FrameOf(first); }));
            if (opening > 1) {
                EXPECT_EQ(ToldFrame(first), wanted);
            }
            const frmDemo2* second = Next(&first, 2);
            EXPECT_TRUE(QTest::qWaitFor([&] { return ToldFrame(*second) == FrameOf(*second); }));
            const bool beside = second->Left() > first.Left() + first.Width();
            EXPECT_EQ(second->Top() == first.Top(), beside);
            first.Unload();
        });
        window_->ShowModal(owner_.Get());
        session_.Save(file_);
    }
}

// The window manager tells the frame and the state one by one, and on a busy machine the frame of a
// maximised window comes long before it is said to be maximised.
TEST_F(FramesTest, AMaximisedWindowComesBackAtItsOrdinarySize) {
    for (const bool frameFirst : {false, true}) {
        SCOPED_TRACE(frameFirst);
        Open();
        static_cast<void>(StillFrame(*window_));
        const TwipRect before{window_->Left(), window_->Top(), window_->Width(), window_->Height()};
        if (frameFirst) window_->setGeometry(window_->screen()->availableGeometry());
        window_->showMaximized();
        ASSERT_TRUE(QTest::qWaitFor([&] {
            return window_->isMaximized() &&
                   FrameOf(*window_).width() > 15 + ToPixels(before.Width);
        }));
        Close();
        Open();
        const TwipRect now{window_->Left(), window_->Top(), window_->Width(), window_->Height()};
        EXPECT_EQ(now, before) << "with the borders of a maximised window, or its size";
        Close();
    }
}

}  // namespace
}  // namespace zorvane::test
