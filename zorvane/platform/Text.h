#pragma once
/// \class zorvane::Text
/// An immutable, counted UTF-16 text behind one pointer.
///
/// Null means empty; copying counts a reference and never copies units, so that one text may have
/// 2^31 - 1 copies at once (16 GiB of them) and must not have more. Any unit may stand in a text,
/// U+0000 and lone surrogates included. A Text may be moved as raw bytes (see
/// zorvane/platform/Relocate.h).
///
/// Threads: different ones, copies too, may be used at once, and const members of one at once.

#include <algorithm>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/SharedCount.h"
#include "zorvane/platform/Units.h"

namespace zorvane {

class Text;
template <class T>
concept ViewsAsUnits =
    std::is_convertible_v<const T&, std::u16string_view> && !std::is_same_v<T, Text>;

class ZORVANE_EXPORT Text {
  public:
    using Relocatable = void;

    /// Units that a text has at most, so that positions and byte counts stay within 32 bits. Where
    /// more would have to be made, std::length_error is raised.
    static constexpr std::uint32_t kGreatestLength = 0x3FFFFFFF;

    constexpr Text() noexcept = default;
    Text(std::u16string_view units);  ///< O(n), one allocation
    Text(const std::u16string& units) : Text(std::u16string_view(units)) {}
    Text(const char16_t* units) : Text(std::u16string_view(units)) {}  ///< up to U+0000
    Text(std::string_view utf8);  ///< O(n), one allocation; each malformed byte becomes U+FFFD
    Text(const std::string& utf8) : Text(std::string_view(utf8)) {}
    Text(const char* utf8) : Text(std::string_view(utf8)) {}
    Text(std::u8string_view utf8)
        : Text(std::string_view(reinterpret_cast<const char*>(utf8.data()), utf8.size())) {}
    Text(const std::u8string& utf8) : Text(std::u8string_view(utf8)) {}
    Text(const char8_t* utf8) : Text(std::u8string_view(utf8)) {}
    Text(std::nullptr_t) = delete;
    Text(const Text& other) noexcept : block_(other.block_) { Retain(); }
    Text(Text&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    Text& operator=(const Text& other) noexcept {
        Text copy(other);
        swap(*this, copy);
        return *this;
    }
    Text& operator=(Text&& other) noexcept {
        Text taken(std::move(other));
        swap(*this, taken);
        return *this;
    }
    ~Text() { Release(); }

    /// A text of `length` units, all of which `fill(char16_t*)` writes; not called for none.
    template <class Fill>
    static Text Make(std::size_t length, Fill&& fill) {
        Text made(Allocate(length));
        if (length != 0) fill(made.block_->Units());
        return made;
    }

    [[nodiscard]] bool Empty() const noexcept { return block_ == nullptr; }
    /// A hash of the units without regard to case, never 0: equal for texts that CompareTexts finds
    /// equal in mode Text and for texts with equal LowerCase. Another in every process. Computed
    /// once per block. O(n), then O(1).
    [[nodiscard]] std::uint32_t FoldedHash() const noexcept {
        if (block_) [[likely]] {
            const std::uint32_t known = block_->foldedHash.Get();
            if (known != 0) [[likely]]
                return known;
        }
        return ComputeFoldedHash();
    }
    /// Brings the text near: a hint, for whoever will read it soon.
    void Fetch() const noexcept { __builtin_prefetch(block_, 1); }
    [[nodiscard]] std::int32_t Length() const noexcept {
        return block_ ? static_cast<std::int32_t>(block_->length) : 0;
    }
    /// True when both name the same block; never compares units.
    [[nodiscard]] bool SharesWith(const Text& other) const noexcept {
        return block_ == other.block_;
    }
    [[nodiscard]] std::u16string_view Units() const noexcept {
        return block_ ? std::u16string_view(block_->units, block_->length) : std::u16string_view();
    }
    /// UTF-8; a lone surrogate becomes U+FFFD.
    [[nodiscard]] std::string ToUtf8() const;
    operator std::u16string_view() const noexcept { return Units(); }

    friend ZORVANE_EXPORT Text operator+(const Text& left, const Text& right);
    Text& operator+=(const Text& more) { return *this = *this + more; }  ///< O(n), a new block
    friend bool operator==(const Text& left, const Text& right) noexcept {
        return left.block_ == right.block_ || SameUnits(left.Units(), right.Units());
    }
    /// By units, unsigned: the order of keys that are compared binary.
    friend std::strong_ordering operator<=>(const Text& left, const Text& right) noexcept {
        return left.Units() <=> right.Units();
    }
    /// The same with what views as units, of which no text is made.
    template <ViewsAsUnits T>
    friend bool operator==(const Text& left, const T& right) noexcept {
        return left.Units() == std::u16string_view(right);
    }
    template <ViewsAsUnits T>
    friend std::strong_ordering operator<=>(const Text& left, const T& right) noexcept {
        return left.Units() <=> std::u16string_view(right);
    }
    friend void swap(Text& left, Text& right) noexcept { std::swap(left.block_, right.block_); }
    friend ZORVANE_EXPORT std::ostream& operator<<(std::ostream& out, const Text& text);

  private:
    friend class KeyInPlace;
    friend class TextMaker;
    struct Block {
        Block(std::uint32_t counted, std::uint32_t unitCount) noexcept
            : references(counted), length(unitCount) {}

        SharedCount<std::uint32_t> references;  // and kInSlab
        std::uint32_t length;
        Remembered<std::uint32_t> foldedHash;  // 0 = not computed yet
        char16_t units[2];                     // really `length` of them

        // To be written: a compiler that sees the array take more than two would warn.
        [[nodiscard]] char16_t* Units() noexcept {
            return reinterpret_cast<char16_t*>(reinterpret_cast<std::byte*>(this) +
                                               offsetof(Block, units));
        }
    };

    // Beside the count: a TextMaker made it, and the memory is not its own.
    static constexpr std::uint32_t kInSlab = 0x80000000u;

    explicit Text(Block* block) noexcept : block_(block) {}
    // Units unset; null for 0. Throws std::length_error and std::bad_alloc.
    static Block* Allocate(std::size_t length);
    static Block* Begin(void* place, std::size_t length, std::uint32_t mark = 0) noexcept {
        return new (place) Block(mark | 1, static_cast<std::uint32_t>(length));
    }
    // Of a block, in bytes.
    [[nodiscard]] static std::size_t SizeOf(std::size_t length) noexcept {
        return std::max(sizeof(Block), offsetof(Block, units) + length * sizeof(char16_t));
    }
    std::uint32_t ComputeFoldedHash() const noexcept;
    static void Free(Block* block) noexcept;
    void Release() noexcept {
        // Shifted, what is left of the mark and a count of none is 0.
        if (block_ && (block_->references.Take() << 1) == 0) Free(block_);
    }
    void Retain() const noexcept {
        if (block_) block_->references.Add();
    }

    Block* block_ = nullptr;
};

static_assert(sizeof(Text) == sizeof(void*));

}  // namespace zorvane

/// Of the units as they are. O(n).
template <>
struct std::hash<zorvane::Text> {
    [[nodiscard]] std::size_t operator()(const zorvane::Text& text) const noexcept {
        return std::hash<std::u16string_view>()(text.Units());
    }
};
