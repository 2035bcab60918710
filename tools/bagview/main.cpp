// zorvane-bag: shows what is in a property bag's file and checks it.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>

#include "tools/bagview/BagReport.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"
#include "zorvane/runtime/FileWords.h"

namespace {

using namespace zorvane;

enum Exit { kSound = 0, kDamaged = 1, kUnread = 2 };

void PrintDamage(std::ostream& out, const Json& damage) {
    for (const Json& finding : damage) {
        out << "damage at word " << finding["word"];
        const std::string path = finding["path"].get<std::string>();
        if (!path.empty()) {
            out << " (in " << finding["path"].dump(-1, ' ', true, Json::error_handler_t::replace)
                << ")";
        }
        out << ": " << finding["message"].get<std::string>() << '\n';
    }
}

int Show(const std::string& file, bool json, bool quiet) {
    const Variant words = modZorvane::ReadFileWords(Text(file));
    if (!words.IsArray()) {
        std::cerr << "zorvane-bag: " << file << " cannot be read\n";
        return kUnread;
    }
    const Json report = ReportBag(words.AsArray().Words());
    if (json) {
        std::cout << report.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    } else if (!quiet) {
        PrintTree(std::cout, report);
    }
    if (!json) PrintDamage(quiet ? std::cerr : std::cout, report["damage"]);
    return report["damage"].empty() ? kSound : kDamaged;
}

int Run(int argc, char** argv) {
    CLI::App app("Shows what is in a property bag's file and checks it.", "zorvane-bag");
    app.set_version_flag("--version", ZORVANE_VERSION);
    app.footer(
        "A word is two bytes; words are counted from 0. Damage is named by the word at which the "
        "file\n"
        "stops making sense; the entries before it are shown as a program would read them.\n"
        "Exit status: 0 the file is sound, 1 it is damaged, 2 it cannot be read.");
    std::string file;
    bool json = false;
    bool quiet = false;
    app.add_option("file", file, "A file such as PropBag.dat")->required();
    CLI::Option* asJson = app.add_flag("-j,--json", json, "Print JSON instead of a tree");
    app.add_flag("-q,--quiet", quiet, "Print damage only, to the error output")->excludes(asJson);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kSound : kUnread;
    }
    return Show(file, json, quiet);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zorvane-bag: %s\n", error.what());
        return kUnread;
    }
}
