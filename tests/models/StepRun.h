#pragma once
// StepRun: steps through something and through its model, outcome and state compared after each.
//
// A step is a number, and all that it does follows from that and from the state. So any of them can
// be left out and the rest means something still: that is how a failure is cut down to few steps.

#include <array>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "tests/support/AllocationFaults.h"
#include "tests/support/Outcome.h"
#include "zorvane/platform/Enumerator.h"
#include "zorvane/platform/Object.h"
#include "zorvane/platform/Variant.h"

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
    // Every allocation of every operation fails once: what failed must be as if never tried.
    void FailAllocations() { failing_ = true; }
    // Go writes down each step, with what arguments, and what came of it.
    void TellTo(std::ostream& told) { told_ = &told; }

  protected:
    virtual void Operate() = 0;
    // How the states differ; "" when they do not. A costly look may wait for the last step.
    [[nodiscard]] virtual std::string StateDiffers(bool last) = 0;

    // The same after an operation that found no memory.
    [[nodiscard]] virtual std::string FailedStateDiffers() { return StateDiffers(true); }

    [[nodiscard]] unsigned Below(unsigned limit) noexcept;
    [[nodiscard]] bool Chance(unsigned percent) noexcept { return Below(100) < percent; }
    [[nodiscard]] std::int32_t Number() const noexcept { return number_; }
    // Keys below 8192 that are like one another to an ordinary hash, and no two the same but for
    // case.
    [[nodiscard]] static Text CrowdedKey(unsigned number) {
        std::u16string key;
        for (unsigned bit = 0; bit < 13; ++bit) {
            key += u"`@aA\u03C3\u03C2"[bit % 3 * 2 + (number >> bit & 1)];
        }
        return key;
    }
    // The container whose members are called by name, and how its values are shown.
    [[nodiscard]] virtual Object& Ours() { RaisePlatform(PlatformError::ObjectNotSet); }
    [[nodiscard]] virtual std::string Shown(const Variant& value) {
        return OutcomeOf([&] { return value; });
    }
    template <class Values>
    [[nodiscard]] std::string Joined(const Values& values) {
        std::string all;
        for (const Variant& value : values) all += Shown(value) + ", ";
        return all;
    }
    [[nodiscard]] std::string Joined(Enumerator items) {
        std::string all;
        for (Variant item; items.Next(item);) all += Shown(item) + ", ";
        return all;
    }

    template <class Ours, class Models>
    void Do(const char* what, Ours&& ours, Models&& models) {
        what_ = what;
        ours_ = OutcomeOf([&] { return failing_ ? AfterEveryFailure(ours) : ours(); });
        if (untrue_.empty()) models_ = OutcomeOf(models);
    }
    using Arguments = std::vector<Variant>;
    void Tell(const Arguments& arguments) {
        if (told_) *told_ << Joined(arguments);
    }
    // A member that is called by its name, so that its late-bound form is tried along with it.
    template <class Models>
    void Call(const char* member, const Arguments& arguments, Models&& models) {
        Tell(arguments);
        const Text name(member);
        Variant ours, theirs;
        Do(
            member, [&] { ours = Ours().Call(name.Units(), arguments); },
            [&] {
                if constexpr (std::is_void_v<decltype(models())>) {
                    models();
                } else {
                    theirs = models();
                }
            });
        ours_ += " " + Shown(ours);
        models_ += " " + Shown(theirs);
    }
    // The first of several operations whose bound is above the number.
    struct Choice {
        template <class Ours, class Models>
        Choice(unsigned bound, const char* what, Ours ours, Models models)
            : Bound(bound), Run([=](StepRun& run) { run.Do(what, ours, models); }) {}
        template <class Models>
        Choice(unsigned bound, const char* member, Arguments arguments, Models models)
            : Bound(bound), Run([=](StepRun& run) { run.Call(member, arguments, models); }) {}
        unsigned Bound;
        std::function<void(StepRun&)> Run;
    };
    void DoChosen(unsigned number, std::initializer_list<Choice> choices) {
        for (const Choice& choice : choices) {
            if (number < choice.Bound) return choice.Run(*this);
        }
    }
    // The same on a container and on its model, which has the same members.
    template <class Container, class Model, class Operation>
    static Choice OnEither(unsigned bound, const char* what, Container& container, Model& model,
                           Operation operation) {
        return {bound, what, [=, &container] { return operation(container); },
                [=, &model] { return operation(model); }};
    }
    template <class Container, class Model, class Operation>
    void BothAtOnce(const char* what, Container& container, Model& model, Operation&& operation) {
        DoAtOnce(
            what, [&] { return operation(container); }, [&] { return operation(model); });
    }
    // What use(named) gives for a key or position in one of the forms that it may have.
    template <class Use>
    static auto InSomeForm(const Variant& v, unsigned form, Use&& use) {
        if (v.IsText() && form == 1) return use(v.AsText().Units());
        if (v.IsText() && form == 2) return use(v.AsText().ToUtf8());
        if (v.Type() == VarType::Long && form == 1) return use(std::int64_t{v.ToLong()});
        if (v.Type() == VarType::Decimal) return use(v.AsDecimal().Low);
        return use(v);
    }
    // For an operation that may stop halfway, so that it cannot be tried again.
    template <class Ours, class Models>
    void DoAtOnce(const char* what, Ours&& ours, Models&& models) {
        const bool failing = std::exchange(failing_, false);
        Do(what, ours, models);
        failing_ = failing;
    }

  private:
    template <class Operation>
    auto AfterEveryFailure(Operation&& operation) {
        for (std::int64_t number = 1;; ++number) {
            const Failing failing(number);
            try {
                return operation();
            } catch (const std::bad_alloc&) {
                NoteFailure(number);
            }
        }
    }
    struct Failing {
        explicit Failing(std::int64_t number) { FailAllocation(number); }
        ~Failing() { FailAllocation(0); }
    };
    void NoteFailure(std::int64_t number);

    std::uint64_t random_ = 0;
    std::int32_t number_ = 0;
    const char* what_ = "";
    std::string ours_, models_, untrue_;
    bool failing_ = false;
    std::ostream* told_ = nullptr;
};

// Something that has a model. The kind, any number, chooses how many keys there are and the like;
// those with the bit kFailing set run with failing allocations.
inline constexpr std::uint32_t kFailing = 128;
struct Modelled {
    const char* Name;
    std::unique_ptr<StepRun> (*Start)(std::uint32_t kind);
};
extern const std::array<Modelled, 6> kModelled;

// What first disagreed, told by the fewest steps that come to it; "" when all agreed.
[[nodiscard]] std::string RunSteps(const Modelled& modelled, std::uint32_t kind, Steps steps);
// The same for steps that follow from a seed, which is the kind as well.
[[nodiscard]] std::string RunSeed(const Modelled& modelled, std::uint32_t seed, int steps);

}  // namespace zorvane
