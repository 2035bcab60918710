#include <sys/mman.h>

#include "zorvane/platform/detail/System.h"

namespace zorvane {

std::tm LocalTime(std::time_t time) {
    std::tm local{};
    localtime_r(&time, &local);
    return local;
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
