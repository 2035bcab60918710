// kill_save: processes are killed while they save a file, and two writers meet one reader.
//
//   kill_save [--kills N] [--seconds S] [--literal]
//
// After each kill the file has to hold the last state saved whole or the one being saved, and two
// writers must never show a reader anything else. With --literal the file is written in place from
// its first byte on, as a control: torn files are then expected, or the trial proves nothing.
// Ends with 0 when what was expected was found.

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "runtime/FileWords.h"
#include "tests/unit/runtime_files/Folder.h"

namespace {

using zorvane::Array;
using zorvane::Folder;
using zorvane::Variant;
using Clock = std::chrono::steady_clock;

bool unnamedFilesRefused = false;

// What both sides of a kill see: which state was begun last, and which was saved.
struct Progress {
    std::atomic<std::uint32_t> Begun{0};
    std::atomic<std::uint32_t> Saved{0};
};

// One state of the file: marker, its number and length, then words that follow from the number.
// Lengths differ, so that longer and shorter states take turns.
std::vector<std::int16_t> StateOf(std::uint32_t number) {
    const std::size_t length = 3000 + number * 2654435761u % 200'000;
    std::vector<std::int16_t> words(length);
    std::uint32_t mixed = number;
    for (std::size_t i = 6; i < length; ++i) {
        mixed = mixed * 1664525u + 1013904223u;
        words[i] = static_cast<std::int16_t>(mixed >> 16);
    }
    words[0] = words[1] = -1;
    std::memcpy(&words[2], &number, sizeof number);
    const auto stored = static_cast<std::uint32_t>(length);
    std::memcpy(&words[4], &stored, sizeof stored);
    return words;
}

enum class Found { Whole, Torn, Nothing };  // Nothing: no file, or none that begins with a marker

Found Look(const std::string& path, std::uint32_t& number) {
    const Variant read = zorvane::modZorvane::ReadFileWords(path);
    if (read.IsEmpty()) return Found::Nothing;
    const auto words = read.AsArray().Words();
    if (words.size() < 6 || words[0] != -1 || words[1] != -1) return Found::Nothing;
    std::memcpy(&number, &words[2], sizeof number);
    const std::vector<std::int16_t> wanted = StateOf(number);
    const bool whole =
        words.size() >= wanted.size() && std::equal(wanted.begin(), wanted.end(), words.begin());
    return whole ? Found::Whole : Found::Torn;
}

void Save(const std::string& path, std::uint32_t number, bool literal) {
    const std::vector<std::int16_t> words = StateOf(number);
    if (!literal) return zorvane::modZorvane::WriteFileWords(path, Array::OfWords(words));
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0 || ::write(file, words.data(), words.size() * 2) < 0) std::perror("kill_save");
    ::close(file);
}

template <class Work>
pid_t Start(Work&& work) {
    const pid_t child = ::fork();
    if (child < 0) throw std::runtime_error("kill_save: cannot start a process");
    if (child == 0) {
        work();
        ::_exit(0);
    }
    return child;
}

void Kill(pid_t child) {
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

struct Figures {
    int Old = 0, New = 0, Empty = 0, Torn = 0, LeftBehind = 0, LeftInTheEnd = 0;
    long Readings = 0, TornReadings = 0;
};

struct Trial {
    const char* What;
    bool Literal = false;
    bool Named = false;    // the file system knows no files without a name
    bool InPlace = false;  // the file has a second name
};

Figures RunKills(const Folder& folder, const Trial& trial, int kills, Progress& progress) {
    const std::string path = folder.At("PropBag.dat");
    unnamedFilesRefused = trial.Named;
    progress.Begun = progress.Saved = 1;
    Save(path, 1, true);
    if (trial.InPlace) std::filesystem::create_hard_link(path, folder.At("other name"));
    const auto leftOvers = [&] {
        return static_cast<int>(folder.Others({"PropBag.dat", "other name"}).size());
    };

    Figures figures;
    std::mt19937 random(20261121);
    for (int kill = 0; kill < kills; ++kill) {
        const pid_t child = Start([&] {
            for (std::uint32_t number = progress.Begun + 1;; ++number) {
                progress.Begun = number;
                Save(path, number, trial.Literal);
                progress.Saved = number;
            }
        });
        // From the first instructions of a save to the middle of a later one.
        ::usleep(500 + static_cast<useconds_t>(random() % 12'000));
        Kill(child);
        std::uint32_t number = 0;
        const Found found = Look(path, number);
        // A whole state that was neither is torn, too.
        const bool old = number == progress.Saved;
        ++(found == Found::Nothing    ? figures.Empty
           : found == Found::Torn     ? figures.Torn
           : old                      ? figures.Old
           : number == progress.Begun ? figures.New
                                      : figures.Torn);
        if (found == Found::Whole) progress.Saved = number;  // the next kill's old state
        figures.LeftBehind += leftOvers() > 0 ? 1 : 0;
    }
    Save(path, progress.Begun + 1, trial.Literal);
    figures.LeftInTheEnd = leftOvers();
    return figures;
}

void RunWriters(const Folder& folder, bool literal, double seconds, Figures& figures) {
    const std::string path = folder.At("PropBag.dat");
    unnamedFilesRefused = false;
    Save(path, 1, true);
    pid_t writers[2];
    for (std::uint32_t writer = 0; writer < 2; ++writer)
        writers[writer] = Start([&] {
            for (std::uint32_t number = 2 + writer;; number += 2) Save(path, number, literal);
        });
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    for (std::uint32_t number = 0; Clock::now() < end; ++figures.Readings) {
        if (Look(path, number) != Found::Whole) ++figures.TornReadings;
    }
    for (const pid_t writer : writers) Kill(writer);
}

bool RunTrial(const Trial& trial, int kills, double seconds, Progress& progress) {
    const auto start = Clock::now();
    Figures seen = RunKills(Folder(), trial, kills, progress);
    if (!trial.InPlace && !trial.Named) RunWriters(Folder(), trial.Literal, seconds, seen);
    std::printf("%-24s %6d kills: old %d, new %d, empty %d, torn %d; left behind %d, in the end %d",
                trial.What, kills, seen.Old, seen.New, seen.Empty, seen.Torn, seen.LeftBehind,
                seen.LeftInTheEnd);
    if (seen.Readings > 0)
        std::printf("; readings %ld, torn %ld", seen.Readings, seen.TornReadings);
    const std::chrono::duration<double> taken = Clock::now() - start;
    std::printf(" (%.1f s)\n", taken.count());
    std::fflush(stdout);
    const bool torn = seen.Torn + seen.TornReadings > 0;
    if (trial.Literal) return torn;
    return !torn && seen.LeftInTheEnd == 0 && (trial.InPlace || seen.Empty == 0);
}

}  // namespace

// Files without a name can be refused, so that the way of systems that lack them is tried too.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names are the linker's.
int __real_openat(int directory, const char* name, int flags, mode_t mode);
int __wrap_openat(int directory, const char* name, int flags, mode_t mode);
int __wrap_openat(int directory, const char* name, int flags, mode_t mode) {
    if (unnamedFilesRefused && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return __real_openat(directory, name, flags, mode);
}
// NOLINTEND(bugprone-reserved-identifier)
}

int main(int argc, char** argv) try {
    int kills = 500;
    double seconds = 5;
    bool literal = false;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const bool more = i + 1 < argc;
        if (word == "--literal")
            literal = true;
        else if (word == "--kills" && more)
            kills = std::stoi(argv[++i]);
        else if (word == "--seconds" && more)
            seconds = std::stod(argv[++i]);
        else
            throw std::runtime_error("kill_save [--kills N] [--seconds S] [--literal]");
    }
    void* shared = ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE,
                          MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED) throw std::runtime_error("kill_save: no shared memory");
    Progress& progress = *new (shared) Progress;
    std::vector<Trial> trials = {{"beside, without a name"},
                                 {"beside, named", false, true},
                                 {"in place, marker last", false, false, true}};
    if (literal) trials = {{"literally in place", true}};
    bool good = true;
    for (const Trial& trial : trials) good = RunTrial(trial, kills, seconds, progress) && good;
    return good ? 0 : 1;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 2;
}
