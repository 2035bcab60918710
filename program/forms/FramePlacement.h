#pragma once
// FramePlacement: a window's outer frame in twips, restored exactly and read back without drift.
//
// An assigned side is given back as the very float that was assigned until the person moves or
// sizes the window in that direction, whatever pixels the assignment came down to. So a change of
// scale, a window manager with thicker borders, a desktop that hides positions or a monitor that is
// gone loses nothing.

#include <QMargins>
#include <QRect>
#include <optional>

#include "program/forms/Twips.h"

class QWidget;

namespace zorvane {

class FramePlacement {
  public:
    explicit FramePlacement(QWidget& window) : window_(window) {}

    [[nodiscard]] TwipRect Frame() const;
    void SetHeight(float twips) { Assign(wanted_.Height, twips); }
    void SetLeft(float twips) { Assign(wanted_.Left, twips); }
    void SetTop(float twips) { Assign(wanted_.Top, twips); }
    void SetWidth(float twips) { Assign(wanted_.Width, twips); }

    // Left or Top has been assigned: nobody else places the window.
    [[nodiscard]] bool Placed() const noexcept { return wanted_.Left || wanted_.Top; }
    // The window has been moved, sized or activated, or its state has changed. Other borders than
    // before are believed only where they last.
    void Noticed(bool itLasts = false);
    // The window has been shown: the thickness of its borders can now be learnt.
    void Shown();
    // No step of an assignment is outstanding.
    [[nodiscard]] bool Settled() const noexcept { return stepsLeft_ == 0; }
    // The frame in pixels.
    [[nodiscard]] QRect Outer() const { return Now().Outer; }
    // The borders that windows of this program were last given.
    [[nodiscard]] static QMargins UsualBorders() noexcept;

  private:
    struct Sides {
        std::optional<float> Left, Top, Width, Height;
        [[nodiscard]] bool Any() const noexcept { return Left || Top || Width || Height; }
    };
    struct Pixels {
        QRect Outer;
        QRect Inner;
    };

    void Apply(const QMargins& borders);
    void Assign(std::optional<float>& side, float twips);
    void ScheduleStep(int milliseconds);
    void Step();
    [[nodiscard]] Pixels Now() const;

    QWidget& window_;
    Sides wanted_;
    Pixels applied_;  // what the assignment came down to
    // The inner rectangle and what was around it while last neither maximised nor minimised.
    QRect ordinary_;
    QMargins ordinaryBorders_;
    int stepsLeft_ = 0;
};

// Where a frame is really put: moved onto a screen when too little of its title bar would be seen,
// and as large as all screens together where it would be far larger.
[[nodiscard]] QRect WithinReach(QRect frame);

}  // namespace zorvane
