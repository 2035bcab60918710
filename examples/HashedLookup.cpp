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
        // One look-up, and no Text is made for it: the entry itself, or none.
        if (auto seen = words.FindEntry(word)) {
            seen.SetItemLong(seen.ItemLong() + 1);
        } else {
            words.Add({{word, word, 1}});
        }
    }
    for (auto [key, item, count, note] : words.Entries()) {
        std::cout << key << ' ' << count << '\n';
    }
    std::cout << "once: " << erase_if(words, [](const auto& entry) { return entry.ItemLong == 1; })
              << '\n';

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
