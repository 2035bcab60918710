// How often each word of 5 MB occurs, by the table and by what one would pick instead.

#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#ifdef PEER_TSL
#include <tsl/ordered_map.h>
#include <tsl/robin_map.h>
#endif

#include "bench/Measure.h"
#include "zorvane/table/Table.h"

namespace {

// As in a text of a person's, few words make most of it.
std::string MakeText() {
    std::mt19937 random(1);
    std::vector<std::string> words(40000);
    for (std::string& word : words) {
        word.resize(2 + random() % 12);
        for (char& letter : word) letter = static_cast<char>('a' + random() % 26);
    }
    std::string text;
    while (text.size() < 5'000'000) {
        const double draw = static_cast<double>(random()) / 4294967296.0;
        text += words[static_cast<std::size_t>(draw * draw * draw * 40000)] + ' ';
    }
    return text;
}

template <class Visit>
void ForEachWord(std::string_view text, Visit&& visit) {
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find(' ', from), text.size());
        visit(text.substr(from, end - from));
        from = end + 1;
    }
}

struct Word {
    std::string Text;
    int Count = 0;
};

std::size_t ByTable(std::string_view text) {
    zorvane::Table<Word, &Word::Text> words;
    ForEachWord(text, [&](std::string_view word) {
        words.update(words.try_emplace(word).first, &Word::Count, [](int& count) { ++count; });
    });
    return words.size() + static_cast<std::size_t>(words.nth(0).Count);
}

struct ViewHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view word) const {
        return std::hash<std::string_view>()(word);
    }
};
using Std = std::unordered_map<std::string, int, ViewHash, std::equal_to<>>;
// As most people write it.
template <class Map>
std::size_t ByCopies(std::string_view text) {
    Map words;
    std::string first;
    ForEachWord(text, [&](std::string_view word) {
        if (first.empty()) first = word;
        ++words[std::string(word)];
    });
    return words.size() + static_cast<std::size_t>(words[first]);
}

}  // namespace

int main() {
    const std::string text = MakeText();
    struct Way {
        const char* name;
        std::function<std::size_t(std::string_view)> count;
        std::vector<double> samples;
    };
    std::vector<Way> ways = {{"Table", ByTable, {}},
                             {"std::unordered_map, ++words[string]", ByCopies<Std>, {}}};
#ifdef PEER_TSL
    using Tsl = tsl::ordered_map<std::string, int, ViewHash, std::equal_to<>>;
    using Robin = tsl::robin_map<std::string, int, ViewHash, std::equal_to<>>;
    ways.push_back({"tsl::ordered_map, ++words[string]", ByCopies<Tsl>, {}});
    ways.push_back({"tsl::robin_map, ++words[string]", ByCopies<Robin>, {}});
#endif
    const std::size_t expected = ByTable(text);
    for (int repeat = 0; repeat < 15; ++repeat) {
        for (Way& way : ways) {
            const auto from = bench::Clock::now();
            if (way.count(text) != expected) bench::fail(way.name, "another count");
            way.samples.push_back(
                std::chrono::duration<double, std::milli>(bench::Clock::now() - from).count());
        }
    }
    for (const Way& way : ways)
        std::printf("%-40s %7.1f ms\n", way.name, bench::typical(way.samples));
}
