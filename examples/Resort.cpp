// The same records in the order of each of their columns, and back in the order of their keys.
#include <cstdint>
#include <iostream>

#include "zorvane/keylist/KeyListEX.h"

namespace {

void Print(zorvane::KeyListEX& list, const char* order) {
    std::cout << order << ':';
    for (std::int32_t i = 1; i <= list.Count(); ++i) std::cout << ' ' << list.Key(i);
    std::cout << '\n';
}

}  // namespace

int main() {
    struct Mountain {
        const char* Name;
        std::int16_t Climbed;
        std::int32_t Height;
        const char* Range;
    };
    const Mountain mountains[] = {{"Elbrus", 1874, 5642, "Caucasus"},
                                  {"Denali", 1913, 6190, "Alaska Range"},
                                  {"Aconcagua", 1897, 6961, "Andes"},
                                  {"Kibo", 1889, 5895, "Kilimanjaro"}};
    zorvane::KeyListEX list;
    for (const auto& [name, climbed, height, range] : mountains) {
        list.Add(climbed, name);
        list.SetItemLong(name, height);
        list.SetItemString(name, range);
    }
    Print(list, "by key");

    list.SortBy("ItemLong", true);
    Print(list, "by height");
    list.SetDescending(true);
    list.Sort();
    Print(list, "highest first");
    list.SetDescending(false);
    list.SortBy("ItemString", true);
    Print(list, "by range");

    // Beware: by "ItemString" a look-up by key takes the keys to be in order and may miss one that
    // is there; SortBy("Key", true) puts them so. By "Item" and "ItemLong" the look-up itself does.

    // A number is a position in the present order; a text is a key, wherever the record stands.
    std::cout << "first by range: " << list.ItemString(1) << '\n';
    list.SortBy("Item", true);  // tagged values order by their texts
    Print(list, "first climbed");

    // Looking a key up needs the order of keys, so it restores that order by itself.
    std::cout << "Kibo has " << list.ItemLong("Kibo") << " m\n";
    Print(list, "by key again");
}
