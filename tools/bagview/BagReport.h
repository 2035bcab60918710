#pragma once
// BagReport: all that is to be said about the words of a bag file, as JSON; and that JSON as a
// tree.

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <nlohmann/json.hpp>
#include <span>

namespace zorvane {

using Json = nlohmann::ordered_json;

// {"words", "granularity", "sorted", "uniqueNames", "entries": [entry...], "damage": [...]}
//
// An entry has "name" and "type" and, by type, "value" (with "lower" for an array) or "class" and
// "bag". An array of 16-bit integers that begins with a bag's marker is taken for a nested bag. The
// entries are those that a reader of the format gets; "damage" stands at the outermost bag alone
// and says of each finding in which bag ("path") and at which word of the whole file ("word") it
// is.
[[nodiscard]] Json ReportBag(std::span<const std::int16_t> words);

// One line per entry, nested bags indented, long arrays cut short.
void PrintTree(std::ostream& out, const Json& report);

}  // namespace zorvane
