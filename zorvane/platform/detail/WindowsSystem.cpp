#include "zorvane/platform/detail/System.h"

namespace zorvane {

std::tm LocalTime(std::time_t time) {
    std::tm local{};
    localtime_s(&local, &time);
    return local;
}

// Large pages are for who has the right to lock memory.
void WishForLargePages(void*, std::size_t) noexcept {}

}  // namespace zorvane
