#pragma once
// LargeBlock: memory for arrays, records and indexes. Large blocks ask the system for large pages:
// touching fresh memory page by page costs more than what is done with it, and so does finding the
// page of every place that is reached at random.

#include <cstddef>
#include <type_traits>
#include <utility>

#include "platform/Relocate.h"

namespace zorvane {

// From how many bytes on a block is large: below, what is left of its last page weighs more.
inline constexpr std::size_t kLargeBlock = std::size_t{4} << 20;

// `bytes` of memory, aligned for any scalar. Throws std::bad_alloc.
[[nodiscard]] void* AllocateBlock(std::size_t bytes);
// Gives back what AllocateBlock(bytes) gave, or nothing where block is null.
void FreeBlock(void* block, std::size_t bytes) noexcept;

// Plain values side by side in a block of their own, all zero at first.
template <class T>
class LargeArray {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    LargeArray() = default;
    explicit LargeArray(std::size_t size)
        : values_(static_cast<T*>(AllocateBlock(size * sizeof(T)))), size_(size) {
        ZeroFill(values_, size);
    }
    LargeArray(LargeArray&& other) noexcept { swap(*this, other); }
    LargeArray& operator=(LargeArray&& other) noexcept {
        LargeArray taken(std::move(other));
        swap(*this, taken);
        return *this;
    }
    ~LargeArray() { FreeBlock(values_, size_ * sizeof(T)); }

    [[nodiscard]] std::size_t Size() const noexcept { return size_; }
    [[nodiscard]] T& operator[](std::size_t at) const noexcept { return values_[at]; }
    friend void swap(LargeArray& left, LargeArray& right) noexcept {
        std::swap(left.values_, right.values_);
        std::swap(left.size_, right.size_);
    }

  private:
    T* values_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace zorvane
