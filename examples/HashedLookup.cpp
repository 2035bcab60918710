// Words counted in a hashed collection: found by key in constant time, listed in order of arrival.
#include <cstdint>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>

#include "zorvane/collection/ZVCollectionEx.h"

int main() {
    zorvane::ZVCollectionEx words;
    words.SetSorted(false);  // keep the order in which words arrive

    std::istringstream text("the cat saw the dog and the dog saw the cat run");
    for (std::string word; text >> word;) {
        // A quiet look-up leaves `seen` alone on a miss.
        std::int32_t seen = 0;
        if (!words.ItemLongFn(word.c_str(), seen)) words.Add(word.c_str(), word);
        words.SetItemLong(word.c_str(), seen + 1);
    }
    for (std::int32_t i = 1; i <= words.Count(); ++i) {
        std::cout << words.Key(i) << ' ' << words.ItemLong(i) << '\n';
    }

    // Without ReturnItem a failure is a negative number, with it an error is raised.
    std::cout << "again: " << words.Add(1, "dog").ToText() << '\n';
    try {
        words.Add(1, "dog", {.ReturnItem = true});
    } catch (const zorvane::Error& error) {
        std::cout << error.Source << " says: " << error.Description << '\n';
    }

    words.Add("a bird", "bird", {.Before = "cat"});
    words.Remove("the");
    for (const char* word : {"bird", "the"}) {
        // The item where it lies, until the collection changes, or null.
        const zorvane::Variant* item = words.FindItem(word);
        std::cout << word << ": " << (item ? item->ToText() : zorvane::Text("none")) << '\n';
    }
    std::cout << "first: " << words.Key(1) << ", of " << words.Count() << '\n';

    zorvane::ZVCollectionEx taken = std::move(words);
    for (const zorvane::Variant& item : taken) std::cout << '[' << item.ToText() << ']';
    std::cout << '\n';
}
