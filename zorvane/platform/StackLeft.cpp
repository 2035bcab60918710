#include "zorvane/platform/StackLeft.h"

#include <cstdint>

#include "zorvane/platform/detail/System.h"

namespace zorvane {

std::optional<std::size_t> StackLeft() noexcept {
    static thread_local const StackBounds stack = StackOfThisThread();
    // Not the address of a local, which a sanitizer may keep elsewhere.
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    if (here <= stack.End || here >= stack.Begin) return std::nullopt;
    return here - stack.End;
}

}  // namespace zorvane
