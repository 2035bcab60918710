#include "zorvane/platform/Text.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <ostream>
#include <stdexcept>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/TextMaker.h"
#include "zorvane/platform/detail/Utf8.h"

namespace zorvane {

Text::Text(std::u16string_view units) : block_(Allocate(units.size())) {
    if (block_) CopyUnits(block_->Units(), units.data(), units.size());
}

Text::Text(std::string_view utf8) {
    const bool ascii = IsAscii(utf8);
    block_ = Allocate(ascii ? utf8.size() : UnitsInUtf8(utf8));
    if (!block_) return;
    if (ascii) {
        WidenAscii(utf8, block_->Units());
    } else {
        DecodeUtf8(utf8, block_->Units());
    }
}

Text::Block* Text::Allocate(std::size_t length) {
    if (length == 0) return nullptr;
    if (length > kGreatestLength) throw std::length_error("Text: too many units");
    return Begin(::operator new(SizeOf(length)), length);
}

std::uint32_t Text::ComputeFoldedHash() const noexcept {
    const std::uint32_t hash = HashFolded(Units());
    if (block_) block_->foldedHash.Set(hash);
    return hash;
}

void Text::Free(Block* block) noexcept {
    if ((block->references.Now() & kInSlab) != 0) return TextMaker::Release(block);
    ::operator delete(static_cast<void*>(block));
}

std::string Text::ToUtf8() const {
    return EncodeUtf8(Units());
}

Text operator+(const Text& left, const Text& right) {
    if (left.Empty()) return right;
    if (right.Empty()) return left;
    const std::u16string_view head = left.Units();
    const std::u16string_view tail = right.Units();
    return Text::Make(head.size() + tail.size(), [&](char16_t* units) {
        std::memcpy(units, head.data(), head.size() * sizeof(char16_t));
        std::memcpy(units + head.size(), tail.data(), tail.size() * sizeof(char16_t));
    });
}

std::ostream& operator<<(std::ostream& out, const Text& text) {
    return out << text.ToUtf8();
}

}  // namespace zorvane
