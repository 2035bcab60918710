#pragma once
// StepRun: steps through something and through its model, outcome and state compared after each.
//
// A step is a number, and all that it does follows from that and from the state. So any of them can
// be left out and the rest means something still: that is how a failure is cut down to few steps.

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/Outcome.h"

namespace zorvane {

using Steps = std::vector<std::uint32_t>;

class StepRun {
  public:
    virtual ~StepRun() = default;

    // What first disagreed, with the number of the step; nothing when all agreed.
    struct Disagreement {
        std::size_t Step;
        std::string What;
    };
    std::optional<Disagreement> Go(const Steps& steps);
    // Go writes down each step, what was drawn for it and what came of it.
    void TellTo(std::ostream& told) { told_ = &told; }

  protected:
    virtual void Operate() = 0;
    // How the states differ; "" when they do not. A costly look may wait for the last step.
    [[nodiscard]] virtual std::string StateDiffers(bool last) = 0;

    [[nodiscard]] unsigned Below(unsigned limit) noexcept;
    [[nodiscard]] bool Chance(unsigned percent) noexcept { return Below(100) < percent; }
    [[nodiscard]] std::int32_t Number() const noexcept { return number_; }
    template <class Value>
    Value Drawn(Value value) {
        if (told_) *told_ << '[' << OutcomeOf([&] { return value; }) << "] ";
        return value;
    }

    template <class Ours, class Models>
    void Do(const char* what, Ours&& ours, Models&& models) {
        what_ = what;
        ours_ = OutcomeOf(ours);
        models_ = OutcomeOf(models);
    }

  private:
    std::uint64_t random_ = 0;
    std::int32_t number_ = 0;
    std::string what_, ours_, models_;
    std::ostream* told_ = nullptr;
};

// Something that has a model. The kind, any number, chooses how many keys there are and the like.
struct Modelled {
    const char* Name;
    std::unique_ptr<StepRun> (*Start)(std::uint32_t kind);
};
extern const std::array<Modelled, 5> kModelled;

// What first disagreed, told by the fewest steps that come to it; "" when all agreed.
[[nodiscard]] std::string RunSteps(const Modelled& modelled, std::uint32_t kind, Steps steps);
// The same for steps that follow from a seed, which is the kind as well.
[[nodiscard]] std::string RunSeed(const Modelled& modelled, std::uint32_t seed, int steps);

}  // namespace zorvane
