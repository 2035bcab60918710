// Any words at all, assigned to a bag: nothing may be raised, little memory taken, and what was
// understood must come back the same from the bag's own words. Bytes that begin with an M are made
// into a stream that is nearly sound (StreamMaker); others are the words themselves.

#include <cstring>

#include "fuzz/Require.h"
#include "fuzz/StreamMaker.h"
#include "tests/support/AllocationFaults.h"
#include "tests/unit/propbag/Words.h"
#include "zorvane/platform/Error.h"
#include "zorvane/propbag/BagReport.h"
#include "zorvane/propbag/BagStream.h"
#include "zorvane/propbag/detail/StreamEncoder.h"

namespace {

using namespace zorvane;

// What decoding may allocate in all, per byte of the stream: an entry of few words has a record,
// two texts and their blocks.
constexpr std::int64_t kMemoryFactor = 16;
constexpr std::int64_t kMemoryFloor = 1024;

// Goes where a program goes that was given a foreign bag.
void UseEverything(const ZVPropertyBag& bag) {
    for (std::int32_t i = 1; i <= bag.Count(); ++i) {
        const Text name = bag.Key(i);
        Require(bag.PropIsObject(i) == !bag.ObjName(i).Empty(), "PropIsObject follows ObjName");
        Variant value;
        Require(bag.ItemFn(i, value), "every position has an item");
        static_cast<void>(bag.ItemFn(name, value));
        // Unknown classes raise, and nothing else may.
        IgnoringErrors([&] { value = bag.ReadProperty(name); });
        IgnoringErrors([&] { value = bag.ReadProperty(name, {.Index = i}); });
    }
}

// A stream that a checker has nothing against is written again word for word, but for Null and
// Decimal, of which the format keeps the type alone and the reader not even that.
void RequireSameWords(std::span<const std::int16_t> read, std::span<const std::int16_t> written) {
    Require(written.size() <= read.size(), "a sound stream does not grow");
    for (std::size_t i = 0; i < written.size(); ++i) {
        const bool lost = written[i] == 0 && (read[i] == 1 || read[i] == 14);
        Require(lost || written[i] == read[i], "a sound stream is written word for word");
    }
}

// Cut off anywhere, the stream still gives the whole entries in front of the cut.
void RequireWhatStandsBeforeACut(std::span<const std::int16_t> words) {
    const BagReading whole = DecodeBag(words);
    const auto& entries = whole.State.Entries;
    const std::size_t step = 1 + words.size() / 1024;
    for (std::size_t length = 0; length < words.size(); length += step) {
        const BagReading cut = DecodeBag(words.first(length));
        Require(cut.Damage.has_value(), "a cut is damage");
        std::size_t left = 0;
        for (; left < entries.size(); ++left) {
            if (whole.ValueWords[left] + StreamWordsOf(entries[left].Value) > length) break;
            Require(left < cut.State.Entries.size(), "a whole entry is read");
            const BagEntry& entry = cut.State.Entries[left];
            Require(entry.Value == entries[left].Value && entry.Name == entries[left].Name,
                    "an entry does not change by what comes behind it");
        }
        Require(cut.State.Entries.size() == left, "half an entry is not read");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::int16_t> words(size / 2);
    if (!words.empty()) std::memcpy(words.data(), data, words.size() * 2);
    bool sound = false;
    if (size != 0 && data[0] == 'M') {
        StreamMaker maker({data + 1, size - 1});
        words = maker.Make();
        sound = maker.IsSound();
    }
    const Array given = Array::OfWords(words);

    ZVPropertyBag bag;
    const std::int64_t before = AllocatedBytes();
    bag.SetContents(given);
    const auto bytes = static_cast<std::int64_t>(2 * words.size());
    Require(AllocatedBytes() - before <= kMemoryFloor + kMemoryFactor * bytes,
            "words take memory as they are many, whatever they say");
    UseEverything(bag);
    const Array once = bag.Contents();
    const Array twice = BagFrom(once).Contents();
    Require(BagFrom(twice).Contents() == twice, "what was written twice stays");

    const BagReading checked = DecodeBag(words, StreamCare::Checker);
    Require(checked.State.Entries.size() <= static_cast<std::size_t>(bag.Count()),
            "a checker reads no further than a reader");
    Require(!sound || !checked.Damage, "a checker has nothing against what a bag writes");
    const BagReport report = ReportBag(words);
    Require(checked.Damage ? !report.Damage.empty()
                           : report.Entries.size() == checked.State.Entries.size(),
            "a report tells of damage, and of every entry where there is none");
    std::int32_t position = 0;
    for (const BagReport::Entry& entry : report.Entries) {
        const Variant value = bag.Item(++position);
        Require(entry.Bag.empty() == (entry.Type != kBagType), "a report opens a bag");
        Require(!sound || entry.Bag.empty() || BagFrom(value).Contents() == value,
                "a report opens nothing but bags");
    }
    if (!checked.Damage && bag.Count() > 0) RequireSameWords(words, once.Words());
    if (given == twice && bag.Count() > 0) RequireWhatStandsBeforeACut(words);
    const std::int32_t count = bag.Count();
    for (int i = 0; i < 40; ++i) bag.Add(i, Text(std::to_string(i) + " more"));
    Require(bag.Count() == count + 40, "whatever step it read, a bag takes more");
    return 0;
}
