#include "runtime/RankedOrder.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <numeric>

#include "runtime/GapSort.h"

namespace zorvane::modZorvane {
namespace {

// A rank above the index of the value that has it.
using Ranked = std::uint64_t;

constexpr std::uint64_t RankOf(Ranked ranked) {
    return ranked >> 32;
}
constexpr std::uint32_t IndexOf(Ranked ranked) {
    return static_cast<std::uint32_t>(ranked);
}

// `ascending` holds every value in ascending order, `ties` tells whether ranks repeat.
std::vector<std::uint32_t> FinishOrder(std::vector<Ranked> ascending, bool ties, bool descending) {
    if (ties) {
        // Back into the order of the indexes, where the gap sort has to start.
        std::vector<Ranked> given(ascending.size());
        for (const Ranked ranked : ascending) given[IndexOf(ranked)] = ranked;
        ascending = std::move(given);
        GapSort(ascending, descending, [](Ranked a, Ranked b) {
            return (RankOf(a) > RankOf(b)) - (RankOf(a) < RankOf(b));
        });
    } else if (descending) {
        std::ranges::reverse(ascending);
    }
    std::vector<std::uint32_t> order(ascending.size());
    std::ranges::transform(ascending, order.begin(), IndexOf);
    return order;
}

bool SharesRanks(std::span<const Ranked> ascending) {
    return std::ranges::adjacent_find(ascending, {}, RankOf) != ascending.end();
}

// Sorts by a 64-bit key that `less` begins with: one pass into buckets by the leading bits in which
// the keys differ at all, then each bucket by itself.
template <class Element, class KeyOf, class Less>
void SortByBuckets(std::vector<Element>& elements, KeyOf&& keyOf, Less&& less) {
    constexpr std::size_t kWorthwhile = 256;
    const auto [low, high] = std::ranges::minmax_element(elements, {}, keyOf);
    const auto least = keyOf(*low);
    const auto varying = static_cast<int>(std::bit_width(keyOf(*high) - least));
    if (elements.size() < kWorthwhile || varying == 0) {
        std::ranges::sort(elements, less);
        return;
    }
    const int bits = std::min(varying, elements.size() > 200000 ? 16 : 12);
    const auto bucketOf = [&, base = least](const Element& element) {
        return static_cast<std::size_t>((keyOf(element) - base) >> (varying - bits));
    };
    std::vector<std::uint32_t> ends((std::size_t{1} << bits) + 1);
    for (const Element& element : elements) ++ends[bucketOf(element) + 1];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<Element> scattered(elements.size());
    for (const Element& element : elements) scattered[ends[bucketOf(element)]++] = element;
    // Each bucket now ends where the next began.
    std::uint32_t begin = 0;
    for (const std::uint32_t end : ends) {
        if (end - begin > 1) std::sort(scattered.begin() + begin, scattered.begin() + end, less);
        begin = end;
    }
    elements = std::move(scattered);
}

// Four units from `from` on, the first in the high bits; what is missing counts as U+0000.
std::uint64_t PrefixOf(std::u16string_view text, std::size_t from) {
    std::uint64_t prefix = 0;
    for (std::size_t i = from; i < from + 4; ++i)
        prefix = (prefix << 16) | (i < text.size() ? text[i] : 0u);
    return prefix;
}

std::size_t CommonLead(std::span<const std::u16string_view> texts) {
    std::size_t lead = texts.front().size();
    for (const std::u16string_view text : texts) {
        if (lead == 0) break;
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(lead, text.size()));
        const auto differ = std::mismatch(text.begin(), end, texts.front().begin());
        lead = static_cast<std::size_t>(differ.first - text.begin());
    }
    return lead;
}

}  // namespace

std::vector<std::uint32_t> RankedOrder(std::span<const std::int32_t> values, bool descending) {
    std::vector<Ranked> ascending(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        // Flipping the sign bit turns signed order into unsigned.
        const auto rank = static_cast<std::uint32_t>(values[i]) ^ 0x80000000u;
        ascending[i] = (Ranked{rank} << 32) | i;
    }
    if (ascending.empty()) return {};
    SortByBuckets(
        ascending, [](Ranked ranked) { return RankOf(ranked); }, std::less<>());
    const bool ties = SharesRanks(ascending);
    return FinishOrder(std::move(ascending), ties, descending);
}

std::vector<std::uint32_t> RankedOrder(std::span<const std::u16string_view> texts, CompareMode mode,
                                       bool descending) {
    struct Keyed {
        std::uint64_t prefix;  // tells the binary order where it differs; 0 for all in another mode
        std::uint32_t index;
    };
    if (texts.empty()) return {};
    const bool binary = mode == CompareMode::Binary;
    const std::size_t lead = binary ? CommonLead(texts) : 0;
    std::vector<Keyed> sorted(texts.size());
    for (std::uint32_t i = 0; i < texts.size(); ++i) {
        sorted[i] = {binary ? PrefixOf(texts[i], lead) : 0, i};
    }
    const auto compare = [&](const Keyed& a, const Keyed& b) {
        if (a.prefix != b.prefix) return a.prefix < b.prefix ? -1 : 1;
        return CompareTexts(texts[a.index].substr(lead), texts[b.index].substr(lead), mode);
    };
    SortByBuckets(
        sorted, [](const Keyed& keyed) { return keyed.prefix; },
        [&](const Keyed& a, const Keyed& b) { return compare(a, b) < 0; });
    std::vector<Ranked> ascending(sorted.size());
    std::uint64_t rank = 0;
    bool ties = false;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        const bool same = i > 0 && compare(sorted[i - 1], sorted[i]) == 0;
        ties = ties || same;
        if (!same) rank = i;
        ascending[i] = (rank << 32) | sorted[i].index;
    }
    return FinishOrder(std::move(ascending), ties, descending);
}

}  // namespace zorvane::modZorvane
