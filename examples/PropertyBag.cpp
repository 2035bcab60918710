// Settings in a property bag: written to a file, read back, and found again whatever their type.
#include <cstdint>
#include <cstdio>
#include <iostream>

#include "zorvane/propbag/ZVPropertyBag.h"
#include "zorvane/runtime/FileWords.h"

int main() {
    const zorvane::Text path("example.bag");  // in the current directory
    std::remove(path.ToUtf8().c_str());

    zorvane::ZVPropertyBag settings;
    settings.WriteProperty("Caption", u"Grüße");
    settings.WriteProperty("Width", 4500);
    settings.WriteProperty("Zoom", 1.5, {.Default = 1.0});
    settings.WriteProperty("Maximised", false, {.Default = false});  // the default: not stored

    zorvane::Array recent(zorvane::VarType::String, 1, 2);
    recent.SetAt(1, "letter.txt");
    recent.SetAt(2, "notes.txt");
    settings.WriteProperty("Recent", recent);
    zorvane::modZorvane::WriteFileWords(path, settings.Contents());

    // A damaged or missing file gives a bag with fewer entries, or none; nothing is raised.
    zorvane::ZVPropertyBag read;
    read.SetContents(zorvane::modZorvane::ReadFileWords(path));
    for (std::int32_t i = 1; i <= read.Count(); ++i) std::cout << read.Key(i) << '\n';

    std::cout << read.ReadProperty("caption").ToText() << '\n';  // names have no case
    std::cout << read.ReadProperty("Width").ToLong() / 15 << " pixels\n";
    std::cout << read.ReadProperty("Zoom", {.Default = 1.0}).ToText() << '\n';
    std::cout << read.ReadProperty("Maximised", {.Default = false}).ToText() << '\n';
    std::cout << read.ReadProperty("Height", {.Default = 3000}).ToText() << '\n';
    const zorvane::Variant files = read.ReadProperty("Recent");
    for (std::int32_t i = 1; i <= 2; ++i) std::cout << files.AsArray().At(i).ToText() << '\n';
    std::remove(path.ToUtf8().c_str());
}
