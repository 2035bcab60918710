// zorvane-bag: shows what is in a property bag's file and checks it.

#include <CLI/CLI.hpp>
#include <cstdint>
#include <cstdio>  // freopen
#include <exception>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "tools/bagview/BagJson.h"
#include "zorvane/platform/Variant.h"
#include "zorvane/platform/Version.h"
#include "zorvane/runtime/FileWords.h"

namespace {

using namespace zorvane;

enum Exit { kSound = 0, kDamaged = 1, kUnread = 2 };

constexpr char kName[] = "zorvane-bag: ";  // what every line to the error output begins with

void PrintDamage(std::ostream& out, const char* begin, const Json& damage) {
    for (const Json& finding : damage) {
        out << begin << "damage at word " << finding["word"];
        const std::string path = finding["path"].get<std::string>();
        if (!path.empty()) {
            out << " (in " << finding["path"].dump(-1, ' ', true, Json::error_handler_t::replace)
                << ")";
        }
        out << ": " << finding["message"].get<std::string>() << '\n';
    }
}

std::string Reason(std::error_code error) {
    if (error == std::errc::invalid_argument) return "it is neither a file nor a folder";
    return error.message();
}

// The words of the standard input, counted and filled up as those of a file.
std::vector<std::int16_t> InputWords() {
#ifdef _WIN32
    if (!std::freopen(nullptr, "rb", stdin)) throw std::runtime_error("no input");
#endif
    const std::string bytes(std::istreambuf_iterator<char>(std::cin), {});
    std::vector<std::int16_t> words(bytes.empty() ? 1 : (bytes.size() + 1) / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned byte = static_cast<unsigned char>(bytes[i]);
        const auto word = static_cast<std::uint16_t>(words[i / 2]);
        words[i / 2] = static_cast<std::int16_t>(word | byte << (i % 2 * 8));
    }
    return words;
}

int Show(const std::string& file, bool json, bool quiet) {
    modZorvane::LoadedWords loaded;
    if (file == "-") {
        loaded.Words = Array::OfWords(InputWords());
    } else {
        loaded = modZorvane::LoadFileWords(file);
    }
    if (loaded.Error || !loaded.Words.IsArray()) {
        std::cerr << kName << file << " cannot be read: " << Reason(loaded.Error) << '\n';
        return kUnread;
    }
    const Json report = ToJson(ReportBag(loaded.Words.AsArray().Words()));
    if (json) {
        std::cout << report.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    } else if (quiet) {
        PrintDamage(std::cerr, kName, report["damage"]);
    } else {
        PrintTree(std::cout, report);
        PrintDamage(std::cout, "", report["damage"]);
    }
    return report["damage"].empty() ? kSound : kDamaged;
}

int Complain(const std::string& what) {
    std::cerr << kName << what << " (zorvane-bag --help shows how it is called)\n";
    return kUnread;
}

int Run(int argc, char** argv) {
    CLI::App app("Shows what is in a property bag's file and checks it.", "zorvane-bag");
    app.set_version_flag("--version", std::to_string(ZORVANE_VERSION_MAJOR) + "." +
                                          std::to_string(ZORVANE_VERSION_MINOR) + "." +
                                          std::to_string(ZORVANE_VERSION_REVISION));
    app.footer(
        "A word is two bytes; words are counted from 0. Damage is named by the word at which the "
        "file\n"
        "stops making sense; the entries before it are shown as a program would read them.\n"
        "Exit status: 0 the file is sound, 1 it is damaged, 2 it cannot be read.");
    std::string file;
    bool json = false;
    bool quiet = false;
    // Not required: a wrong option is to be named first.
    app.add_option("file", file, "A file such as PropBag.dat; - is the standard input");
    CLI::Option* asJson = app.add_flag("-j,--json", json, "Print JSON instead of a tree");
    app.add_flag("-q,--quiet", quiet, "Print damage only, to the error output")->excludes(asJson);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) {
        return app.exit(asked);
    } catch (const CLI::ParseError& error) {
        return Complain(error.what());
    }
    if (file.empty()) return Complain("a file is required");
    return Show(file, json, quiet);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << kName << error.what() << '\n';
        return kUnread;
    }
}
