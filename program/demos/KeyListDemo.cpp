#include "program/demos/KeyListDemo.h"

#include "zorvane/platform/NumberText.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {
namespace {

// A whole number from 1 to 1001.
std::int32_t Draw(Random& random) {
    return Variant(static_cast<double>(random.Next()) * 1000 + 1).ToLong();
}

}  // namespace

const Text& KeyListDemo::Description() {
    static const Text description(
        u"Demonstrates storage of Multiple data types in a single Sorted Key List with each item "
        u"using a common UNIQUE string KEY as the Primary Key. \r\n"
        u"This particular ZVKeyList demonstration stores Variant Data, String Data and Long Data "
        u"Types. You may have any number of Data Types in a ZVKeyList, ZVCollection, ZVList or "
        u"ZVQueue based Class Object.\r\n"
        u"The data in the List Class may be RESORTED using any of the Data Items.");
    return description;
}

Text KeyListDemo::ColumnCaption(int column) {
    constexpr std::array kCaptions{u"Index", u"String Key", u"Variant Item", u"String Item",
                                   u"Long Item"};
    return kCaptions.at(static_cast<std::size_t>(column));
}

void KeyListDemo::Fill(Random& random) {
    for (std::int32_t i = 1; list_.Count() < kRecords;) {
        const Text item = Text(u"Variant") + LongText(Draw(random));
        const Variant position = list_.Add(item, Text(u"String") + LongText(i));
        if (position.ToLong() <= 0) continue;
        ++i;
        list_.SetItemLong(position, Draw(random));
        list_.SetItemString(position, Text(u"str") + LongText(Draw(random)));
    }
}

void KeyListDemo::ReSort(int button, bool descending) {
    constexpr std::array kColumnNames{u"Key", u"Item", u"Itemstring", u"Itemlong"};
    const bool named = button >= 1 && button <= 3;
    list_.SetDescending(descending);
    list_.SortBy(kColumnNames.at(named ? static_cast<std::size_t>(button) : 0));
    list_.Sort();
}

KeyListDemo::Row KeyListDemo::RowAt(std::int32_t position) {
    return {LongText(position), list_.Key(position), list_.Item(position).ToText(),
            list_.ItemString(position), LongText(list_.ItemLong(position))};
}

int KeyListDemo::ColumnOfButton(int button) noexcept {
    return button >= 1 && button <= 3 ? button + 1 : 1;
}

int KeyListDemo::ButtonOfColumn(int column) noexcept {
    return column >= 1 && column <= 4 ? column - 1 : 0;
}

}  // namespace zorvane
