#include "tests/support/AllocationFaults.h"

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

namespace {

// Of each thread its own: who counts is alone.
thread_local std::int64_t allocations = 0;
thread_local std::int64_t bytes = 0;
thread_local std::int64_t held = 0;
thread_local std::int64_t failingOne = 0;  // counted down; 0: none
thread_local bool hasFailed = false;

void Note(std::size_t size) {
    ++allocations;
    bytes += static_cast<std::int64_t>(size);
    ++held;
    if (failingOne == 0 || --failingOne != 0) return;
    --held;
    hasFailed = true;
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
    Note(size);
    if (void* block = std::malloc(size != 0 ? size : 1)) return block;
    throw std::bad_alloc();
}
// Large blocks ask this way. In front of one stands what malloc gave.
void* operator new(std::size_t size, std::align_val_t alignment) {
    Note(size);
    std::size_t room = size + static_cast<std::size_t>(alignment);
    void* const given = std::malloc(room + sizeof given);
    if (!given) throw std::bad_alloc();
    void* block = static_cast<void**>(given) + 1;
    std::align(static_cast<std::size_t>(alignment), size, block, room);
    static_cast<void**>(block)[-1] = given;
    return block;
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
    held -= block ? 1 : 0;
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    ::operator delete(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
    ::operator delete(block ? static_cast<void**>(block)[-1] : nullptr);
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

std::int64_t AllocationsHeld() noexcept {
    return held;
}

std::int64_t AllocatedBytes() noexcept {
    return bytes;
}

}  // namespace zorvane
