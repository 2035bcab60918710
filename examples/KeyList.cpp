#include <cstdint>
#include <iostream>

#include "zorvane/keylist/KeyListEX.h"

int main() {
    zorvane::KeyListEX people;  // sorted by key as they come, and no key twice
    people.Add("compilers", "Grace");
    people.Add("programs", "Ada");
    people.Add("shortest paths", "Edsger");
    people.SetItemLong("Grace", 1906);
    people.SetItemLong("Ada", 1815);
    people.SetItemLong("Edsger", 1930);

    for (const zorvane::Variant& item : people) std::cout << item.ToText() << '\n';

    people.SetDescending(true);
    people.SortBy("ItemLong", true);  // the youngest first
    for (std::int32_t i = 1; i <= people.Count(); ++i) {
        std::cout << people.Key(i) << ' ' << people.ItemLong(i) << '\n';
    }

    try {
        std::cout << people.Item("Alan").ToText() << '\n';
    } catch (const zorvane::Error& error) {
        std::cout << error.what() << '\n';
    }
}
