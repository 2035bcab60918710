#pragma once
// Words of streams, written in tests as they are read: hexadecimal, four digits each.

#include <cstdint>
#include <iomanip>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "zorvane/platform/Array.h"
#include "zorvane/propbag/ZVPropertyBag.h"

namespace zorvane {

using Words = std::vector<std::int16_t>;

inline Words Hex(const std::string& text) {
    std::istringstream in(text);
    Words words;
    for (unsigned word = 0; in >> std::hex >> word;) {
        words.push_back(static_cast<std::int16_t>(word));
    }
    return words;
}

inline std::string ToHex(std::span<const std::int16_t> words) {
    std::ostringstream out;
    out << std::hex << std::uppercase << std::setfill('0');
    for (const std::int16_t word : words) {
        out << std::setw(4) << static_cast<std::uint16_t>(word) << ' ';
    }
    return out.str();
}

// A bag that held something else before.
inline ZVPropertyBag BagFrom(const Variant& contents) {
    ZVPropertyBag bag;
    bag.WriteProperty(u"Old", 1);
    bag.SetGranularity(99);
    bag.SetContents(contents);
    return bag;
}
inline ZVPropertyBag BagFrom(const Words& words) {
    return BagFrom(Array::OfWords(words));
}

template <class... Values>
Array ArrayOf(VarType element, std::int32_t lower, const Values&... values) {
    Array array(element, lower, sizeof...(values));
    std::int64_t at = lower;
    (array.SetAt(static_cast<std::int32_t>(at++), values), ...);
    return array;
}

// "Caption" set to "Hi" and "Left" set to the Long 1200, with the settings of a new bag: 61 words.
inline Words TwoEntries() {
    return Hex(
        "FFFF FFFF  0003 0004 0002 0000 "
        "2008 0004 0002 0000 0001 0000 0002 0000 "
        "0007 0000 0043 0061 0070 0074 0069 006F 006E  0004 0000 004C 0065 0066 0074 "
        "2008 0004 0002 0000 0001 0000 0002 0000  0000 0000 0000 0000 "
        "0008 0000 0002 0000 0048 0069  0003 0004 04B0 0000 "
        "0003 0004 0010 0000  000B 0002 FFFF  000B 0002 FFFF");
}

// A stream of one entry named "V" whose value is encoded as these words, with granularity 17.
inline Words OneEntry(const std::string& value) {
    return Hex(
        "FFFF FFFF 0003 0004 0001 0000 "
        "2008 0004 0001 0000 0001 0000 0001 0000  0001 0000 0056 "
        "2008 0004 0001 0000 0001 0000 0001 0000  0000 0000 " +
        value + " 0003 0004 0011 0000 000B 0002 FFFF 000B 0002 FFFF");
}

// Where the value of OneEntry begins.
inline constexpr std::size_t kValueWord = 27;

}  // namespace zorvane
