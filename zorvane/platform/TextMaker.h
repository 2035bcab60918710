#pragma once
// TextMaker: makes texts that come in great numbers and mostly go together, as those of one stream.
//
// Short texts share slabs of memory, so that most of them cost no allocation of their own. A slab
// goes with the last of its texts, whether or not the maker still stands: whoever keeps a single
// text keeps at most kLargestSlab bytes.
//
// Threads: different ones may be used at once, and the texts of one as any others.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "zorvane/platform/Text.h"

namespace zorvane {

class TextMaker {
  public:
    static constexpr std::size_t kLargestSlab = 1024;  // bytes

    TextMaker() = default;
    TextMaker(const TextMaker&) = delete;
    TextMaker& operator=(const TextMaker&) = delete;
    ~TextMaker() {
        if (slab_) LeaveAsMaker();
    }

    // As Text::Make.
    template <class Fill>
    [[nodiscard]] Text Make(std::size_t length, Fill&& fill) {
        if (length == 0) return {};
        Text made(length <= kMostUnits ? Place(length) : Text::Allocate(length));
        fill(made.block_->Units());
        return made;
    }

  private:
    friend class Text;
    // What a slab begins with: its texts, all that it may ever have while the maker adds to it.
    struct Slab {
        SharedCount<std::uint16_t> users;
    };
    // In front of each block: how far behind the slab's begin it stands.
    using Distance = std::uint16_t;

    static constexpr std::size_t kMostUnits = 64;
    static constexpr std::uint16_t kMostTexts = kLargestSlab;  // of a slab: more than fit
    static constexpr std::size_t kFirstSlab = 256;
    static constexpr std::size_t kAlignment = alignof(Text::Block);
    static constexpr std::size_t kHeader = sizeof(Slab) + sizeof(Distance);
    static_assert(kHeader % kAlignment == 0 && kLargestSlab <= UINT16_MAX);

    static void Leave(Slab* slab, std::uint16_t users) noexcept;
    // Gives back the texts that were never made.
    void LeaveAsMaker() noexcept { Leave(slab_, unmade_); }
    static void Release(Text::Block* block) noexcept;
    [[nodiscard]] Text::Block* Place(std::size_t length) {
        const std::size_t size = Text::SizeOf(length);
        if (next_ + size > size_) [[unlikely]]
            return PlaceElsewhere(length);
        std::byte* const place = reinterpret_cast<std::byte*>(slab_) + next_;
        const auto distance = static_cast<Distance>(next_);
        std::memcpy(place - sizeof distance, &distance, sizeof distance);
        --unmade_;
        const std::size_t end = next_ + size + sizeof distance;
        next_ = (end + kAlignment - 1) / kAlignment * kAlignment;
        return Text::Begin(place, length, Text::kInSlab);
    }
    [[nodiscard]] Text::Block* PlaceElsewhere(std::size_t length);

    Slab* slab_ = nullptr;
    std::size_t size_ = 0;      // of the slab; 0: no text was made yet
    std::size_t next_ = 0;      // where its next block begins
    std::uint16_t unmade_ = 0;  // of those that its users are counted for
};

}  // namespace zorvane
