#pragma once
// The eight tests of a keyed container, and two in its middle.
//
// A contender is a class with
//   explicit C(const bench::Data&);   keys converted to its own text type here, untimed
//   void      add(size_t i);          add key i with value i
//   int32_t   byKey(size_t i);        value found under key i
//   int32_t   byPos(size_t p);        value at 0-based position p          (if positional)
//   bool      absent();               probe for a key that is not there
//   int64_t   sum();                  visit every value in order
//   void      removeKey(size_t i);    remove by key, later items close up
//   void      removeFirst();          remove the first item, later items close up
//   size_t    size() const;
//   static constexpr bool positional, sorted;
//   using Text = std::u16string;      or std::string: what keys it has
//   static constexpr bool keyless;    optional: no keys, so it is only added to and looked at
//   void      insertMid(size_t i);    optional: add key i at the middle position

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "bench/Data.h"
#include "bench/Measure.h"
#include "bench/ModelCheck.h"

namespace bench {

enum Test {
    Add,
    ByKey,
    ByIndex,
    Absent,
    Each,
    Next,
    RemKey,
    RemFirst,
    RemRandom,
    InsMid,
    TestCount
};
inline const char* const testName[TestCount] = {"add",        "by key", "by index", "absent",
                                                "each",       "next",   "rem key",  "rem first",
                                                "rem random", "ins mid"};

struct Cell {
    std::vector<double> ns;  // one sample per repeat
    bool truncated = false;  // stopped at the time budget: mean over the part that ran
};

struct Options {
    double budget = 3;   // seconds per test before it is cut off
    bool extra = false;  // also the two middle-of-the-container tests
};

// Runs op(0..n-1) and adds up what it gives (in a register of its own); gives ns per op, and
// whether the budget cut it short. A function of its own for every loop, so that none is short of
// registers because of the others.
template <class Op>
[[gnu::noinline]] double timed(size_t n, double budget, bool& cut, int64_t& sum, Op&& op) {
    cut = false;
    sum = 0;
    if (n == 0) return NAN;
    int64_t acc = 0;
    // Reading the processor's clock takes a system call, so the budget is watched on another.
    const auto begun = std::chrono::steady_clock::now();
    auto t0 = Clock::now();
    size_t i = 0,
           next = std::min<size_t>(n, n < 20000 ? 64 : 4);  // few clock readings in short runs
    for (;;) {
        for (; i < next; ++i) {
            if constexpr (std::is_void_v<decltype(op(i))>)
                op(i);
            else {
                auto v = op(i);
                keep(v);
                acc += int64_t(v);
            }
        }
        if (i >= n) break;
        if (std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count() >
            budget) {
            cut = true;
            break;
        }
        next = std::min(n, i + i / 4 + 1);
    }
    double ns = std::chrono::duration<double, std::nano>(Clock::now() - t0).count() / double(i);
    sum = acc;
    return ns;
}

struct Row {
    Cell cell[TestCount];
    bool unfinished = false;
    double spent = 0;
};

template <class C>
constexpr bool kKeyed = !requires {
    C::keyless;
};

template <class C>
void runOnce(const std::string& name, const Data& d, const Options& o, Row& row) {
    size_t n = d.keys.size();
    auto note = [&](Test t, double ns, bool cut) {
        row.cell[t].ns.push_back(ns);
        row.cell[t].truncated |= cut;
    };
    bool cut;
    int64_t sum = 0;
    auto expect = [&](const char* what) {
        if (!cut && sum != d.total) fail(name, what);
    };
    {
        C c(d);
        double ns = timed(n, o.budget, cut, sum, [&](size_t i) { c.add(i); });
        note(Add, ns, cut);
        if (cut) {
            row.unfinished = true;
            return;
        }
        if (c.size() != n) fail(name, "size after add");
        if constexpr (kKeyed<C>) {
            ns = timed(n, o.budget, cut, sum, [&](size_t i) { return c.byKey(i); });
            note(ByKey, ns, cut);
            expect("by key");
        }
        if constexpr (C::positional) {
            ns = timed(n, o.budget, cut, sum, [&](size_t i) { return c.byPos(i); });
            note(ByIndex, ns, cut);
            expect("by index");
        }
        if constexpr (kKeyed<C>) {
            ns = timed(n, o.budget, cut, sum, [&](size_t) { return c.absent(); });
            note(Absent, ns, cut);
            if (sum) fail(name, "absent key found");
        }
        auto t0 = Clock::now();
        sum = c.sum();
        note(Each, std::chrono::duration<double, std::nano>(Clock::now() - t0).count() / double(n),
             false);
        cut = false;
        expect("each");
        if constexpr (C::positional) {
            ns = timed(n, o.budget, cut, sum, [&](size_t i) { return c.byPos(i); });
            note(Next, ns, cut);
            expect("next");
        }
        if constexpr (kKeyed<C>) {
            ns = timed(n / 2, o.budget, cut, sum, [&](size_t i) { c.removeKey(i); });
            note(RemKey, ns, cut);
            if (!cut && c.size() != n - n / 2) fail(name, "size after remove by key");
            ns = timed(c.size(), o.budget, cut, sum, [&](size_t) { c.removeFirst(); });
            note(RemFirst, ns, cut);
            if (!cut && c.size() != 0) fail(name, "not empty at the end");
        }
    }
    if (!o.extra) return;
    if constexpr (kKeyed<C>) {
        C c(d);
        for (size_t i = 0; i < n; ++i) c.add(i);
        double ns = timed(n / 2, o.budget, cut, sum, [&](size_t i) { c.removeKey(d.shuffled[i]); });
        note(RemRandom, ns, cut);
        if constexpr (requires { c.insertMid(size_t(0)); })
            if (!cut) {
                ns =
                    timed(n / 2, o.budget, cut, sum, [&](size_t i) { c.insertMid(d.shuffled[i]); });
                note(InsMid, ns, cut);
                if (!cut && (c.size() != n || c.sum() != d.total))
                    fail(name, "insert in the middle");
            }
    }
}

struct Contender {
    std::string group, name;
    std::function<void(const Data&, const Options&, Row&)> run;
    std::function<void()> check;
};
inline std::vector<Contender>& registry() {
    static std::vector<Contender> r;
    return r;
}

template <class C>
void enroll(std::string group, std::string name) {
    registry().push_back(
        {group, name,
         [name](const Data& d, const Options& o, Row& r) { runOnce<C>(name, d, o, r); },
         [name] {
             if constexpr (kKeyed<C>) checkAgainstModel<C>(name);
         }});
}

}  // namespace bench
