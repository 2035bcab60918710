#include "tests/support/AllocationFaults.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

std::int64_t allocations = 0;
std::int64_t bytes = 0;
std::int64_t failingOne = 0;  // counted down; 0: none
bool hasFailed = false;

}  // namespace

void* operator new(std::size_t size) {
    return ::operator new(size, std::align_val_t(alignof(std::max_align_t)));
}
// Large blocks ask this way.
void* operator new(std::size_t size, std::align_val_t alignment) {
    ++allocations;
    bytes += static_cast<std::int64_t>(size);
    if (failingOne != 0 && --failingOne == 0) {
        hasFailed = true;
        throw std::bad_alloc();
    }
    void* block = nullptr;
    if (posix_memalign(&block, static_cast<std::size_t>(alignment), size) == 0) return block;
    throw std::bad_alloc();
}
// The library's stable sort asks this way, and gets by with nothing.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return ::operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
    std::free(block);
}

namespace zorvane {

void FailAllocation(std::int64_t number) noexcept {
    failingOne = number;
    hasFailed = false;
}

bool AllocationHasFailed() noexcept {
    return hasFailed;
}

std::int64_t AllocationCount() noexcept {
    return allocations;
}

std::int64_t AllocatedBytes() noexcept {
    return bytes;
}

}  // namespace zorvane
