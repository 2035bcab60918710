#include "program/demos/Growth.h"

namespace zorvane {
namespace {

void KeepFastest(TimingResult& kept, const TimingResult& other) {
    for (std::size_t test = 0; test < kept.Fine.size(); ++test) {
        if (other.Fine.at(test).Seconds < kept.Fine.at(test).Seconds) {
            kept.Fine.at(test) = other.Fine.at(test);
        }
    }
}

}  // namespace

void Growth::Measure(TimingRun& run, const std::function<void()>& timed) {
    const double start = run.FineSeconds();
    sizes_ = 0;
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t size = 0; size < kSizes.size(); ++size) {
            if (run.FineSeconds() - start >= kPatience) return timed();
            MeasureSize(run, size);
            if (round == 0) timed();
        }
        timed();
    }
}

void Growth::MeasureSize(TimingRun& run, std::size_t size) {
    const bool first = size >= sizes_;
    for (const ContenderInfo& contender : kContenders) {
        // Behind the most items of another, the fewest would find nothing near of what they need.
        if (size == 0) static_cast<void>(run.Run(contender.Is, kSizes.at(size)));
        const TimingResult result = run.Run(contender.Is, kSizes.at(size));
        TimingResult& kept = results_.at(size).at(static_cast<std::size_t>(contender.Is) - 1);
        if (first) {
            kept = result;
        } else {
            KeepFastest(kept, result);
        }
    }
    if (first) sizes_ = size + 1;
}

std::optional<FineTime> Growth::At(int test, int column, std::size_t size) const {
    if (size >= sizes_) return std::nullopt;
    return results_.at(size)
        .at(static_cast<std::size_t>(column) - 1)
        .Fine.at(static_cast<std::size_t>(test));
}

}  // namespace zorvane
