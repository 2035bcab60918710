#include "zorvane/platform/Text.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <ostream>
#include <stdexcept>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/TextMaker.h"

namespace zorvane {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::size_t kMaxLength = 0x3FFFFFFF;  // positions and byte counts stay within 32 bits

// Reads one code point at `at` and moves past it; a malformed byte is one U+FFFD.
char32_t DecodeUtf8(std::string_view bytes, std::size_t& at) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned first = byteAt(at++);
    if (first < 0x80) return first;
    const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC2 || first > 0xF4 || bytes.size() - at < more) return kReplacement;
    char32_t point = first & (0x3Fu >> more);
    for (std::size_t i = 0; i < more; ++i) {
        const unsigned next = byteAt(at + i);
        if ((next & 0xC0) != 0x80) return kReplacement;
        point = (point << 6) | (next & 0x3F);
    }
    const bool tooLong = (more == 2 && point < 0x800) || (more == 3 && point < 0x10000);
    if (tooLong || (point >= 0xD800 && point <= 0xDFFF) || point > 0x10FFFF) return kReplacement;
    at += more;
    return point;
}

void AppendUtf8(std::string& out, char32_t point) {
    const auto put = [&](char32_t bits) { out.push_back(static_cast<char>(bits)); };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xC0 | (point >> 6));
        put(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        put(0xE0 | (point >> 12));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    } else {
        put(0xF0 | (point >> 18));
        put(0x80 | ((point >> 12) & 0x3F));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    }
}

}  // namespace

Text::Text(std::u16string_view units) : block_(Allocate(units.size())) {
    if (block_) CopyUnits(block_->Units(), units.data(), units.size());
}

Text::Text(std::string_view utf8) {
    std::u16string units;
    units.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const char32_t point = DecodeUtf8(utf8, at);
        if (point >= 0x10000) {
            units.push_back(static_cast<char16_t>(0xD7C0 + (point >> 10)));
            units.push_back(static_cast<char16_t>(0xDC00 | (point & 0x3FF)));
        } else {
            units.push_back(static_cast<char16_t>(point));
        }
    }
    *this = Text(std::u16string_view(units));
}

Text::Block* Text::Allocate(std::size_t length) {
    if (length == 0) return nullptr;
    if (length > kMaxLength) throw std::length_error("Text: too many units");
    return Begin(::operator new(SizeOf(length)), length);
}

std::uint32_t Text::ComputeFoldedHash() const noexcept {
    const std::uint32_t hash = HashFolded(Units());
    if (block_) block_->foldedHash = hash;
    return hash;
}

void Text::Free(Block* block) noexcept {
    if ((block->references & kInSlab) != 0) return TextMaker::Release(block);
    ::operator delete(static_cast<void*>(block));
}

std::string Text::ToUtf8() const {
    const std::u16string_view units = Units();
    std::string out;
    out.reserve(units.size());
    for (std::size_t at = 0; at < units.size();) {
        const char32_t point = CodePointAt(units, at);
        AppendUtf8(out, IsSurrogate(point) ? kReplacement : point);
    }
    return out;
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
