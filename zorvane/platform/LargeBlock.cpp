#include "zorvane/platform/LargeBlock.h"

#include <new>

#include "zorvane/platform/detail/System.h"

namespace zorvane {
namespace {

constexpr std::size_t kLargePage = std::size_t{2} << 20;

}  // namespace

void* AllocateBlock(std::size_t bytes) {
    if (bytes < kLargeBlock) return ::operator new(bytes);
    void* const block = ::operator new(bytes, std::align_val_t(kLargePage));
    WishForLargePages(block, bytes);
    return block;
}

void FreeBlock(void* block, std::size_t bytes) noexcept {
    if (bytes < kLargeBlock) return ::operator delete(block);
    ::operator delete(block, std::align_val_t(kLargePage));
}

}  // namespace zorvane
