#include "zorvane/runtime/detail/RankedOrder.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <utility>

#include "zorvane/platform/Secret.h"
#include "zorvane/platform/Units.h"
#include "zorvane/runtime/BucketSort.h"
#include "zorvane/runtime/detail/WideGapSort.h"

namespace zorvane::modZorvane {
namespace {

constexpr auto kSort = [](auto first, auto last, auto& less) { std::sort(first, last, less); };

constexpr std::uint64_t RankOf(Ranked ranked) {
    return ranked >> 32;
}
constexpr std::uint32_t IndexOf(Ranked ranked) {
    return static_cast<std::uint32_t>(ranked);
}

std::vector<std::uint32_t> IndexesOf(std::span<const Ranked> ranked) {
    std::vector<std::uint32_t> indexes(ranked.size());
    std::ranges::transform(ranked, indexes.begin(), IndexOf);
    return indexes;
}

// `given` stands in the order of the indexes, where the gap sort has to start.
std::vector<std::uint32_t> OrderWithTies(std::vector<Ranked> given, bool descending) {
    WideGapSort(given, descending);
    return IndexesOf(given);
}

// Whether two ranks are equal, by a table of those seen. Where ranks repeat, a look at the first
// mostly tells, in a table that is small.
bool SharesRanks(std::span<const Ranked> given) {
    constexpr std::size_t kFirst = 4096;
    if (given.size() > kFirst && SharesRanks(given.first(kFirst))) return true;
    const std::size_t size = std::bit_ceil(given.size() * 2);
    const int shift = 64 - std::countr_zero(size);
    std::vector<std::uint64_t> seen(size);       // ranks plus one; 0: free
    const HashSecret& secret = TheHashSecret();  // chosen values shall not meet in one place
    return std::ranges::any_of(given, [&](Ranked ranked) {
        const std::uint64_t rank = RankOf(ranked) + 1;
        auto at = static_cast<std::size_t>(secret.Of(rank) >> shift);
        while (seen[at] != 0 && seen[at] != rank) at = (at + 1) & (size - 1);
        return std::exchange(seen[at], rank) == rank;
    });
}

// The low bytes of four units, side by side.
std::uint64_t LowBytes(std::uint64_t four) {
    const std::uint64_t pairs = (four | (four >> 8)) & 0x0000FFFF0000FFFFu;
    return (pairs | (pairs >> 16)) & 0xFFFFFFFFu;
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

// A value that may be told by its key alone, and where it came from.
struct Keyed {
    std::uint64_t key;
    std::uint32_t index;
};

// The order of values that stand in ascending order, where same(a, b) tells neighbours that tie.
template <class Same>
std::vector<std::uint32_t> OrderOfSorted(std::span<const Keyed> sorted, bool descending,
                                         Same&& same) {
    if (std::ranges::adjacent_find(sorted, same) == sorted.end()) {
        std::vector<std::uint32_t> order(sorted.size());
        std::ranges::transform(sorted, order.begin(), &Keyed::index);
        if (descending) std::ranges::reverse(order);
        return order;
    }
    std::vector<Ranked> given(sorted.size());
    std::uint64_t rank = 0;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (i > 0 && !same(sorted[i - 1], sorted[i])) rank = i;
        given[sorted[i].index] = (rank << 32) | sorted[i].index;
    }
    return OrderWithTies(std::move(given), descending);
}

}  // namespace

std::vector<std::uint32_t> RankedOrder(std::span<const std::int32_t> values, bool descending) {
    if (values.empty()) return {};
    std::vector<Ranked> given(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        // Flipping the sign bit turns signed order into unsigned.
        const auto rank = static_cast<std::uint32_t>(values[i]) ^ 0x80000000u;
        given[i] = (Ranked{rank} << 32) | i;
    }
    if (SharesRanks(given)) return OrderWithTies(std::move(given), descending);
    std::vector<Ranked> ascending = std::move(given);
    SortByBuckets(ascending, RankOf, std::less<>(), kSort);
    if (descending) std::ranges::reverse(ascending);
    return IndexesOf(ascending);
}

std::vector<std::uint32_t> RankedOrder(std::span<const std::uint64_t> values, bool descending) {
    if (values.empty()) return {};
    std::vector<Keyed> sorted(values.size());
    for (std::uint32_t i = 0; i < values.size(); ++i) sorted[i] = {values[i], i};
    SortByBuckets(
        sorted, [](const Keyed& keyed) { return keyed.key; },
        [](const Keyed& a, const Keyed& b) { return a.key < b.key; }, kSort);
    return OrderOfSorted(sorted, descending,
                         [](const Keyed& a, const Keyed& b) { return a.key == b.key; });
}

std::vector<std::uint32_t> RankedOrder(std::span<const std::u16string_view> texts, CompareMode mode,
                                       bool descending) {
    if (texts.empty()) return {};
    // A prefix tells the binary order where it differs; in another mode all have the same.
    const bool binary = mode == CompareMode::Binary;
    const std::size_t lead = binary ? CommonLead(texts) : 0;
    std::vector<Keyed> sorted(texts.size());
    std::uint64_t seen = 0;
    for (std::uint32_t i = 0; i < texts.size(); ++i) {
        sorted[i] = {binary ? FourUnits(texts[i], lead) : 0, i};
        seen |= sorted[i].key;
    }
    // Where no unit takes more than a byte, the bits between would keep the buckets few.
    if ((seen & 0xFF00FF00FF00FF00u) == 0) {
        for (Keyed& keyed : sorted) keyed.key = LowBytes(keyed.key);
    }
    const auto compare = [&](const Keyed& a, const Keyed& b) {
        if (a.key != b.key) return a.key < b.key ? -1 : 1;
        return CompareTexts(texts[a.index].substr(lead), texts[b.index].substr(lead), mode);
    };
    SortByBuckets(
        sorted, [](const Keyed& keyed) { return keyed.key; },
        [&](const Keyed& a, const Keyed& b) { return compare(a, b) < 0; }, kSort);
    return OrderOfSorted(sorted, descending,
                         [&](const Keyed& a, const Keyed& b) { return compare(a, b) == 0; });
}

}  // namespace zorvane::modZorvane
