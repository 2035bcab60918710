#pragma once
// What every benchmark measures with: the processor's time of one thread, quartiles, and a file of
// results that tools/bench_report reads.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#endif

namespace bench {

// Processor time of this thread: what another program takes on a shared machine does not count.
struct Clock {
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<Clock>;
    static constexpr bool is_steady = true;
    static time_point now() noexcept {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return time_point(std::chrono::seconds(t.tv_sec) + std::chrono::nanoseconds(t.tv_nsec));
    }
};

// For what a contender is asked in a loop of its own: where it stands shall not depend on how much
// the compiler thinks of it.
#define BENCH_INLINE [[gnu::always_inline]]

template <class T>
inline void keep(const T& v) {
    asm volatile("" : : "r"(v) : "memory");
}

// Some libraries leave the upper halves of the wide registers set, and every narrow vector
// instruction after that waits for them: nobody shall pay for whoever was measured before.
#if defined(__x86_64__) && defined(__GNUC__)
[[gnu::target("avx")]] inline void clearUpperHalves() {
    _mm256_zeroupper();
}
inline void clearWideRegisters() {
    if (__builtin_cpu_supports("avx")) clearUpperHalves();
}
#else
inline void clearWideRegisters() {}
#endif

// The lower quartile. Whoever shares the core, be it in another machine, halves its speed while he
// is busy: a median would tell of one pace or the other, whichever had the more rounds.
inline double typical(std::vector<double> samples) {
    if (samples.empty()) return NAN;
    const auto quarter = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 4);
    std::nth_element(samples.begin(), quarter, samples.end());
    return *quarter;
}

[[noreturn]] inline void fail(const std::string& who, const char* what) {
    std::fprintf(stderr, "WRONG RESULT: %s: %s\n", who.c_str(), what);
    std::exit(2);
}

// One line per figure: group, contender, items, variant (of keys, bag or column), test, quartile in
// nanoseconds. Lines are added to those that stand there; without a path, none is written.
class Results {
  public:
    explicit Results(const std::string& path = {})
        : file_(path.empty() ? nullptr : std::fopen(path.c_str(), "a")) {
        if (!path.empty() && file_ == nullptr) {
            std::perror(path.c_str());
            std::exit(1);
        }
    }
    Results(const Results&) = delete;
    Results& operator=(const Results&) = delete;
    ~Results() {
        if (file_ != nullptr) std::fclose(file_);
    }

    void Add(const std::string& group, const std::string& name, std::size_t items,
             const std::string& variant, const std::string& test, double nanoseconds) {
        if (file_ == nullptr || std::isnan(nanoseconds)) return;
        std::fprintf(file_, "%s\t%s\t%zu\t%s\t%s\t%.2f\n", group.c_str(), name.c_str(), items,
                     variant.c_str(), test.c_str(), nanoseconds);
    }

  private:
    std::FILE* file_;
};

}  // namespace bench
