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
    for (sizes_ = 0; sizes_ < kSizes.size() && run.FineSeconds() - start < kPatience;) {
        const std::int32_t items = kSizes.at(sizes_);
        const int rounds = items > 1000 ? 5 : 20;
        for (const ContenderInfo& contender : kContenders) {
            TimingResult& kept = results_.at(sizes_).at(static_cast<std::size_t>(contender.Is) - 1);
            kept = run.Run(contender.Is, items);
            for (int round = 1; round < rounds; ++round) {
                KeepFastest(kept, run.Run(contender.Is, items));
            }
        }
        ++sizes_;
        timed();
    }
}

std::optional<FineTime> Growth::At(int test, int column, std::size_t size) const {
    if (size >= sizes_) return std::nullopt;
    return results_.at(size)
        .at(static_cast<std::size_t>(column) - 1)
        .Fine.at(static_cast<std::size_t>(test));
}

}  // namespace zorvane
