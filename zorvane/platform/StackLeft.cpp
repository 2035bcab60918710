#include "zorvane/platform/StackLeft.h"

#include <cstdint>

#ifdef __linux__
#include <pthread.h>
#endif

namespace zorvane {
namespace {

// Addresses; a stack grows towards the lower one.
struct Stack {
    std::uintptr_t End = 0;
    std::uintptr_t Begin = 0;
};

Stack StackOfThisThread() noexcept {
    Stack stack;
#ifdef __linux__
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return stack;
    void* lowest = nullptr;
    std::size_t size = 0;
    std::size_t guard = 0;
    if (pthread_attr_getstack(&attributes, &lowest, &size) == 0 &&
        pthread_attr_getguardsize(&attributes, &guard) == 0) {
        const auto address = reinterpret_cast<std::uintptr_t>(lowest);
        stack = {address + guard, address + size};
    }
    pthread_attr_destroy(&attributes);
#endif
    return stack;
}

}  // namespace

std::optional<std::size_t> StackLeft() noexcept {
    static thread_local const Stack stack = StackOfThisThread();
    // Not the address of a local, which a sanitizer may keep elsewhere.
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    if (here <= stack.End || here >= stack.Begin) return std::nullopt;
    return here - stack.End;
}

}  // namespace zorvane
