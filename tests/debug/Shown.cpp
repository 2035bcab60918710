// Values for a debugger to show.

#include <cstdint>
#include <string>

#include "zorvane/collection/CollectionEx.h"
#include "zorvane/collection/ZVCollectionEx.h"
#include "zorvane/keylist/KeyListEX.h"
#include "zorvane/platform/Array.h"
#include "zorvane/table/Table.h"

struct Named {
    std::string Name;
    int Born;
};

void ShowHere() {}

int main() {
    zorvane::KeyListEX people{{"Grace", "compilers", 1906}, {"Ada", 0.5, 1815, u"a\u00e4"}};
    people.Add(true, "Alan");
    zorvane::CollectionEx blocks;
    for (int i = 0; i < 300; ++i) blocks.Add(i, zorvane::Text(std::to_string(i)));
    blocks.Remove(2);
    zorvane::Table<Named, &Named::Name> table{{"Emmy", 1882}};
    zorvane::ZVCollectionEx hashed{{"Mary", 1}};
    const std::int16_t words[] = {1906, 1815};
    const zorvane::Variant array = zorvane::Array::OfWords(words);
    const zorvane::Variant value("three");
    const zorvane::Text text("four");
    ShowHere();
}
