#include "platform/CaseMapping.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace zorvane {
namespace {

struct CaseRun {
    char32_t first;
    char32_t last;
    std::uint32_t step;
    std::int32_t distance;
};

#include "platform/CaseRanges.inc"

constexpr std::size_t kMaxPages = 32;  // pages of 256 units in which any letter changes

// Units of the basic plane through two small look-ups; page 0 maps every unit to itself.
struct UnitMap {
    std::array<std::uint8_t, 256> pageOf{};
    std::array<std::array<std::int32_t, 256>, kMaxPages> distance{};

    [[nodiscard]] constexpr char16_t operator()(char16_t unit) const noexcept {
        return static_cast<char16_t>(unit + distance[pageOf[unit >> 8]][unit & 0xFF]);
    }
};

constexpr UnitMap MakeUnitMap(const CaseRun* begin, const CaseRun* end) {
    UnitMap map;
    std::uint8_t pages = 1;
    for (const CaseRun* run = begin; run != end && run->last <= 0xFFFF; ++run) {
        for (char32_t point = run->first; point <= run->last; point += run->step) {
            std::uint8_t& page = map.pageOf[point >> 8];
            if (page == 0) page = pages++;
            map.distance[page][point & 0xFF] = run->distance;
        }
    }
    return map;
}

constexpr UnitMap kFold = MakeUnitMap(std::begin(kFoldRuns), std::end(kFoldRuns));
constexpr UnitMap kLower = MakeUnitMap(std::begin(kLowerRuns), std::end(kLowerRuns));

// What the hash sees of a unit: the folding of its lower case, which joins all that either joins.
constexpr UnitMap MakeHashMap() {
    UnitMap map = kFold;
    for (const CaseRun& run : kLowerRuns) {
        for (char32_t point = run.first; point <= run.last && point <= 0xFFFF; point += run.step) {
            const auto unit = static_cast<char16_t>(point);
            const int to = kFold(kLower(unit));
            if (map(unit) == to) continue;
            // Only a page that folding already uses needs this: see the generator's check.
            map.distance[map.pageOf[unit >> 8]][unit & 0xFF] = to - unit;
        }
    }
    return map;
}
constexpr UnitMap kHash = MakeHashMap();
static_assert(kHash.distance[0] == UnitMap{}.distance[0], "a page of letters is missing");

char32_t MapRuns(const CaseRun* begin, const CaseRun* end, char32_t point) noexcept {
    const CaseRun* run = std::lower_bound(
        begin, end, point, [](const CaseRun& left, char32_t right) { return left.last < right; });
    if (run == end || point < run->first || (point - run->first) % run->step != 0) return point;
    return static_cast<char32_t>(static_cast<std::int32_t>(point) + run->distance);
}

// The next unit of a text under a mapping; a pair of surrogates is mapped as the point it stands
// for.
template <char32_t (*MapPoint)(char32_t) noexcept>
class MappedUnits {
  public:
    MappedUnits(std::u16string_view units, const UnitMap& map) noexcept
        : units_(units), map_(map) {}

    [[nodiscard]] bool Done() const noexcept { return at_ == units_.size() && pending_ == 0; }
    char16_t Next() noexcept {
        if (pending_ != 0) return std::exchange(pending_, char16_t{0});
        const char16_t unit = units_[at_];
        if (!IsSurrogate(unit)) {
            ++at_;
            return map_(unit);
        }
        const char32_t point = CodePointAt(units_, at_);
        if (point <= 0xFFFF) return unit;
        const char32_t mapped = MapPoint(point);
        pending_ = static_cast<char16_t>(0xDC00 | (mapped & 0x3FF));
        return static_cast<char16_t>(0xD7C0 + (mapped >> 10));
    }

  private:
    std::u16string_view units_;
    const UnitMap& map_;
    std::size_t at_ = 0;
    char16_t pending_ = 0;  // the low half of a mapped pair
};
using FoldedUnits = MappedUnits<FoldCodePoint>;
using LoweredUnits = MappedUnits<LowerCodePoint>;

template <class Units>
int CompareMapped(Units left, Units right) noexcept {
    while (!left.Done() && !right.Done()) {
        const char16_t a = left.Next();
        const char16_t b = right.Next();
        if (a != b) return a < b ? -1 : 1;
    }
    return static_cast<int>(right.Done()) - static_cast<int>(left.Done());
}

constexpr std::uint64_t Lanes(std::uint16_t value) {
    return value * 0x0001000100010001u;
}

// `count` units (1 to 4) as the hash sees them, the first in the low bits, zeros behind the last.
std::uint64_t FoldSlowly(const char16_t* units, std::size_t count) noexcept {
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < count; ++i) {
        // A pair's halves are hashed by being halves alone: letters beyond the plane are rare.
        const char16_t unit = IsSurrogate(units[i]) ? char16_t{0xD800} : kHash(units[i]);
        word |= static_cast<std::uint64_t>(unit) << (16 * i);
    }
    return word;
}

// The same for `count` units that stand in a word, at once where they are simple: below U+00C0 only
// ASCII letters and the micro sign change.
std::uint64_t FoldWord(std::uint64_t word, const char16_t* units, std::size_t count) noexcept {
    const std::uint64_t micro = word ^ Lanes(0xB5);
    const std::uint64_t isMicro = (micro - Lanes(1)) & ~micro & Lanes(0x8000);
    const std::uint64_t above = (word & Lanes(0xFF00)) | (word & (word << 1) & Lanes(0x80));
    if (std::endian::native != std::endian::little || (above | isMicro) != 0) {
        return FoldSlowly(units, count);
    }
    const std::uint64_t capital =
        (word + Lanes(0x80 - 'A')) & ~(word + Lanes(0x80 - 'Z' - 1)) & Lanes(0x80);
    return word | (capital >> 2);
}

}  // namespace

char32_t FoldCodePoint(char32_t point) noexcept {
    return MapRuns(std::begin(kFoldRuns), std::end(kFoldRuns), point);
}

char32_t LowerCodePoint(char32_t point) noexcept {
    return MapRuns(std::begin(kLowerRuns), std::end(kLowerRuns), point);
}

Text LowerCase(const Text& text) {
    const std::u16string_view units = text.Units();
    LoweredUnits probe(units, kLower);
    const bool same = std::all_of(units.begin(), units.end(),
                                  [&](char16_t unit) { return probe.Next() == unit; });
    if (same) return text;
    return Text::Make(units.size(), [&](char16_t* out) {
        LoweredUnits lowered(units, kLower);
        for (std::size_t i = 0; i < units.size(); ++i) out[i] = lowered.Next();
    });
}

int CompareTexts(std::u16string_view left, std::u16string_view right, CompareMode mode) noexcept {
    if (mode == CompareMode::Text) {
        return CompareMapped(FoldedUnits(left, kFold), FoldedUnits(right, kFold));
    }
    const int order = left.compare(right);
    return (order > 0) - (order < 0);
}

bool EqualTexts(std::u16string_view left, std::u16string_view right, CompareMode mode) noexcept {
    if (left.size() != right.size()) return false;  // neither mode changes a length
    if (left.empty() ||
        std::memcmp(left.data(), right.data(), left.size() * sizeof(char16_t)) == 0) {
        return true;
    }
    return mode == CompareMode::Text && CompareTexts(left, right, mode) == 0;
}

bool EqualLowerCase(std::u16string_view left, std::u16string_view right) noexcept {
    if (left.size() != right.size()) return false;
    return left == right ||
           CompareMapped(LoweredUnits(left, kLower), LoweredUnits(right, kLower)) == 0;
}

std::uint32_t HashFolded(std::u16string_view units) noexcept {
    // Four units a step, mixed by a multiplication whose high bits are folded back.
    constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15u;
    std::uint64_t hash = kMix ^ units.size();
    const auto take = [&](std::uint64_t word) {
        hash = (hash ^ word) * kMix;
        hash ^= hash >> 29;
    };
    const char16_t* at = units.data();
    std::size_t left = units.size();
    for (; left >= 4; at += 4, left -= 4) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, sizeof word);
        take(FoldWord(word, at, 4));
    }
    if (left != 0) {
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < left; ++i) word |= std::uint64_t{at[i]} << (16 * i);
        take(FoldWord(word, at, left));
    }
    const auto folded = static_cast<std::uint32_t>((hash * 0xD6E8FEB86659FD93u) >> 32);
    return folded != 0 ? folded : 1;
}

}  // namespace zorvane
