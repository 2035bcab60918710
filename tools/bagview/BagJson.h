#pragma once
// BagJson: a report on a bag's words as JSON, and that JSON as a tree of lines.

#include <iosfwd>
#include <nlohmann/json.hpp>

#include "zorvane/propbag/BagReport.h"

namespace zorvane {

using Json = nlohmann::ordered_json;

// {"words", "granularity", "sorted", "uniqueNames", "entries": [entry...], "damage": [...]}
//
// An entry has "name" and "type" and, by type, "value" (with "lower" for an array) or "class" and
// "bag". "damage" stands at the outermost bag alone and says of each finding in which bag ("path")
// and at which word of the whole file ("word") it is.
[[nodiscard]] Json ToJson(const BagReport& report);

// One line per entry, nested bags indented, long arrays cut short.
void PrintTree(std::ostream& out, const Json& report);

}  // namespace zorvane
