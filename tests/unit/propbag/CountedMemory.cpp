#include "tests/unit/propbag/CountedMemory.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::size_t inUse = 0;
std::size_t peak = 0;
long untilFailure = 0;  // 0 = none is to fail
bool failed = false;

constexpr std::size_t kHead = alignof(std::max_align_t);  // keeps the size in front of each block

void* Allocate(std::size_t size) {
    if (untilFailure > 0 && --untilFailure == 0) {
        failed = true;
        throw std::bad_alloc();
    }
    auto* block = static_cast<unsigned char*>(std::malloc(size + kHead));
    if (!block) throw std::bad_alloc();
    *reinterpret_cast<std::size_t*>(block) = size;
    inUse += size;
    peak = std::max(peak, inUse);
    return block + kHead;
}

void Free(void* at) noexcept {
    if (!at) return;
    unsigned char* block = static_cast<unsigned char*>(at) - kHead;
    inUse -= *reinterpret_cast<std::size_t*>(block);
    std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
void operator delete(void* at) noexcept {
    Free(at);
}
void operator delete(void* at, std::size_t) noexcept {
    Free(at);
}
void operator delete[](void* at) noexcept {
    Free(at);
}
void operator delete[](void* at, std::size_t) noexcept {
    Free(at);
}

namespace zorvane::memory {

std::size_t InUse() noexcept {
    return inUse;
}

std::size_t Peak() noexcept {
    return peak;
}

void ResetPeak() noexcept {
    peak = inUse;
}

FailAllocation::FailAllocation(long k) noexcept {
    untilFailure = k;
    failed = false;
}

FailAllocation::~FailAllocation() {
    untilFailure = 0;
}

bool FailAllocation::Happened() noexcept {
    return failed;
}

}  // namespace zorvane::memory
