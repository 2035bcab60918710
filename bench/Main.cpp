// Times every contender in one run: usage: bench_containers [options]; see Usage.

#include <chrono>
#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include "bench/Contender.h"

namespace {

using namespace bench;

constexpr const char* kUsage =
    "options: --sizes a,b --budget s --cap s --repeats n --filter text --results file --seed n "
    "--sequential --extra --check\n";

struct Run {
    Options options;
    std::vector<std::size_t> sizes{2000, 10000, 100000};
    double cap = 40;  // seconds per contender and size, over all repeats
    int repeats = 0;  // 0: chosen by size
    bool random = true;
    bool check = false;
    std::string filter;  // only contenders whose group/name contains this
    std::string results;
    std::uint64_t seed = 1;
};

std::vector<std::size_t> Sizes(const std::string& list) {
    std::vector<std::size_t> sizes;
    for (std::size_t from = 0; from < list.size();) {
        const std::size_t comma = std::min(list.find(',', from), list.size());
        sizes.push_back(std::stoul(list.substr(from, comma - from)));
        from = comma + 1;
    }
    return sizes;
}

Run Parse(int argc, char** argv) {
    Run run;
    for (int i = 1; i < argc; ++i) {
        const std::string option = argv[i];
        const auto value = [&]() -> std::string {
            if (i + 1 < argc) return argv[++i];
            std::fprintf(stderr, "%s needs a value\n", option.c_str());
            std::exit(1);
        };
        if (option == "--sizes") {
            run.sizes = Sizes(value());
        } else if (option == "--budget") {
            run.options.budget = std::stod(value());
        } else if (option == "--cap") {
            run.cap = std::stod(value());
        } else if (option == "--repeats") {
            run.repeats = std::stoi(value());
        } else if (option == "--filter") {
            run.filter = value();
        } else if (option == "--results") {
            run.results = value();
        } else if (option == "--seed") {
            run.seed = std::stoull(value());
        } else if (option == "--sequential") {
            run.random = false;
        } else if (option == "--extra") {
            run.options.extra = true;
        } else if (option == "--check") {
            run.check = true;
        } else {
            std::fputs(kUsage, stderr);
            std::exit(1);
        }
    }
    return run;
}

std::vector<Contender*> Chosen(const std::string& filter) {
    std::vector<Contender*> chosen;
    for (Contender& contender : registry()) {
        const std::string name = contender.group + "/" + contender.name;
        if (name.find(filter) != std::string::npos) chosen.push_back(&contender);
    }
    return chosen;
}

int RepeatsFor(std::size_t items) {
    return items <= 2000 ? 31 : items <= 10000 ? 15 : items <= 100000 ? 5 : 3;
}

// Taking turns, so that noise hits all alike.
std::vector<Row> Measure(const Run& run, const std::vector<Contender*>& contenders,
                         const Data& data, int repeats) {
    std::vector<Row> rows(contenders.size());
    for (int repeat = 0; repeat < repeats; ++repeat) {
        for (std::size_t k = 0; k < contenders.size(); ++k) {
            Row& row = rows[k];
            const bool tooLong = repeat > 0 && row.spent + row.spent / repeat > run.cap;
            if (row.unfinished || tooLong) continue;
            const auto from = Clock::now();
            clearWideRegisters();
            contenders[k]->run(data, run.options, row);
            row.spent += std::chrono::duration<double>(Clock::now() - from).count();
        }
    }
    return rows;
}

void Print(const std::string& group, const std::vector<Contender*>& contenders,
           const std::vector<Row>& rows, int tests) {
    std::printf("%-34s", group.c_str());
    for (int test = 0; test < tests; ++test) std::printf("%11s", testName[test]);
    std::printf("\n");
    for (std::size_t k = 0; k < contenders.size(); ++k) {
        if (contenders[k]->group != group) continue;
        std::printf("%-34s", contenders[k]->name.c_str());
        for (int test = 0; test < tests; ++test) {
            const Cell& cell = rows[k].cell[test];
            if (cell.ns.empty()) {
                std::printf("%11s", "-");
            } else {
                std::printf("%10.1f%c", typical(cell.ns), cell.truncated ? '~' : ' ');
            }
        }
        std::printf("%s\n", rows[k].unfinished ? "  (add did not finish)" : "");
    }
}

void MeasureSize(const Run& run, const std::vector<Contender*>& contenders, std::size_t items,
                 Results& results) {
    const Data data = makeData(items, run.random, run.seed);
    const std::string keys = run.random ? "random" : "sequential";
    const int repeats = run.repeats != 0 ? run.repeats : RepeatsFor(items);
    const std::vector<Row> rows = Measure(run, contenders, data, repeats);
    std::printf(
        "\n%zu items, %s keys: ns per operation, lower quartile of up to %d; ~ cut off at %.0f s\n",
        items, keys.c_str(), repeats, run.options.budget);
    const int tests = run.options.extra ? TestCount : RemRandom;
    std::set<std::string> groups;
    for (const Contender* contender : contenders) groups.insert(contender->group);
    for (const std::string& group : groups) Print(group, contenders, rows, tests);
    std::fflush(stdout);
    for (std::size_t k = 0; k < contenders.size(); ++k) {
        for (int test = 0; test < tests; ++test) {
            results.Add(contenders[k]->group, contenders[k]->name, items, keys, testName[test],
                        typical(rows[k].cell[test].ns));
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const Run run = Parse(argc, argv);
    const std::vector<Contender*> contenders = Chosen(run.filter);
    if (run.check) {
        for (const Contender* contender : contenders) contender->check();
        std::printf("%zu contenders agree with the model\n", contenders.size());
        return 0;
    }
    Results results(run.results);
    for (const std::size_t items : run.sizes) MeasureSize(run, contenders, items, results);
    return 0;
}
