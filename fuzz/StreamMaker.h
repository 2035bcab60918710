#pragma once
// StreamMaker: streams of bags out of any bytes: a sound one first, with values of every type, then
// some of its words altered, most of them where a reader goes by them.

#include <cstdint>
#include <span>
#include <vector>

#include "tests/unit/propbag/Words.h"
#include "zorvane/propbag/BagStream.h"
#include "zorvane/propbag/detail/StreamEncoder.h"
#include "zorvane/propbag/detail/StreamWords.h"

namespace zorvane {

class StreamMaker {
  public:
    // Every choice takes a byte; when none is left, the first of what there is.
    explicit StreamMaker(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    // Whether what was made is just as a bag writes it.
    [[nodiscard]] bool IsSound() const noexcept { return sound_; }
    [[nodiscard]] std::vector<std::int16_t> Make() {
        std::int32_t count = static_cast<std::int32_t>(1 + Below(8));
        if (Below(8) == 7) count *= 50;
        words_ = {-1, -1};
        Put(count);
        for (int column = 0; column < 2; ++column) PutColumn(count);
        for (std::int32_t i = 0; i < count; ++i) Put(SomeValue(0));
        Put(static_cast<std::int32_t>(16 + Below(3)));
        Put(Below(2) == 0);
        Put(Below(2) == 0);
        while (!bytes_.empty()) Alter();
        return words_;
    }

  private:
    // What an array may hold, numbers first.
    static constexpr VarType kElements[] = {
        VarType::Long,   VarType::Byte,     VarType::Integer, VarType::Boolean, VarType::Double,
        VarType::Single, VarType::Currency, VarType::Date,    VarType::Variant, VarType::String};
    static constexpr std::uint32_t kNumbers = 8;
    static constexpr int kDepth = 4;

    // What a reader goes by are types, sizes, counts, bounds and lengths; it finds them in headers.
    void Alter() {
        constexpr std::int16_t kTelling[] = {0,      1,      2,      -1,        4,      8,
                                             16,     100,    0x7FFF, INT16_MIN, 0x2011, 0x2002,
                                             0x2008, 0x200C, 0x200A, 0x6003,    0x0008, 0x000E};
        if (words_.size() < 3) return bytes_ = {}, void();
        sound_ = false;
        std::size_t at = static_cast<std::uint16_t>(Word()) % (words_.size() - 1);
        if (const std::uint32_t field = Below(9); field != 8) {
            for (std::size_t i = 0; i < words_.size() && !IsHeader(at); ++i) {
                at = (at + 1) % (words_.size() - 1);
            }
            at = std::min(at + field, words_.size() - 1);
        }
        const auto place = words_.begin() + static_cast<std::ptrdiff_t>(at);
        const std::uint32_t how = Below(8);
        if (how < 4) *place = kTelling[Below(std::size(kTelling))];
        if (how == 4) *place = Word();
        if (how == 5) *place = static_cast<std::int16_t>(*place + (Below(2) == 0 ? 1 : -1));
        if (how == 6) words_.erase(place);
        if (how == 7) words_.insert(place, Word());
    }

    std::uint32_t Below(std::uint32_t limit) noexcept {
        if (bytes_.empty()) return 0;
        const std::uint32_t chosen = bytes_[0] % limit;
        bytes_ = bytes_.subspan(1);
        return chosen;
    }

    // Where a value seems to begin.
    bool IsHeader(std::size_t at) {
        const auto type = static_cast<std::uint16_t>(words_[at]);
        const auto size = static_cast<std::uint16_t>(words_[at + 1]);
        const auto plain =
            static_cast<VarType>(type & ~static_cast<std::uint16_t>(VarType::ArrayFlag));
        return type > 1 && (IsArrayType(static_cast<VarType>(type)) ? StreamElementSize(plain)
                                                                    : StreamWidth(plain)) == size;
    }

    void Put(const Variant& value) {
        const std::size_t at = words_.size();
        words_.resize(at + static_cast<std::size_t>(StreamWordsOf(value)));
        StreamEncoder(std::span(words_).subspan(at)).Write(value);
    }

    // Names and classes need not be texts, nor need there be data for all that bounds hold.
    void PutColumn(std::int32_t count) {
        const std::size_t at = words_.size();
        const std::uint32_t kind = Below(8);
        if (kind < 4) {
            Array texts(VarType::String, 1, count);
            const bool empty = Below(2) == 0;
            for (std::int32_t i = 1; i <= count && !empty; ++i) texts.SetAt(i, SomeText());
            return Put(texts);
        }
        sound_ = false;
        if (kind == 4) return Put(SomeValue(0));
        Put(Array(kElements[Below(kNumbers)], 1, count));
        if (kind == 5) return;
        words_.resize(at + kStreamArrayHeader);
        PutLong(&words_[at + 2], 0);
    }

    Variant SomeArray(int depth) {
        const auto count = static_cast<std::int32_t>(Below(6));
        const auto lower = static_cast<std::int32_t>(Below(3)) - 1;
        const VarType element = kElements[Below(std::size(kElements))];
        Array array(element, lower, count);
        for (std::int32_t i = 0; i < count; ++i) {
            array.SetAt(lower + i, SomeElement(element, depth + 1));
        }
        return array;
    }

    Variant SomeElement(VarType element, int depth) {
        if (element == VarType::Variant) return SomeValue(depth);
        if (element == VarType::String) return SomeText();
        return static_cast<std::uint8_t>(Below(256));
    }

    Variant SomeNumber() {
        const VarType type = kElements[Below(kNumbers)];
        if (type == VarType::Boolean) return Below(2) == 0;
        std::uint64_t bits = 0;
        for (std::uint32_t bytes = Below(9); bytes > 0; --bytes) bits = bits << 8 | Below(256);
        return Variant::FromScalarBits(type, bits);
    }

    Variant SomeText() {
        std::u16string text(Below(10) == 9 ? 100 : Below(5), u'n');
        for (std::size_t i = 0; i < text.size() && i < 3; ++i) {
            text[i] = static_cast<char16_t>(u'a' + Below(26));
        }
        return text;
    }

    Variant SomeValue(int depth) {
        const std::uint32_t kind = Below(depth < kDepth ? 8 : 4);
        if (kind == 0) return SomeNumber();
        if (kind == 1) return SomeText();
        if (kind == 2) return Variant();
        if (kind == 3) return Variant::FromError(static_cast<std::int32_t>(Below(256)));
        if (kind < 6) return SomeArray(depth);
        if (kind == 6) {  // an object's own bag
            BagState state;
            for (std::uint32_t entries = Below(3); entries > 0; --entries) {
                state.Entries.push_back({SomeValue(depth + 1), SomeText().AsText(), {}});
            }
            return EncodeBag(state);
        }
        // Nests as deep as may be, and deeper than a stack is high.
        Variant nest = SomeValue(kDepth);
        for (std::uint32_t levels = Below(256 - kDepth); levels > 0; --levels) {
            nest = ArrayOf(VarType::Variant, 0, nest);
        }
        return nest;
    }

    std::int16_t Word() noexcept {
        const std::uint32_t low = Below(256);
        return static_cast<std::int16_t>(low | Below(256) << 8);
    }

    std::span<const std::uint8_t> bytes_;
    std::vector<std::int16_t> words_;
    bool sound_ = true;
};

}  // namespace zorvane
