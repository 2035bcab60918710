#pragma once
// Floods: keys that somebody might choose so that a container spends its time on telling them
// apart.

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace zorvane {

struct Flood {
    const char* Name;
    std::u16string (*Key)(unsigned number);  // below 100,000, all different
    // Whether they are also different folded, and in lower case.
    bool Folded;
    bool Lowered;
};

// `length` units, of each the one or the other by a bit of the number.
inline std::u16string ByBits(unsigned number, std::size_t length, char16_t one, char16_t other) {
    std::u16string key(length, other);
    for (std::size_t bit = 0; bit < 17; ++bit) {
        if ((number >> bit & 1) != 0) key[bit] = one;
    }
    return key;
}

inline constexpr Flood kFloods[] = {
    {"one word in other case", [](unsigned n) { return ByBits(n, 20, u'A', u'a'); }, false, false},
    {"signs that an ordinary hash takes for one",
     [](unsigned n) { return ByBits(n, 20, u'@', u'`'); }, true, true},
    {"small letters that folding joins",
     [](unsigned n) { return ByBits(n, 20, u'\u03C2', u'\u03C3'); }, false, true},
    // Against a hash with fixed keys: two products are 0, and the sum of what is left is the same.
    {"solved for fixed keys",
     [](unsigned n) {
         const auto a = static_cast<char16_t>(0x5000 + n % 0x3000);
         const auto b = static_cast<char16_t>(0x5000 + n / 0x3000);
         std::u16string key = u"\u28DB\uA0B4abxxxx\u164A\u8770ab" + std::u16string(28, u'x');
         key[2] = a;
         key[3] = b;
         key[10] = static_cast<char16_t>(0xD000 - a);
         key[11] = static_cast<char16_t>(0xD000 - b);
         return key;
     },
     true, true},
    // Twice the first unit and the second: the hash code that shows is the same for all.
    {"one hash code",
     [](unsigned n) {
         std::u16string key;
         for (unsigned bit = 0; bit < 17; ++bit) key += (n >> bit & 1) != 0 ? u"18" : u"26";
         return key;
     },
     true, true},
    {"another end behind 300 units",
     [](unsigned n) {
         std::u16string key(305, u'x');
         for (std::size_t at = 300; at < key.size(); ++at, n /= 26) {
             key[at] = static_cast<char16_t>(u'a' + n % 26);
         }
         return key;
     },
     true, true},
};

// Numbers that come to lie side by side under the usual multiplier, once their halves were joined.
inline std::uint64_t SolvedNumber(std::uint64_t number) {
    constexpr std::uint64_t kUsual = 0x9E3779B97F4A7C15u;
    std::uint64_t inverse = kUsual;
    for (int bits = 3; bits < 64; bits *= 2) inverse *= 2 - kUsual * inverse;
    const std::uint64_t joined = number * inverse;
    return joined ^ (joined >> 32);
}

// What nobody chose.
inline std::u16string OrdinaryKey(std::mt19937& random, std::size_t length) {
    std::u16string key(length, u' ');
    for (char16_t& unit : key) unit = static_cast<char16_t>(u'a' + random() % 26);
    return key;
}

}  // namespace zorvane
