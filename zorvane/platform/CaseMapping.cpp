#include "zorvane/platform/CaseMapping.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "zorvane/platform/Secret.h"

namespace zorvane {
namespace {

struct CaseRun {
    char32_t first;
    char32_t last;
    std::uint32_t step;
    std::int32_t distance;
};

#include "zorvane/platform/detail/CaseRanges.inc"

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

// Below U+0100 every capital has kCapital, and its small letter kSmall beside it. The few signs
// that have it too lose what tells them from another sign, which a hash may.
constexpr int kCapital = 0x40;
constexpr int kSmall = 0x20;
constexpr int Small(int unit) {
    return unit <= 0xFF ? unit | (unit & kCapital) / (kCapital / kSmall) : unit;
}
constexpr char16_t kMicro = 0xB5;  // folds to U+03BC, as if it were no Latin sign

// What the hash sees of a unit: the folding of its lower case, which joins all that either joins,
// small; and nothing leaves the range below U+0100, so that all of it can be mapped at once.
constexpr UnitMap MakeHashMap() {
    UnitMap map = kFold;
    const auto put = [&](char16_t unit, int to) {
        if (map(unit) == to) return;
        // Only a page that folding already uses needs this: see the generator's check.
        map.distance[map.pageOf[unit >> 8]][unit & 0xFF] = to - unit;
    };
    const auto putRuns = [&](const CaseRun* begin, const CaseRun* end) {
        for (const CaseRun* run = begin; run != end; ++run) {
            for (char32_t point = run->first; point <= run->last && point <= 0xFFFF;
                 point += run->step) {
                const auto unit = static_cast<char16_t>(point);
                put(unit, Small(kFold(kLower(unit))));
            }
        }
    };
    putRuns(std::begin(kFoldRuns), std::end(kFoldRuns));
    putRuns(std::begin(kLowerRuns), std::end(kLowerRuns));
    for (char16_t unit = 0; unit <= 0xFF; ++unit) put(unit, Small(unit));
    for (const char16_t unit : {char16_t{0x039C}, char16_t{0x03BC}}) put(unit, kMicro);
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

constexpr EightUnits Every(std::uint16_t unit) {
    return EightUnits{unit, unit, unit, unit, unit, unit, unit, unit};
}
// The first and the last four units of 4 to 7, or all of fewer.
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

// A text's units as the hash sees them, where all are below U+0100.
class AtOnce {
  public:
    explicit AtOnce(std::u16string_view units) noexcept : units_(units) {}
    [[nodiscard]] EightUnits Eight(std::size_t at) const noexcept {
        return Folded(EightAt(units_.data() + at));
    }
    [[nodiscard]] EightUnits Few() const noexcept {
        return Folded(FewUnits(units_.data(), units_.size()));
    }

  private:
    static EightUnits Folded(EightUnits units) noexcept {
        return units | ((units & Every(kCapital)) / Every(kCapital / kSmall));
    }
    std::u16string_view units_;
};

// The units as they stand.
class AsTheyStand {
  public:
    explicit AsTheyStand(std::u16string_view units) noexcept : units_(units) {}
    [[nodiscard]] EightUnits Eight(std::size_t at) const noexcept {
        return EightAt(units_.data() + at);
    }
    [[nodiscard]] EightUnits Few() const noexcept { return FewUnits(units_.data(), units_.size()); }

  private:
    std::u16string_view units_;
};

// Bytes as they stand, two to a unit, of texts that fill a step; an odd one at the end stands in a
// step with 15 before it.
class Bytes {
  public:
    explicit Bytes(std::string_view bytes) noexcept : bytes_(bytes) {}
    [[nodiscard]] std::size_t Length() const noexcept { return (bytes_.size() + 1) / 2; }
    [[nodiscard]] EightUnits Eight(std::size_t at) const noexcept {
        EightUnits eight;
        const std::size_t from = std::min(2 * at, bytes_.size() - sizeof eight);
        std::memcpy(&eight, bytes_.data() + from, sizeof eight);
        return eight;
    }
    [[nodiscard]] EightUnits Few() const noexcept { return EightUnits{}; }

  private:
    std::string_view bytes_;
};

// The first and the last bytes of fewer than two words, all of which they hold.
TwoWords EndsOf(std::string_view bytes) noexcept {
    TwoWords ends{};
    const char* const last = bytes.data() + bytes.size();
    const auto read = [&]<class Word>(Word word) {
        std::memcpy(&word, bytes.data(), sizeof word);
        ends.First = word;
        std::memcpy(&word, last - sizeof word, sizeof word);
        ends.Second = word;
    };
    if (bytes.size() >= sizeof(std::uint64_t)) {
        read(std::uint64_t{});
    } else if (bytes.size() >= sizeof(std::uint32_t)) {
        read(std::uint32_t{});
    } else if (bytes.size() >= sizeof(std::uint16_t)) {
        read(std::uint16_t{});
    } else if (!bytes.empty()) {
        read(std::uint8_t{});
    }
    return ends;
}

// Any units under a mapping. A pair of surrogates keeps its first half in either case.
template <const UnitMap& kMap, char32_t (*MapPoint)(char32_t) noexcept>
class OneByOne {
  public:
    explicit OneByOne(std::u16string_view units) noexcept : units_(units) {}
    [[nodiscard]] EightUnits Eight(std::size_t at) const noexcept {
        EightUnits eight;
        for (std::size_t i = 0; i < 8; ++i) eight[i] = Mapped(at + i);
        return eight;
    }
    [[nodiscard]] EightUnits Few() const noexcept {
        std::array<char16_t, kFewestInSteps> mapped{};
        for (std::size_t i = 0; i < units_.size(); ++i) mapped[i] = Mapped(i);
        return FewUnits(mapped.data(), units_.size());
    }

  private:
    [[nodiscard]] char16_t Mapped(std::size_t at) const noexcept {
        const char16_t unit = units_[at];
        if (!IsSurrogate(unit)) return kMap(unit);
        if (unit < 0xDC00 || at == 0) return unit;
        std::size_t first = at - 1;
        const char32_t point = CodePointAt(units_, first);
        if (point <= 0xFFFF) return unit;
        return static_cast<char16_t>(0xDC00 | (MapPoint(point) & 0x3FF));
    }
    std::u16string_view units_;
};
char32_t FoldLowered(char32_t point) noexcept {
    return FoldCodePoint(LowerCodePoint(point));
}

constexpr char16_t kLastAtOnce = 0xFF;
constexpr std::uint64_t kBeyondAtOnce = 0xFF00FF00FF00FF00u;  // of four units

// What every hash of this process is made with.
struct HashKeys {
    FourHalves steps[kSteps];
    std::uint64_t words[4];
    std::uint64_t beside;
};
HashKeys MakeHashKeys() noexcept {
    HashKeys keys;
    for (FourHalves& step : keys.steps) {
        step = std::bit_cast<FourHalves>(TwoWords{SecretBits(), SecretBits()});
    }
    for (std::uint64_t& word : keys.words) word = SecretBits();
    keys.beside = SecretBits() | 1;
    return keys;
}
// Made when first asked for, which may be before main.
const HashKeys& TheHashKeys() noexcept {
    static const HashKeys keys = MakeHashKeys();
    return keys;
}

// The hash of a text of so many units as `given` gives them; all bits that were set in them join
// `seen`. Eight units a step, as four halves of words, to each of which a secret key is added: the
// sum of the products of such pairs is the same for two texts with a chance of one in 2^32,
// whatever they are. No step waits for the one before.
template <class Given>
[[gnu::always_inline]] inline std::uint32_t HashWith(const Given& given, std::size_t length,
                                                     std::uint32_t beside,
                                                     EightUnits& seen) noexcept {
    constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15u;
    constexpr std::uint64_t kOtherMix = 0xD6E8FEB86659FD93u;
    const HashKeys& keys = TheHashKeys();
    TwoSums sum{};
    const auto take = [&](EightUnits eight, FourHalves key) {
        seen |= eight;
        sum += ProductsOfHalves(std::bit_cast<TwoSums>(std::bit_cast<FourHalves>(eight) + key));
    };
    if (length < kFewestInSteps) {
        take(given.Few(), keys.steps[0]);
    } else if (length <= kMostInSteps) {
        for (std::size_t step = 0; step < kSteps; ++step) {
            take(given.Eight(StepAt(step, length)), keys.steps[step]);
        }
    } else {
        auto key = std::bit_cast<TwoSums>(keys.steps[0]);
        for (std::size_t at = 0; at + 8 < length; at += 8) {
            take(given.Eight(at), std::bit_cast<FourHalves>(key));
            key ^= key << 13;
            key ^= key >> 7;
            key ^= key << 17;
        }
        take(given.Eight(length - 8), std::bit_cast<FourHalves>(key));
    }
    const auto sums = std::bit_cast<TwoWords>(sum);
    const std::uint64_t first = sums.First + length * kOtherMix + beside * keys.beside;
    const std::uint64_t both = first * kMix + sums.Second * kOtherMix;
    // A product moves nothing down: what only high bits tell joins the low ones before the last.
    const auto hash = static_cast<std::uint32_t>(((both ^ (both >> 32)) * kMix) >> 32);
    return hash != 0 ? hash : 1;
}

// The sum of products of each half with a secret word of its own: the high bits are the same for
// two inputs with a chance of one in 2^32.
std::uint32_t HashWords(TwoWords words, std::uint32_t beside) noexcept {
    const HashKeys& keys = TheHashKeys();
    const auto product = [](std::uint64_t half, std::uint64_t key) {
        return (half & 0xFFFFFFFF) * key;
    };
    const std::uint64_t sum = product(words.First, keys.words[0]) +
                              product(words.First >> 32, keys.words[1]) +
                              product(words.Second, keys.words[2]) +
                              product(words.Second >> 32, keys.words[3]) + beside * keys.beside;
    const auto hash = static_cast<std::uint32_t>(sum >> 32);
    return hash != 0 ? hash : 1;
}

// Apart, as what most keys never need would cost them registers.
template <class Given>
[[gnu::noinline]] std::uint32_t HashApart(std::u16string_view units,
                                          std::uint32_t beside = 0) noexcept {
    EightUnits seen{};
    return HashWith(Given(units), units.size(), beside, seen);
}
using HashedUnits = OneByOne<kHash, FoldLowered>;

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

std::uint32_t HashBytes(std::string_view bytes) noexcept {
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (bytes.size() < sizeof(EightUnits)) return HashWords(EndsOf(bytes), length);
    EightUnits seen{};
    const Bytes given(bytes);
    return HashWith(given, given.Length(), length, seen);
}

std::uint32_t HashFolded(std::u16string_view units) noexcept {
    if (!units.empty() && units.front() > kLastAtOnce) return HashApart<HashedUnits>(units);
    EightUnits seen{};
    const std::uint32_t hash = HashWith(AtOnce(units), units.size(), 0, seen);
    const auto words = std::bit_cast<TwoWords>(seen);
    const bool beyond = ((words.First | words.Second) & kBeyondAtOnce) != 0;
    return beyond ? HashApart<HashedUnits>(units) : hash;
}

std::uint32_t HashExactly(std::u16string_view units, Sameness sameness,
                          std::uint32_t beside) noexcept {
    switch (sameness) {
        case Sameness::Folded:
            return HashApart<OneByOne<kFold, FoldCodePoint>>(units, beside);
        case Sameness::LowerCase:
            return HashApart<OneByOne<kLower, LowerCodePoint>>(units, beside);
        default:
            return HashApart<AsTheyStand>(units, beside);
    }
}

}  // namespace zorvane
