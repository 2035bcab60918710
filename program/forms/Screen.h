#pragma once
// Screen: the one desktop that the program's windows share; it holds the mouse pointer.
//
// The pointer is a single value, not a stack: whoever assigns last decides for every window.

namespace zorvane {

enum class Pointer : int { Default = 0, Arrow = 1, Hourglass = 11 };

class Screen {
  public:
    static Screen& The();

    [[nodiscard]] Pointer MousePointer() const noexcept { return pointer_; }
    // Seen at once, also while a handler keeps the program busy.
    void SetMousePointer(Pointer value);

  private:
    Screen() = default;

    Pointer pointer_ = Pointer::Default;
};

}  // namespace zorvane
