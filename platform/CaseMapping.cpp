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

// The standard view compares such units one by one.
bool SameUnits(std::u16string_view left, std::u16string_view right) noexcept {
    return left.empty() ||
           std::memcmp(left.data(), right.data(), left.size() * sizeof(char16_t)) == 0;
}

// How many of `count` units two texts begin with alike.
std::size_t SharedLead(const char16_t* left, const char16_t* right, std::size_t count) noexcept {
    std::size_t at = 0;
    for (; at + 4 <= count; at += 4) {
        std::uint64_t a = 0;
        std::uint64_t b = 0;
        std::memcpy(&a, left + at, sizeof a);
        std::memcpy(&b, right + at, sizeof b);
        if (a != b) break;
    }
    while (at < count && left[at] == right[at]) ++at;
    return at;
}

// Eight units side by side; compilers make it a vector where the machine has one.
using EightUnits [[gnu::vector_size(16)]] = std::uint16_t;
struct TwoWords {
    std::uint64_t First;
    std::uint64_t Second;
};
constexpr EightUnits Every(std::uint16_t unit) {
    return EightUnits{unit, unit, unit, unit, unit, unit, unit, unit};
}
// All bits of the units within first..last.
EightUnits Within(EightUnits units, std::uint16_t first, std::uint16_t last) noexcept {
    const EightUnits span = Every(static_cast<std::uint16_t>(last - first));
    return static_cast<EightUnits>(units - Every(first) <= span);
}

// As the hash sees them, unit by unit.
EightUnits FoldedOneByOne(EightUnits units) noexcept {
    for (int i = 0; i < 8; ++i) {
        // A pair's halves are hashed by being halves alone: letters beyond the plane are rare.
        units[i] = IsSurrogate(units[i]) ? std::uint16_t{0xD800} : kHash(units[i]);
    }
    return units;
}

// The same at once where all are below U+0100: there the letters change by a bit, but for the micro
// sign, which is at home elsewhere.
TwoWords Folded(EightUnits units) noexcept {
    const auto odd = std::bit_cast<TwoWords>((units & Every(0xFF00)) | Within(units, 0xB5, 0xB5));
    if ((odd.First | odd.Second) != 0) return std::bit_cast<TwoWords>(FoldedOneByOne(units));
    constexpr std::uint16_t kTimes = 0xD7;  // stands among the capitals and is none
    const EightUnits capital =
        Within(units, 'A', 'Z') | Within(units, 0xC0, kTimes - 1) | Within(units, kTimes + 1, 0xDE);
    return std::bit_cast<TwoWords>(units | (capital & Every(0x20)));
}

// The first and the last four units of 4 to 8, or all of fewer.
EightUnits FewUnits(const char16_t* units, std::size_t count) noexcept {
    EightUnits few{};
    if (count < 4) {
        for (std::size_t i = 0; i < count; ++i) few[i] = units[i];
        return few;
    }
    std::memcpy(&few, units, 8);
    std::memcpy(reinterpret_cast<std::byte*>(&few) + 8, units + count - 4, 8);
    return few;
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
    const std::size_t shorter = std::min(left.size(), right.size());
    const std::size_t at = SharedLead(left.data(), right.data(), shorter);
    if (at < shorter) return left[at] < right[at] ? -1 : 1;
    return (left.size() > right.size()) - (left.size() < right.size());
}

bool EqualTexts(std::u16string_view left, std::u16string_view right, CompareMode mode) noexcept {
    if (left.size() != right.size()) return false;  // neither mode changes a length
    if (SameUnits(left, right)) return true;
    return mode == CompareMode::Text && CompareTexts(left, right, mode) == 0;
}

bool EqualLowerCase(std::u16string_view left, std::u16string_view right) noexcept {
    if (left.size() != right.size()) return false;
    return SameUnits(left, right) ||
           CompareMapped(LoweredUnits(left, kLower), LoweredUnits(right, kLower)) == 0;
}

std::uint32_t HashFolded(std::u16string_view units) noexcept {
    // Eight units a step into two hashes, each mixed by a multiplication whose high bits are folded
    // back. The last step takes the last eight, whatever the step before took of them.
    constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15u;
    const auto mixed = [](std::uint64_t hash, std::uint64_t word) {
        hash = (hash ^ word) * kMix;
        return hash ^ (hash >> 29);
    };
    std::uint64_t first = kMix ^ units.size();
    std::uint64_t second = ~kMix;
    const auto take = [&](EightUnits eight) {
        const TwoWords folded = Folded(eight);
        first = mixed(first, folded.First);
        second = mixed(second, folded.Second);
    };
    const auto eightAt = [&](std::size_t at) {
        EightUnits eight;
        std::memcpy(&eight, units.data() + at, sizeof eight);
        return eight;
    };
    if (units.size() < 8) {
        take(FewUnits(units.data(), units.size()));
    } else {
        for (std::size_t at = 0; at + 8 < units.size(); at += 8) take(eightAt(at));
        take(eightAt(units.size() - 8));
    }
    const std::uint64_t hash = mixed(first, second);
    const auto folded = static_cast<std::uint32_t>((hash * 0xD6E8FEB86659FD93u) >> 32);
    return folded != 0 ? folded : 1;
}

}  // namespace zorvane
