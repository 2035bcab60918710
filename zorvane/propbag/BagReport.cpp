#include "zorvane/propbag/BagReport.h"

#include <utility>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/propbag/BagStream.h"
#include "zorvane/propbag/detail/PropertyObjects.h"
#include "zorvane/propbag/detail/StreamWords.h"

namespace zorvane {
namespace {

const char* TypeName(VarType type) {
    switch (type) {
        case VarType::Empty:
            return "Empty";
        case VarType::Null:
            return "Null";
        case VarType::Integer:
            return "Integer";
        case VarType::Long:
            return "Long";
        case VarType::Single:
            return "Single";
        case VarType::Double:
            return "Double";
        case VarType::Currency:
            return "Currency";
        case VarType::Date:
            return "Date";
        case VarType::String:
            return "String";
        case VarType::Error:
            return "Error";
        case VarType::Boolean:
            return "Boolean";
        case VarType::Variant:
            return "Variant";
        case VarType::Decimal:
            return "Decimal";
        case VarType::Byte:
            return "Byte";
        default:
            return "unknown";
    }
}

bool IsBag(const Variant& value) {
    if (value.Type() != (VarType::ArrayFlag | VarType::Integer)) return false;
    const std::span<const std::int16_t> words = value.AsArray().Words();
    return words.size() > 2 && words[0] == words[1] && (words[0] == -1 || words[0] == -9999);
}

// Goes down through nested bags and gathers what is damaged.
class Reporter {
  public:
    BagReport Bag(std::span<const std::int16_t> words, std::size_t firstWord, const Text& path,
                  int depth) {
        const BagReading reading = DecodeBag(words);
        const BagReading checked = DecodeBag(words, StreamCare::Checker);
        if (checked.Damage) Note(path, firstWord + checked.Damage->Word, checked.Damage->what());
        const BagState& state = reading.State;
        BagReport report{.Words = words.size(),
                         .Granularity = state.Granularity,
                         .Sorted = state.Sorted,
                         .UniqueNames = state.UniqueNames};
        if (reading.Words < words.size()) report.WordsRead = reading.Words;
        report.Entries.reserve(state.Entries.size());
        for (std::size_t i = 0; i < state.Entries.size(); ++i) {
            const std::size_t word = firstWord + reading.ValueWords[i];
            const BagEntry& entry = state.Entries[i];
            if (i > 0 && state.Sorted && !checked.Damage) {
                CheckOrder(state.Entries[i - 1], entry, state.UniqueNames, path, word);
            }
            report.Entries.push_back(Entry(entry, word, path, depth));
        }
        return report;
    }

    std::vector<BagReport::Finding> Damage;

  private:
    void CheckOrder(const BagEntry& before, const BagEntry& entry, bool unique, const Text& path,
                    std::size_t word) {
        const int order = CompareTexts(before.Name, entry.Name, CompareMode::Text);
        if (order > 0) Note(path, word, "an entry out of the order of names");
        if (order == 0 && unique) Note(path, word, "a name that occurs twice");
    }

    BagReport::Entry Entry(const BagEntry& entry, std::size_t word, const Text& path, int depth) {
        BagReport::Entry shown;
        shown.Name = entry.Name;
        const bool marked = !entry.ObjName.Empty() && entry.ObjName != Text(kNoObjectMark);
        if (marked) shown.Class = entry.ObjName;
        const Text inner = path.Empty() ? entry.Name : path + Text(u" > ") + entry.Name;
        if (IsBag(entry.Value)) {
            shown.Type = kBagType;
            if (depth == kObjectDepth) {
                Note(inner, word, "bags are nested too deep");
            } else {
                shown.Bag.push_back(Bag(entry.Value.AsArray().Words(), word + kStreamArrayHeader,
                                        inner, depth + 1));
            }
            return shown;
        }
        if (marked) Note(inner, word, "an object without a bag of its own");
        if (entry.ObjName == Text(kNoObjectMark)) {
            shown.Type = kNoObjectType;
            return shown;
        }
        shown.Type = entry.Value.IsArray()
                         ? Text(TypeName(entry.Value.AsArray().ElementType())) + Text(u" array")
                         : Text(TypeName(entry.Value.Type()));
        shown.Value = entry.Value;
        return shown;
    }

    void Note(const Text& path, std::size_t word, const char* what) {
        Damage.push_back({path, word, what});
    }
};

}  // namespace

BagReport ReportBag(std::span<const std::int16_t> words) {
    Reporter reporter;
    BagReport report = reporter.Bag(words, 0, Text(), 1);
    report.Damage = std::move(reporter.Damage);
    return report;
}

}  // namespace zorvane
