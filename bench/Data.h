#pragma once
// The keys and values of a run, and the tagged value that peers hold.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

namespace bench {

// The 16-byte tagged value that peers hold.
using Value = std::variant<std::monostate, int32_t, double, std::u16string*>;
static_assert(sizeof(Value) == 16);
inline int32_t toInt(const Value& v) {
    if (auto* p = std::get_if<int32_t>(&v)) return *p;
    if (auto* d = std::get_if<double>(&v)) return int32_t(*d);
    return 0;
}

struct Data {
    std::vector<std::u16string> keys;
    std::vector<std::string> bytes;  // keys of as many printable characters
    std::vector<int32_t> values;
    std::u16string absent = u"cccc";
    std::vector<uint32_t> shuffled;  // positions 0..n-1 in random order
    int64_t total = 0;
};

// The keys, and the absent one, as a contender has them.
template <class K>
const std::vector<K>& keysOf(const Data& d) {
    if constexpr (std::is_same_v<K, std::string>)
        return d.bytes;
    else
        return d.keys;
}
template <class K>
K absentOf(const Data& d) {
    return K(d.absent.begin(), d.absent.end());
}

// random: 8..38 units with codes 32..160; otherwise "String1", "String2", ...
inline Data makeData(size_t n, bool random, uint64_t seed) {
    std::mt19937_64 rng(seed);
    auto draw = [&] { return double(rng() >> 11) * 0x1p-53; };
    Data d;
    d.keys.reserve(n);
    d.values.reserve(n);
    for (size_t i = 0; i < n; ++i) {
        d.values.push_back(int32_t(std::nearbyint(draw() * 1000000)));
        std::u16string k;
        if (random) {
            k.resize(size_t(std::nearbyint(draw() * 30 + 8)));
            for (auto& c : k) c = char16_t(std::nearbyint(draw() * 128 + 32));
        } else {
            std::string s = "String" + std::to_string(i + 1);
            k.assign(s.begin(), s.end());
        }
        std::string& b = d.bytes.emplace_back();
        for (char16_t c : k) b += char(c < 127 ? c : c - 95);
        d.keys.push_back(std::move(k));
        d.total += d.values.back();
    }
    d.shuffled.resize(n);
    std::iota(d.shuffled.begin(), d.shuffled.end(), 0u);
    std::shuffle(d.shuffled.begin(), d.shuffled.end(), rng);
    return d;
}

}  // namespace bench
