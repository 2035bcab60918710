#pragma once
// LargeArray: plain values side by side in a block of their own (zorvane/platform/LargeBlock.h),
// all zero at first.

#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>
#include <utility>

#include "zorvane/platform/LargeBlock.h"
#include "zorvane/platform/Relocate.h"

namespace zorvane {

template <class T>
class LargeArray {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    LargeArray() = default;
    explicit LargeArray(std::size_t size)
        : values_(static_cast<T*>(AllocateBlock(BytesOf(size)))), size_(size) {
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
    static std::size_t BytesOf(std::size_t size) {
        if (size > SIZE_MAX / sizeof(T)) throw std::bad_array_new_length();
        return size * sizeof(T);
    }

    T* values_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace zorvane
