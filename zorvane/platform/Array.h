#pragma once
/// \class zorvane::Array
/// A one-dimensional array of one element type, as a tagged value holds it.
///
/// Copies share the elements until one of them is written (copy on write). Elements are contiguous:
/// numbers as their own bytes, texts as Text, tagged values as Variant, objects as `Ref<Object>`.
///
/// Threads: different ones, copies too, may be used at once, and const members of one at once.

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/VarType.h"

namespace zorvane {

class Variant;

class ZORVANE_EXPORT Array {
  public:
    /// An array of no elements and no type; a tagged value never holds it.
    constexpr Array() noexcept = default;
    /// `count` zero elements at positions lower..lower+count-1. Raises 5 for an element type that
    /// cannot stand in an array, 9 when count is negative or the upper bound leaves 32 bits.
    Array(VarType element, std::int32_t lower, std::int32_t count);
    /// The same with the bytes of numeric elements left unset: for a caller that writes them all.
    static Array Uninitialised(VarType element, std::int32_t lower, std::int32_t count);
    static Array OfWords(std::span<const std::int16_t> words);  ///< 16-bit integers from 0; copies

    Array(const Array& other) noexcept;
    Array(Array&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    Array& operator=(Array other) noexcept {
        std::swap(block_, other.block_);
        return *this;
    }
    ~Array();

    /// Element `index`, as a tagged value. Raises 9 outside the bounds.
    [[nodiscard]] Variant At(std::int32_t index) const;
    /// The elements as bytes; only for numeric element types (raises 13 otherwise).
    [[nodiscard]] std::span<const std::byte> Bytes() const;
    [[nodiscard]] std::int32_t Count() const noexcept;
    [[nodiscard]] std::size_t ElementSize() const noexcept;  ///< bytes in memory
    [[nodiscard]] VarType ElementType() const noexcept;
    /// Whether another array has the same elements in common with this one.
    [[nodiscard]] bool IsShared() const noexcept;
    [[nodiscard]] std::int32_t LowerBound() const noexcept;
    /// As Bytes, to be written: unshares first. The span lives until the array is copied or
    /// assigned.
    [[nodiscard]] std::span<std::byte> MutableBytes();
    /// Converts to the element type (raises 6 or 13) and stores; raises 9 outside the bounds.
    void SetAt(std::int32_t index, const Variant& value);
    [[nodiscard]] std::int32_t UpperBound() const noexcept;
    /// The elements of an array of 16-bit integers; raises 13 for any other.
    [[nodiscard]] std::span<const std::int16_t> Words() const;

    /// The typed elements of an array whose memory type is T (Text, Variant, `Ref<Object>`);
    /// unchecked.
    template <class T>
    [[nodiscard]] std::span<const T> Elements() const noexcept {
        return {static_cast<const T*>(Data()), static_cast<std::size_t>(Count())};
    }
    template <class T>
    [[nodiscard]] std::span<T> MutableElements() {
        Unshare();
        return {static_cast<T*>(const_cast<void*>(Data())), static_cast<std::size_t>(Count())};
    }

    /// Same element type, bounds and elements. Allocates for arrays within arrays only; two that
    /// meet again and again, as others hold them, are compared once.
    friend ZORVANE_EXPORT bool operator==(const Array& left, const Array& right);

  private:
    struct Block;
    static Block* Allocate(VarType element, std::int32_t lower, std::int32_t count, bool zeroed);
    const void* Data() const noexcept;
    static void Free(Block* block) noexcept;
    static Block* LastReferenceOf(Variant& value) noexcept;
    using Pair = std::pair<const Array*, const Array*>;
    static bool SameButInner(const Array& left, const Array& right, std::vector<Pair>& inner);
    void Unshare();

    Block* block_ = nullptr;
};

/// Bytes that one element of the type takes in memory; 0 for a type that cannot stand in an array.
[[nodiscard]] ZORVANE_EXPORT std::size_t ArrayElementSize(VarType element) noexcept;

}  // namespace zorvane
