#include "zorvane/platform/LargeBlock.h"

#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace zorvane {
namespace {

constexpr std::size_t kLargePage = std::size_t{2} << 20;

}  // namespace

void* AllocateBlock(std::size_t bytes) {
    if (bytes < kLargeBlock) return ::operator new(bytes);
    void* const block = ::operator new(bytes, std::align_val_t(kLargePage));
#ifdef MADV_HUGEPAGE
    // A wish: where the system has no large pages, nothing else changes.
    static_cast<void>(madvise(block, bytes, MADV_HUGEPAGE));
#endif
    return block;
}

void FreeBlock(void* block, std::size_t bytes) noexcept {
    if (bytes < kLargeBlock) return ::operator delete(block);
    ::operator delete(block, std::align_val_t(kLargePage));
}

}  // namespace zorvane
