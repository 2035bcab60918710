#include "tests/models/StepRun.h"

#include <random>

namespace zorvane {

std::unique_ptr<StepRun> StartBag(std::uint32_t kind);
std::unique_ptr<StepRun> StartCollection(std::uint32_t kind);
std::unique_ptr<StepRun> StartCollectionEx(std::uint32_t kind);
std::unique_ptr<StepRun> StartKeyList(std::uint32_t kind);
std::unique_ptr<StepRun> StartTable(std::uint32_t kind);
std::unique_ptr<StepRun> StartZVCollection(std::uint32_t kind);

const std::array<Modelled, 6> kModelled{{{"Collection", StartCollection},
                                         {"KeyListEX", StartKeyList},
                                         {"ZVCollectionEx", StartZVCollection},
                                         {"CollectionEx", StartCollectionEx},
                                         {"ZVPropertyBag", StartBag},
                                         {"Table", StartTable}}};

unsigned StepRun::Below(unsigned limit) noexcept {
    random_ += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = (random_ ^ (random_ >> 31)) * 0xD6E8FEB86659FD93u;
    mixed = (mixed ^ (mixed >> 32)) * 0xD6E8FEB86659FD93u;
    return static_cast<unsigned>((mixed >> 32) % limit);
}

void StepRun::NoteFailure(std::int64_t number) {
    FailAllocation(0);
    if (!untrue_.empty()) return;
    untrue_ = FailedStateDiffers();
    if (!untrue_.empty()) untrue_ = "after failure " + std::to_string(number) + ", " + untrue_;
}

std::optional<StepRun::Disagreement> StepRun::Go(const Steps& steps) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
        random_ = steps[i];
        ++number_;
        what_ = "nothing";
        ours_ = models_ = "";
        Operate();
        if (told_) *told_ << what_ << ": " << ours_ << '\n';
        std::string wrong = untrue_;
        if (wrong.empty() && ours_ != models_) wrong = ours_ + ", the model: " + models_;
        if (wrong.empty()) wrong = StateDiffers(i + 1 == steps.size());
        if (!wrong.empty()) return Disagreement{i + 1, what_ + (": " + wrong)};
    }
    return std::nullopt;
}

namespace {

std::unique_ptr<StepRun> Start(const Modelled& modelled, std::uint32_t kind) {
    auto run = modelled.Start(kind & ~kFailing);
    if ((kind & kFailing) != 0) run->FailAllocations();
    return run;
}

}  // namespace

std::string RunSteps(const Modelled& modelled, std::uint32_t kind, Steps steps) {
    auto wrong = Start(modelled, kind)->Go(steps);
    if (!wrong) return {};
    steps.resize(wrong->Step);
    // Leaves out halves, quarters and so on down to single steps, as long as something is wrong and
    // whoever waits for it has patience.
    std::size_t patience = 300'000;
    for (std::size_t piece = steps.size() / 2; piece != 0; piece /= 2) {
        for (std::size_t from = 0; from < steps.size();) {
            if (patience < steps.size()) break;
            patience -= steps.size();
            Steps fewer = steps;
            const auto begin = fewer.begin() + static_cast<std::ptrdiff_t>(from);
            const std::size_t length = std::min(piece, steps.size() - from);
            fewer.erase(begin, begin + static_cast<std::ptrdiff_t>(length));
            const auto still = Start(modelled, kind)->Go(fewer);
            if (still) {
                fewer.resize(still->Step);
                steps = std::move(fewer);
            } else {
                from += piece;
            }
        }
    }
    std::ostringstream told;
    const auto run = Start(modelled, kind);
    run->TellTo(told);
    wrong = run->Go(steps);
    return std::string(modelled.Name) + ", kind " + std::to_string(kind) + ", " +
           std::to_string(steps.size()) + " steps:\n" + told.str() + "wrong in " + wrong->What;
}

std::string RunSeed(const Modelled& modelled, std::uint32_t seed, int steps) {
    std::mt19937 random(seed);
    Steps drawn(static_cast<std::size_t>(steps));
    for (std::uint32_t& step : drawn) step = static_cast<std::uint32_t>(random());
    return RunSteps(modelled, seed, std::move(drawn));
}

}  // namespace zorvane
