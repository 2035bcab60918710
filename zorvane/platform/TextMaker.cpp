#include "zorvane/platform/TextMaker.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace zorvane {

// The first text stands alone: often there is no second.
Text::Block* TextMaker::PlaceElsewhere(std::size_t length) {
    if (size_ == 0) {
        size_ = next_ = kFirstSlab / 2;
        return Text::Allocate(length);
    }
    const std::size_t size = std::min(size_ * 2, kLargestSlab);
    auto* const slab = new (::operator new(size)) Slab{SharedCount(kMostTexts)};
    if (slab_) LeaveAsMaker();
    slab_ = slab;
    unmade_ = kMostTexts;
    size_ = size;
    next_ = kHeader;
    return Place(length);
}

void TextMaker::Leave(Slab* slab, std::uint16_t users) noexcept {
    if (slab->users.Take(users) == 0) ::operator delete(static_cast<void*>(slab));
}

void TextMaker::Release(Text::Block* block) noexcept {
    std::byte* const place = reinterpret_cast<std::byte*>(block);
    Distance distance = 0;
    std::memcpy(&distance, place - sizeof distance, sizeof distance);
    Leave(reinterpret_cast<Slab*>(place - distance), 1);
}

}  // namespace zorvane
