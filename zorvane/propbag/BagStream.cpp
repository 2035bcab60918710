#include "zorvane/propbag/BagStream.h"

#include <algorithm>
#include <limits>

#include "zorvane/platform/Error.h"
#include "zorvane/propbag/detail/StreamEncoder.h"
#include "zorvane/propbag/detail/StreamWords.h"

namespace zorvane {
namespace {

constexpr std::int16_t kEntriesFollow = -1;
constexpr std::int16_t kEmptyBag = -9999;
constexpr std::size_t kMarkerWords = 2;
constexpr std::uint64_t kLeastEntry = 6;  // words of an entry: two for each text and the value

std::uint64_t WordsOf(const BagState& state) {
    const Variant longValue = std::int32_t{0};
    const Variant flag = false;
    std::uint64_t words = kMarkerWords + 2 * StreamWordsOf(longValue) + 2 * StreamWordsOf(flag);
    if (state.Entries.empty()) return words;
    words += 2 * kStreamArrayHeader;
    for (const BagEntry& entry : state.Entries) {
        words += 2 + static_cast<std::uint64_t>(entry.Name.Length());
        words += 2 + static_cast<std::uint64_t>(entry.ObjName.Length());
        words += StreamWordsOf(entry.Value);
    }
    return words;
}

void WriteTexts(StreamEncoder& encoder, const BagState& state, Text BagEntry::*column) {
    encoder.WriteArrayHeader(VarType::String, 1, static_cast<std::int32_t>(state.Entries.size()));
    for (const BagEntry& entry : state.Entries) encoder.WriteText(entry.*column);
}

// The elements of an array of any kind as texts. Equal ones in a row share a text: an array may
// hold any number of zeros that no words of the stream stand for.
class TextsOf {
  public:
    explicit TextsOf(const Array& array) noexcept : array_(array) {}
    [[nodiscard]] Text At(std::int32_t index) {
        Variant element = array_.At(index);
        if (text_ && element == element_) return *text_;
        text_ = element.ToText();
        element_ = std::move(element);
        return *text_;
    }

  private:
    const Array& array_;
    Variant element_;
    std::optional<Text> text_;  // of element_
};

// Reads one thing after the other and knows where the last one began.
class BagReader {
  public:
    BagReader(std::span<const std::int16_t> words, StreamCare care)
        : care_(care), decoder_(words, kMarkerWords, care) {}

    // Fills `reading` as far as the stream goes. Throws StreamDamage, and Error for a value that is
    // not of the kind due at Began().
    void Fill(BagReading& reading) {
        const std::int32_t count = Next(VarType::Long).ToLong();
        if (care_ == StreamCare::Checker && count < 1) {
            throw StreamDamage(began_ + 2, "no entries behind the marker of a bag with entries");
        }
        if (count > 0) FillEntries(reading, count);
        reading.State.Granularity = Next(VarType::Long).ToLong();
        reading.State.Sorted = Next(VarType::Boolean).ToBoolean();
        reading.State.UniqueNames = Next(VarType::Boolean).ToBoolean();
        reading.Words = decoder_.Position();
    }
    [[nodiscard]] std::size_t Began() const noexcept { return began_; }

  private:
    void FillEntries(BagReading& reading, std::int32_t count) {
        std::vector<BagEntry>& entries = reading.State.Entries;
        if (!ReadTextsInPlace(entries, count)) return FillOneByOne(reading, count);
        reading.ValueWords.reserve(entries.size());
        std::size_t whole = 0;
        try {
            for (; whole < entries.size(); ++whole) entries[whole].Value = NextValue(reading);
        } catch (...) {
            entries.resize(whole);
            throw;
        }
    }
    // Reads the texts of all entries to where they belong, when the stream has them as writers put
    // them; otherwise nothing.
    bool ReadTextsInPlace(std::vector<BagEntry>& entries, std::int32_t count) {
        if (!decoder_.Has(static_cast<std::uint64_t>(count) * kLeastEntry)) return false;
        const std::size_t start = decoder_.Position();
        try {
            entries.resize(static_cast<std::size_t>(count));
            if (ReadTexts(entries, &BagEntry::Name) && ReadTexts(entries, &BagEntry::ObjName)) {
                return true;
            }
        } catch (const StreamDamage&) {
            // Whoever reads one by one comes upon it again and says what stays.
        }
        entries.clear();
        decoder_.Return(start);
        return false;
    }
    bool ReadTexts(std::vector<BagEntry>& entries, Text BagEntry::*column) {
        if (!decoder_.EnterTexts(static_cast<std::int32_t>(entries.size()))) return false;
        for (BagEntry& entry : entries) entry.*column = decoder_.ReadText();
        return true;
    }
    // The texts may be arrays of any kind and bounds; entries are whole as far as both go.
    void FillOneByOne(BagReading& reading, std::int32_t count) {
        const Variant namesRead = NextTexts(count);
        const Variant objNamesRead = NextTexts(count);
        TextsOf names(namesRead.AsArray());
        TextsOf objNames(objNamesRead.AsArray());
        // At once, as growth step by step takes three times the memory.
        const std::size_t most = decoder_.MostValues(
            std::min({count, namesRead.AsArray().Count(), objNamesRead.AsArray().Count()}));
        reading.State.Entries.reserve(most);
        reading.ValueWords.reserve(most);
        for (std::int32_t i = 1; i <= count; ++i) {
            BagEntry entry{{}, names.At(i), objNames.At(i)};
            entry.Value = NextValue(reading);
            reading.State.Entries.push_back(std::move(entry));
        }
    }
    Variant NextValue(BagReading& reading) {
        Variant value = Next();
        reading.ValueWords.push_back(static_cast<std::uint32_t>(began_));
        return value;
    }
    Variant NextTexts(std::int32_t count) {
        Variant texts = Next(VarType::ArrayFlag | VarType::String);
        const Array& array = texts.AsArray();
        if (care_ == StreamCare::Checker && (array.Count() != count || array.LowerBound() != 1)) {
            throw StreamDamage(began_ + 2, "not as many texts as the bag has entries");
        }
        return texts;
    }
    Variant Next() {
        began_ = decoder_.Position();
        return decoder_.Read();
    }
    Variant Next(VarType due) {
        Variant value = Next();
        if (care_ == StreamCare::Checker && value.Type() != due) {
            throw StreamDamage(began_, "a value of another type than is due here");
        }
        return value;
    }

    StreamCare care_;
    StreamDecoder decoder_;
    std::size_t began_ = kMarkerWords;
};

}  // namespace

Array EncodeBag(const BagState& state) {
    const std::uint64_t words = WordsOf(state);
    if (words > std::numeric_limits<std::int32_t>::max()) RaisePlatform(PlatformError::Overflow);
    Array stream = Array::Uninitialised(VarType::Integer, 0, static_cast<std::int32_t>(words));
    StreamEncoder encoder(stream.MutableElements<std::int16_t>());
    const bool empty = state.Entries.empty();
    for (std::size_t i = 0; i < kMarkerWords; ++i) {
        encoder.WriteWord(static_cast<std::uint16_t>(empty ? kEmptyBag : kEntriesFollow));
    }
    encoder.Write(static_cast<std::int32_t>(state.Entries.size()));
    if (!empty) {
        WriteTexts(encoder, state, &BagEntry::Name);
        WriteTexts(encoder, state, &BagEntry::ObjName);
        for (const BagEntry& entry : state.Entries) encoder.Write(entry.Value);
    }
    encoder.Write(state.Granularity);
    encoder.Write(state.Sorted);
    encoder.Write(state.UniqueNames);
    return stream;
}

BagReading DecodeBag(std::span<const std::int16_t> words, StreamCare care) {
    BagReading reading;
    if (words.size() <= kMarkerWords) {
        reading.Damage.emplace(0, "fewer than three words", kMarkerWords + 1);
        return reading;
    }
    if (words[0] == kEmptyBag && words[1] == kEmptyBag) {
        // No reader looks behind the marker; what a writer puts there is as long as this.
        reading.Words = std::min(words.size(), static_cast<std::size_t>(WordsOf(BagState())));
        return reading;
    }
    for (std::size_t i = 0; i < kMarkerWords; ++i) {
        if (words[i] == kEntriesFollow) continue;
        reading.Damage.emplace(i, "no marker of a bag");
        return reading;
    }
    BagReader reader(words, care);
    try {
        reader.Fill(reading);
    } catch (const StreamDamage& damage) {
        reading.Damage = damage;
    } catch (const Error&) {
        reading.Damage.emplace(reader.Began(), "a value that cannot stand here");
    }
    return reading;
}

BagReading DecodeContents(const Variant& value) {
    if (value.Type() != (VarType::ArrayFlag | VarType::Integer)) return {};
    return DecodeBag(value.AsArray().Words());
}

}  // namespace zorvane
