// save_races <rounds>: processes that save one file at once, one that removes left-overs, and a
// reader. Ends with 1 when the reader sees what nobody wrote, or when a save is answered by
// anything but success.

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "tests/unit/runtime_files/Folder.h"

namespace {

using namespace zorvane;

struct Words {
    Variant Ours = WordsOf(std::string(200'000, 'o'));
    Variant Others = WordsOf(std::string(200'000, 'n'));
    [[nodiscard]] const Variant& At(int round) const { return round % 2 == 0 ? Ours : Others; }
};

// A file on a disk in memory where there is one, of two names where it is to be written in place.
struct Place : Folder {
    explicit Place(bool linked)
        : Folder(::access("/dev/shm", W_OK | X_OK) == 0 ? "/dev/shm"
                                                        : std::filesystem::temp_directory_path()) {
        (void)SaveFileWords(At("file"), All.Ours);
        if (linked) std::filesystem::create_hard_link(At("file"), At("name"));
    }
    [[nodiscard]] bool Save(int round) const { return !SaveFileWords(At("file"), All.At(round)); }
    [[nodiscard]] Variant Read() const { return LoadFileWords(At("file")).Words; }
    [[nodiscard]] bool IsWhole(const Variant& words) const {
        return words == All.Ours || words == All.Others;
    }
    Words All;
};

template <class Work>
pid_t Fork(Work&& work) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(work());
    Must(child > 0);
    return child;
}

void Kill(pid_t child) {
    ::kill(child, SIGKILL);
    Must(::waitpid(child, nullptr, 0) == child);
}

int Together(const char* what, bool linked, int rounds) {
    const Place place(linked);
    const pid_t cleaner = Fork([&] {
        for (int i = 0;; ++i) (void)SaveFileWords(place.At("other"), place.All.At(i));
        return 0;
    });
    std::vector<pid_t> writers;
    for (const int first : {0, 1}) {
        writers.push_back(Fork([&] {
            int failed = 0;
            for (int i = 0; i < rounds; ++i) failed += place.Save(first + i) ? 0 : 1;
            return std::min(failed, 255);
        }));
    }
    int reads = 0, torn = 0, failed = 0;
    for (const pid_t writer : writers) {
        int status = 0;
        for (; ::waitpid(writer, &status, WNOHANG) == 0; ++reads)
            torn += place.IsWhole(place.Read()) ? 0 : 1;
        failed += WEXITSTATUS(status);
    }
    torn += place.IsWhole(place.Read()) ? 0 : 1;
    Kill(cleaner);
    std::printf("%s: %d saves, %d of them failed; %d reads, %d of them torn\n", what, 2 * rounds,
                failed, reads, torn);
    return failed + torn;
}

}  // namespace

int main(int argc, char** argv) {
    const int rounds = argc == 2 ? std::atoi(argv[1]) : 0;
    if (rounds < 1) return 2;
    const int faults = Together("writers by new files", false, rounds) +
                       Together("writers in place", true, rounds);
    return faults == 0 ? 0 : 1;
}
