#include <iostream>

#include "zorvane/keylist/KeyListEX.h"

int main() {
    // Sorted by key as they come, and no key twice.
    zorvane::KeyListEX people{{"Grace", "compilers", 1906}, {"Ada", "programs", 1815}};
    people.Add("shortest paths", "Edsger");
    people.SetItemLong("Edsger", 1930);

    for (const zorvane::Variant& item : people) std::cout << item.ToText() << '\n';

    people.SetDescending(true);
    people.SortBy("ItemLong", true);  // the youngest first
    for (auto [name, work, born, note] : people.Entries()) {
        std::cout << name << ' ' << born << '\n';
    }

    try {
        std::cout << people.Item("Alan").ToText() << '\n';
    } catch (const zorvane::Error& error) {
        std::cout << error.what() << '\n';
    }
}
