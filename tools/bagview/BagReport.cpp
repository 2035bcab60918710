#include "tools/bagview/BagReport.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/propbag/BagStream.h"
#include "zorvane/propbag/detail/PropertyObjects.h"
#include "zorvane/propbag/detail/StreamWords.h"

namespace zorvane {
namespace {

constexpr std::size_t kShownElements = 8;

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

Json ValueJson(const Variant& value) {
    if (value.IsArray()) {
        Json elements = Json::array();
        const Array& array = value.AsArray();
        for (std::int32_t i = 0; i < array.Count(); ++i) {
            const auto at = static_cast<std::int32_t>(std::int64_t{array.LowerBound()} + i);
            elements.push_back(ValueJson(array.At(at)));
        }
        return elements;
    }
    switch (value.Type()) {
        case VarType::Empty:
        case VarType::Null:
            return nullptr;
        case VarType::Boolean:
            return value.ToBoolean();
        case VarType::Integer:
        case VarType::Long:
        case VarType::Byte:
            return value.ToLong();
        case VarType::Error:
            return value.AsError();
        case VarType::Single:
        case VarType::Double:
            if (std::isfinite(value.ToDouble())) return value.ToDouble();
            [[fallthrough]];
        default:
            return value.ToText().ToUtf8();  // exact, or no number at all
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
    Json Bag(std::span<const std::int16_t> words, std::size_t firstWord, const std::string& path,
             int depth) {
        const BagReading reading = DecodeBag(words);
        const BagReading checked = DecodeBag(words, StreamCare::Checker);
        if (checked.Damage) Note(path, firstWord + checked.Damage->Word, checked.Damage->what());
        const BagState& state = reading.State;
        Json bag{{"words", words.size()}};
        if (reading.Words != 0 && reading.Words < words.size()) bag["wordsRead"] = reading.Words;
        bag["granularity"] = state.Granularity;
        bag["sorted"] = state.Sorted;
        bag["uniqueNames"] = state.UniqueNames;
        bag["entries"] = Json::array();
        for (std::size_t i = 0; i < state.Entries.size(); ++i) {
            const std::size_t word = firstWord + reading.ValueWords[i];
            const BagEntry& entry = state.Entries[i];
            if (i > 0 && state.Sorted && !checked.Damage) {
                CheckOrder(state.Entries[i - 1], entry, state.UniqueNames, path, word);
            }
            bag["entries"].push_back(Entry(entry, word, path, depth));
        }
        return bag;
    }

    Json Damage = Json::array();

  private:
    void CheckOrder(const BagEntry& before, const BagEntry& entry, bool unique,
                    const std::string& path, std::size_t word) {
        const int order = CompareTexts(before.Name, entry.Name, CompareMode::Text);
        if (order > 0) Note(path, word, "an entry out of the order of names");
        if (order == 0 && unique) Note(path, word, "a name that occurs twice");
    }

    Json Entry(const BagEntry& entry, std::size_t word, const std::string& path, int depth) {
        const std::string name = entry.Name.ToUtf8();
        Json shown{{"name", name}};
        const bool marked = !entry.ObjName.Empty() && entry.ObjName != Text(kNoObjectMark);
        if (marked) shown["class"] = entry.ObjName.ToUtf8();
        const std::string inner = path.empty() ? name : path + " > " + name;
        if (IsBag(entry.Value)) {
            shown["type"] = "bag";
            if (depth == kObjectDepth) {
                Note(inner, word, "bags are nested too deep");
            } else {
                shown["bag"] =
                    Bag(entry.Value.AsArray().Words(), word + kStreamArrayHeader, inner, depth + 1);
            }
            return shown;
        }
        if (marked) Note(inner, word, "an object without a bag of its own");
        if (entry.ObjName == Text(kNoObjectMark)) {
            shown["type"] = "no object";
            return shown;
        }
        if (entry.Value.IsArray()) {
            const Array& array = entry.Value.AsArray();
            shown["type"] = std::string(TypeName(array.ElementType())) + " array";
            shown["lower"] = array.LowerBound();
        } else {
            shown["type"] = TypeName(entry.Value.Type());
        }
        shown["value"] = ValueJson(entry.Value);
        return shown;
    }

    void Note(const std::string& path, std::size_t word, const char* what) {
        Damage.push_back(Json{{"path", path}, {"word", word}, {"message", what}});
    }
};

// A text in quotation marks that does nothing to the terminal that shows it.
std::string Quoted(const Json& text) {
    const std::string units = text.get<std::string>();
    const Text decoded(units);
    const auto harmful = [](char16_t unit) {
        return (unit >= 0x7F && unit <= 0x9F) || (unit >= 0x200E && unit <= 0x202E) ||
               (unit >= 0x2066 && unit <= 0x2069);
    };
    const bool plain = std::ranges::none_of(decoded.Units(), harmful);
    return text.dump(-1, ' ', !plain, Json::error_handler_t::replace);
}

std::string Brief(const Json& value) {
    if (value.is_string()) return Quoted(value);
    if (value.is_null()) return "";
    if (!value.is_array()) return value.dump();
    std::string shown = "[";
    for (std::size_t i = 0; i < std::min(value.size(), kShownElements); ++i) {
        shown += (i == 0 ? "" : ", ") + (value[i].is_null() ? "Empty" : Brief(value[i]));
    }
    if (value.size() > kShownElements) shown += ", ... " + std::to_string(value.size()) + " in all";
    return shown + "]";
}

void PrintBag(std::ostream& out, const Json& bag, const std::string& indent);

void PrintEntry(std::ostream& out, const Json& entry, const std::string& indent) {
    out << indent << Quoted(entry["name"]) << ": " << entry["type"].get<std::string>();
    if (entry.contains("class")) out << " of class " << Quoted(entry["class"]);
    if (entry.contains("value")) {
        const std::string value = Brief(entry["value"]);
        if (!value.empty()) out << ' ' << value;
        const bool array = entry["value"].is_array();
        if (array && entry["lower"] != 0) out << " from " << entry["lower"];
    }
    if (!entry.contains("bag")) {
        out << '\n';
    } else {
        out << ", ";
        PrintBag(out, entry["bag"], indent + "  ");
    }
}

void PrintBag(std::ostream& out, const Json& bag, const std::string& indent) {
    out << bag["words"] << (bag["words"] == 1 ? " word" : " words");
    if (bag.contains("wordsRead")) out << " (" << bag["wordsRead"] << " of them read)";
    if (bag["granularity"] != 16) out << ", granularity " << bag["granularity"];
    if (!bag["sorted"]) out << ", not sorted";
    if (!bag["uniqueNames"]) out << ", names may repeat";
    if (bag["entries"].empty()) out << ", no entries";
    out << '\n';
    for (const Json& entry : bag["entries"]) PrintEntry(out, entry, indent);
}

}  // namespace

Json ReportBag(std::span<const std::int16_t> words) {
    Reporter reporter;
    Json report = reporter.Bag(words, 0, "", 1);
    report["damage"] = std::move(reporter.Damage);
    return report;
}

void PrintTree(std::ostream& out, const Json& report) {
    PrintBag(out, report, "  ");
}

}  // namespace zorvane
