#ifdef __linux__
#include <pthread.h>
#endif
#include <sys/mman.h>

#include "zorvane/platform/detail/System.h"

namespace zorvane {

std::tm LocalTime(std::time_t time) {
    std::tm local{};
    localtime_r(&time, &local);
    return local;
}

// Each Unix has a call of its own for this, and the others are not told of.
StackBounds StackOfThisThread() noexcept {
    StackBounds stack;
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

#ifdef MADV_HUGEPAGE
void WishForLargePages(void* block, std::size_t bytes) noexcept {
    static_cast<void>(madvise(block, bytes, MADV_HUGEPAGE));
}
#else
// Systems other than Linux either choose by themselves or have none for a block of ours.
void WishForLargePages(void*, std::size_t) noexcept {}
#endif

}  // namespace zorvane
