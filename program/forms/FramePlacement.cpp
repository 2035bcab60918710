#include "program/forms/FramePlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <cmath>

namespace zorvane {
namespace {

constexpr int kSteps = 20;
constexpr int kStepTime = 10;        // milliseconds
constexpr int kTimeForState = 1000;  // milliseconds

QMargins usualBorders;

// What the window manager has put around a window; nothing while that is not known. In between, the
// toolkit takes the whole screen for the frame: borders that no person would bear are no borders.
QMargins BordersOf(const QWidget& window) {
    constexpr int kThickest = 100;
    const QWindow* handle = window.windowHandle();
    if (!handle) return {};
    const QMargins borders = handle->frameMargins();
    for (const int side : {borders.left(), borders.top(), borders.right(), borders.bottom()}) {
        if (side < 0 || side > kThickest) return {};
    }
    return borders;
}

bool IsPlain(const QWidget& window) {
    return !(window.windowState() &
             (Qt::WindowMaximized | Qt::WindowMinimized | Qt::WindowFullScreen));
}

// A frame and the state that it belongs to come as two messages, in either order and, on a busy
// machine, far apart: a frame as large as the screen may be that of a state not yet told.
bool FillsScreen(const QWidget& window, const QRect& outer) {
    constexpr int kRounding = 2;
    const QSize room = window.screen()->availableGeometry().size();
    return outer.width() >= room.width() - kRounding && outer.height() >= room.height() - kRounding;
}

}  // namespace

QRect WithinReach(QRect frame) {
    constexpr int kTitleHeight = 24;
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (!primary) return frame;
    const QRect desktop = primary->availableVirtualGeometry();
    const auto into = [](int from, int room, int length, int wish) {
        return std::clamp(wish, from, std::max(from, from + room - length));
    };
    // Far beyond all screens its edges could not be reached to make it smaller; a little beyond is
    // what a person may have wanted.
    const auto far = [](int length, int room) { return 2 * length > 3 * room; };
    if (far(frame.width(), desktop.width())) {
        frame.setWidth(desktop.width());
        frame.moveLeft(desktop.left());
    }
    if (far(frame.height(), desktop.height())) {
        frame.setHeight(desktop.height());
        frame.moveTop(desktop.top());
    }
    const QRect title(frame.x(), frame.y(), frame.width(), kTitleHeight);
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect seen = title & screen->availableGeometry();
        if (seen.width() >= 64 && seen.height() >= 16) return frame;
    }
    const QRect area = primary->availableGeometry();
    frame.moveLeft(into(area.left(), area.width(), frame.width(), frame.left()));
    frame.moveTop(into(area.top(), area.height(), frame.height(), frame.top()));
    return frame;
}

QMargins FramePlacement::UsualBorders() noexcept {
    return usualBorders;
}

TwipRect FramePlacement::Frame() const {
    const Pixels now = Now();
    const bool pending = stepsLeft_ != 0;
    // Borders may come later than anyone waits for: a side counts as untouched while either the
    // outer or the inner edge is where the assignment left it.
    const auto side = [pending](const std::optional<float>& wanted, int outer, int outerThen,
                                int inner, int innerThen) {
        const bool untouched = pending || outer == outerThen || inner == innerThen;
        return wanted && untouched ? *wanted : ToTwips(outer);
    };
    const auto& [outer, inner] = now;
    const auto& [outerThen, innerThen] = applied_;
    return {side(wanted_.Left, outer.x(), outerThen.x(), inner.x(), innerThen.x()),
            side(wanted_.Top, outer.y(), outerThen.y(), inner.y(), innerThen.y()),
            side(wanted_.Width, outer.width(), outerThen.width(), inner.width(), innerThen.width()),
            side(wanted_.Height, outer.height(), outerThen.height(), inner.height(),
                 innerThen.height())};
}

// The toolkit's own memory of it takes a maximised frame that comes before its state for an
// ordinary one.
void FramePlacement::Noticed(bool itLasts) {
    if (!IsPlain(window_) || FillsScreen(window_, Now().Outer)) return;
    const QMargins borders = BordersOf(window_);
    const bool strange =
        !borders.isNull() && !ordinaryBorders_.isNull() && borders != ordinaryBorders_;
    if (strange && !itLasts) {
        // Of a state not yet told, or for good because the person has chosen another theme.
        QTimer::singleShot(kTimeForState, &window_, [this] { Noticed(true); });
        return;
    }
    ordinary_ = window_.geometry();
    if (!borders.isNull()) ordinaryBorders_ = usualBorders = borders;
}

void FramePlacement::Shown() {
    if (!wanted_.Any()) {
        QTimer::singleShot(kSteps * kStepTime, &window_, [this] { Noticed(); });
        return;
    }
    stepsLeft_ = kSteps;
    ScheduleStep(0);
}

void FramePlacement::Apply(const QMargins& borders) {
    const Pixels now = Now();
    const auto pixels = [](const std::optional<float>& side, int otherwise) {
        return side ? ToPixels(*side) : otherwise;
    };
    const QSize size = now.Inner.size().grownBy(borders);
    const QRect wish(pixels(wanted_.Left, now.Outer.x()), pixels(wanted_.Top, now.Outer.y()),
                     std::max(1, pixels(wanted_.Width, size.width())),
                     std::max(1, pixels(wanted_.Height, size.height())));
    const QRect frame = WithinReach(wish);
    const QRect inner(frame.topLeft() + QPoint(borders.left(), borders.top()),
                      frame.size().shrunkBy(borders).expandedTo(QSize(1, 1)));
    if (Placed()) {
        if (window_.geometry() != inner) window_.setGeometry(inner);
    } else if (window_.size() != inner.size()) {
        window_.resize(inner.size());
    }
    applied_ = Now();
}

void FramePlacement::Assign(std::optional<float>& side, float twips) {
    if (!std::isfinite(twips)) return;
    // The other sides may have been moved by the person since they were assigned.
    const TwipRect now = Frame();
    if (wanted_.Left) wanted_.Left = now.Left;
    if (wanted_.Top) wanted_.Top = now.Top;
    if (wanted_.Width) wanted_.Width = now.Width;
    if (wanted_.Height) wanted_.Height = now.Height;
    side = twips;
    if (window_.isVisible()) {
        stepsLeft_ = kSteps;
        Step();
    } else {
        Apply(usualBorders);
    }
}

void FramePlacement::ScheduleStep(int milliseconds) {
    QTimer::singleShot(milliseconds, &window_, [this] { Step(); });
}

// The borders are the window manager's and are known only some time after the window was mapped;
// waiting in a nested event loop would let other handlers in.
void FramePlacement::Step() {
    if (stepsLeft_ == 0) return;
    if (!window_.isVisible() || !window_.windowHandle() || !IsPlain(window_)) {
        stepsLeft_ = 0;  // a person who has maximised it already is not contradicted
        return;
    }
    --stepsLeft_;
    const QMargins borders = BordersOf(window_);
    if (!borders.isNull()) {
        Apply(borders);
        Noticed();
    }
    if (borders.isNull() && stepsLeft_ == 0) Apply(usualBorders);  // they come, but late
    const bool heard = !borders.isNull() && stepsLeft_ < kSteps - 5;
    if (heard && applied_.Outer.size() == Now().Inner.size().grownBy(borders)) stepsLeft_ = 0;
    if (stepsLeft_ != 0) ScheduleStep(kStepTime);
}

FramePlacement::Pixels FramePlacement::Now() const {
    const bool asItIs = IsPlain(window_) || ordinary_.isNull();
    const QRect inner = asItIs ? window_.geometry() : ordinary_;
    // A maximised window has borders of its own, which say nothing of the ordinary frame.
    const QMargins borders = asItIs ? BordersOf(window_) : ordinaryBorders_;
    return {inner.marginsAdded(borders.isNull() ? usualBorders : borders), inner};
}

}  // namespace zorvane
