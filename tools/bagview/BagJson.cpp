#include "tools/bagview/BagJson.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace zorvane {
namespace {

constexpr std::size_t kShownElements = 8;

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

Json BagJson(const BagReport& report);

Json EntryJson(const BagReport::Entry& entry) {
    Json shown{{"name", entry.Name.ToUtf8()}};
    if (!entry.Class.Empty()) shown["class"] = entry.Class.ToUtf8();
    shown["type"] = entry.Type.ToUtf8();
    if (!entry.Bag.empty()) shown["bag"] = BagJson(entry.Bag.front());
    if (entry.Type == Text(kBagType) || entry.Type == Text(kNoObjectType)) return shown;
    if (entry.Value.IsArray()) shown["lower"] = entry.Value.AsArray().LowerBound();
    shown["value"] = ValueJson(entry.Value);
    return shown;
}

Json BagJson(const BagReport& report) {
    Json bag{{"words", report.Words}};
    if (report.WordsRead != 0) bag["wordsRead"] = report.WordsRead;
    bag["granularity"] = report.Granularity;
    bag["sorted"] = report.Sorted;
    bag["uniqueNames"] = report.UniqueNames;
    bag["entries"] = Json::array();
    for (const BagReport::Entry& entry : report.Entries) bag["entries"].push_back(EntryJson(entry));
    return bag;
}

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

Json ToJson(const BagReport& report) {
    Json json = BagJson(report);
    json["damage"] = Json::array();
    for (const BagReport::Finding& finding : report.Damage) {
        json["damage"].push_back(
            {{"path", finding.Path.ToUtf8()}, {"word", finding.Word}, {"message", finding.What}});
    }
    return json;
}

void PrintTree(std::ostream& out, const Json& report) {
    PrintBag(out, report, "  ");
}

}  // namespace zorvane
