#include "zorvane/platform/Collection.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Error.h"

namespace zorvane {
namespace {

constexpr std::size_t kLeastBuckets = 16;

bool Names(std::u16string_view member, std::u16string_view name) noexcept {
    return EqualTexts(member, name, CompareMode::Text);
}

}  // namespace

Collection::~Collection() {
    // Releasing an item may run code that still looks in here: it finds an empty collection,
    // and may even add to it.
    while (!order_.empty()) {
        buckets_.clear();
        const auto doomed = std::exchange(order_, {});
    }
}

void Collection::Add(Variant item, CollectionAdd options) {
    if (options.Before && options.After) RaisePlatform(PlatformError::InvalidCall);
    if (options.Key && FindKey(*options.Key)) RaisePlatform(PlatformError::DuplicateKey);
    if (Count() == INT32_MAX) throw std::length_error("Collection: too many entries");
    std::size_t at = order_.size();
    if (options.Before) at = IndexOf(Find(*options.Before));
    if (options.After) at = IndexOf(Find(*options.After)) + 1;

    auto entry = std::make_unique<Entry>();
    entry->Item = std::move(item);
    if (options.Key) {
        entry->Key = *std::move(options.Key);
        entry->Keyed = true;
    }
    if (buckets_.size() <= order_.size()) GrowBuckets();
    const std::size_t count = order_.size();
    const bool inFront = at < count - at;
    entry->Place = count == 0 ? 0 : order_.front()->Place + static_cast<std::int64_t>(at);
    if (inFront) --entry->Place;
    Entry& added = *entry;
    order_.insert(order_.begin() + static_cast<std::ptrdiff_t>(at), std::move(entry));
    if (inFront) {
        Renumber(0, at, -1);
    } else {
        Renumber(at + 1, count + 1, 1);
    }
    if (!added.Keyed) return;
    Link(added);
    if (added.Next && IsCrowded(added)) [[unlikely]] {
        strict_ = true;
        LinkAll();
    }
}

std::size_t Collection::BucketOf(const Text& key) const noexcept {
    const std::uint32_t hash = strict_ ? HashExactly(key, Sameness::Folded) : key.FoldedHash();
    return hash & (buckets_.size() - 1);
}

Variant Collection::Call(std::u16string_view member, Arguments arguments) {
    const auto given = [&](std::size_t i) {
        return i < arguments.size() && !arguments[i].IsEmpty() ? std::optional(arguments[i])
                                                               : std::nullopt;
    };
    if (Names(member, u"Add") && !arguments.empty() && arguments.size() <= 4) {
        CollectionAdd options{.Before = given(2), .After = given(3)};
        if (const auto key = given(1)) options.Key = key->ToText();
        Add(arguments[0], std::move(options));
        return {};
    }
    if (Names(member, u"Remove") && arguments.size() == 1) {
        Remove(arguments[0]);
        return {};
    }
    return Get(member, arguments);
}

Collection::Entry& Collection::Find(const Variant& vKeyIndex) const {
    if (vKeyIndex.IsText()) {
        Entry* const found = FindKey(vKeyIndex.TextUnchecked());
        if (!found) RaisePlatform(PlatformError::InvalidCall);
        return *found;
    }
    const std::int32_t position = vKeyIndex.ToLong();
    if (position < 1 || position > Count()) RaisePlatform(PlatformError::OutOfRange);
    return *order_[static_cast<std::size_t>(position) - 1];
}

Collection::Entry* Collection::FindKey(const Text& key) const noexcept {
    if (buckets_.empty()) return nullptr;
    const std::uint32_t hash = key.FoldedHash();
    for (Entry* entry = buckets_[BucketOf(key)]; entry; entry = entry->Next) {
        if (entry->Key.FoldedHash() == hash && EqualTexts(entry->Key, key, CompareMode::Text)) {
            return entry;
        }
    }
    return nullptr;
}

Variant Collection::Get(std::u16string_view member, Arguments arguments) {
    if (Names(member, u"Count") && arguments.empty()) return Count();
    if (Names(member, u"Item") && arguments.size() == 1) return Item(arguments[0]);
    return Object::Get(member, arguments);
}

void Collection::GrowBuckets() {
    std::vector<Entry*> grown(buckets_.empty() ? kLeastBuckets : 2 * buckets_.size());
    buckets_.swap(grown);
    LinkAll();
}

// Whether more share the bucket of an entry, which begins it, than chance brings together.
bool Collection::IsCrowded(const Entry& entry) const noexcept {
    constexpr int kMost = 16;
    constexpr int kMostAlike = 4;
    if (strict_) return false;
    int all = 1;
    int alike = 1;
    for (const Entry* other = entry.Next; other && all < kMost; other = other->Next) {
        ++all;
        alike += other->Key.FoldedHash() == entry.Key.FoldedHash() ? 1 : 0;
    }
    return all == kMost || alike >= kMostAlike;
}

void Collection::Link(Entry& entry) noexcept {
    entry.Next = std::exchange(buckets_[BucketOf(entry.Key)], &entry);
}

void Collection::LinkAll() noexcept {
    std::ranges::fill(buckets_, nullptr);
    for (const auto& entry : order_) {
        if (entry->Keyed) Link(*entry);
    }
}

void Collection::RemoveNamed(const Variant& vKeyIndex) {
    const Entry& doomed = Find(vKeyIndex);
    const std::size_t at = IndexOf(doomed);
    if (doomed.Keyed) Unlink(doomed);
    // Released last, when everything stands again: its end may run code that looks in here.
    const std::unique_ptr<Entry> taken = std::move(order_[at]);
    order_.erase(order_.begin() + static_cast<std::ptrdiff_t>(at));
    const std::size_t count = order_.size();
    if (at < count - at) {
        Renumber(0, at, 1);
    } else {
        Renumber(at, count, -1);
    }
}

void Collection::Renumber(std::size_t from, std::size_t to, std::int64_t distance) noexcept {
    for (std::size_t i = from; i < to; ++i) order_[i]->Place += distance;
}

void Collection::Unlink(const Entry& entry) noexcept {
    Entry** link = &buckets_[BucketOf(entry.Key)];
    while (*link != &entry) link = &(*link)->Next;
    *link = entry.Next;
}

}  // namespace zorvane
