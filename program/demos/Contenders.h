#pragma once
// Contenders: the four keyed containers of the timing comparison, each behind the same few words.
//
// Each makes its Container empty, sets it up on request, and says Add, Exists and Visit in the
// container's own terms; Count, Item and Remove are the same words in all four.

#include <array>
#include <cstdint>

#include "zorvane/collection/CollectionEx.h"
#include "zorvane/collection/ZVCollectionEx.h"
#include "zorvane/keylist/KeyListEX.h"
#include "zorvane/platform/Collection.h"
#include "zorvane/platform/Error.h"

namespace zorvane {

// In the order of the columns that they fill.
enum class Contender : int { Collection = 1, KeyList = 2, ZVCollection = 3, CollectionEx = 4 };

struct ContenderInfo {
    Contender Is;
    const char* Button;  // the button's name
    const char16_t* ButtonCaption;
    const char16_t* ColumnCaption;
};

// In the order of the columns. Kept: the buttons count past 4 and stand in another order.
inline constexpr std::array<ContenderInfo, 4> kContenders{{
    {Contender::Collection, "Command1", u"Std Vesk Collection", u"Vesk Collection"},
    {Contender::KeyList, "Command2", u"ZVKeyList Code", u"ZVKeyList"},
    {Contender::ZVCollection, "Command5", u"ZVCollection Code", u"ZVCollection"},
    {Contender::CollectionEx, "Command3", u"Quarm - Hash Table", u"Quarm_CollectionEx"},
}};

struct CollectionContender {
    // Kept: its removals by key are made, but not reported.
    static constexpr bool kReportsRemovalByKey = false;

    void SetUp() {}
    void Add(std::int32_t value, const Text& key) { Container->Add(value, {.Key = key}); }
    // It has no other way to ask: an absent key raises.
    [[nodiscard]] bool Exists(const Variant& key) const {
        return IgnoringErrors([&] { static_cast<void>(Container->Item(key)); });
    }
    template <class Visitor>
    void Visit(Visitor&& visitor) const {
        for (const Variant& item : *Container) visitor(item);
    }

    Ref<Collection> Container = MakeObject<Collection>();
};

// What the other three have alike.
template <class Kind>
struct KeyedContender {
    static constexpr bool kReportsRemovalByKey = true;

    void Add(std::int32_t value, const Text& key) { Container->Add(value, key); }
    template <class Visitor>
    void Visit(Visitor&& visitor) const {
        for (const Variant& item : Container->NewEnum()) visitor(item);
    }

    Ref<Kind> Container = MakeObject<Kind>();
};

struct KeyListContender : KeyedContender<KeyListEX> {
    void SetUp() {
        Container->SetGranularity(2000);
        Container->SetSorted(true);
        Container->SetUnique(true);
    }
    [[nodiscard]] bool Exists(const Variant& key) const {
        std::int32_t index = 0;
        return Container->Exists(key.TextUnchecked(), index);
    }
};

struct ZVCollectionContender : KeyedContender<ZVCollectionEx> {
    void SetUp() {
        Container->SetGranularity(10000);
        Container->SetSorted(false);
    }
    [[nodiscard]] bool Exists(const Variant& key) const {
        std::int32_t index = 0;
        return Container->Exists(key, index);
    }
};

struct CollectionExContender : KeyedContender<CollectionEx> {
    void SetUp() { Container->SetMemory(10000, 0, 0); }
    [[nodiscard]] bool Exists(const Variant& key) const { return Container->Exists(key); }
};

}  // namespace zorvane
