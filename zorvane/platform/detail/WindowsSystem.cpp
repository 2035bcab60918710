#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include "zorvane/platform/detail/System.h"

namespace zorvane {

std::tm LocalTime(std::time_t time) {
    std::tm local{};
    localtime_s(&local, &time);
    return local;
}

StackBounds StackOfThisThread() noexcept {
    ULONG_PTR lowest = 0;
    ULONG_PTR behind = 0;
    GetCurrentThreadStackLimits(&lowest, &behind);
    // Its last pages warn the system, which then needs room to end the program in order.
    constexpr std::uintptr_t kGuard = std::uintptr_t{16} << 10;
    return {static_cast<std::uintptr_t>(lowest) + kGuard, static_cast<std::uintptr_t>(behind)};
}

// Large pages are for who has the right to lock memory.
void WishForLargePages(void*, std::size_t) noexcept {}

}  // namespace zorvane
