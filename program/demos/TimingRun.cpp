#include "program/demos/TimingRun.h"

#include <chrono>

#include "zorvane/platform/NumberText.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {
namespace {

// Resume-next over `operations` single operations, counted from 0.
template <class Operation>
auto Each(std::int32_t operations, Operation operation) {
    return [operations, operation] {
        for (std::int32_t i = 0; i < operations; ++i) {
            IgnoringErrors([&] { operation(i); });
        }
    };
}

}  // namespace

double TimingRun::MonotonicSeconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

TimingResult TimingRun::Run(Contender contender, std::int32_t items, const ShowCell& show) {
    show_ = show;
    result_ = {.Items = items};
    // A text remembers its hash: each run has texts of its own, lest it live on an earlier one's.
    keys_.clear();
    for (std::int32_t i = 0; i < items; ++i) {
        keys_.emplace_back(data_.Keys[static_cast<std::size_t>(i)].Units());
    }
    switch (contender) {
        case Contender::Collection:
            RunTests(CollectionContender());
            break;
        case Contender::KeyList:
            RunTests(KeyListContender());
            break;
        case Contender::ZVCollection:
            RunTests(ZVCollectionContender());
            break;
        case Contender::CollectionEx:
            RunTests(CollectionExContender());
            break;
    }
    return result_;
}

template <class Kind>
void TimingRun::RunTests(Kind contender) {
    IgnoringErrors([&] { contender.SetUp(); });
    auto& container = *contender.Container;
    const auto key = [this](std::int32_t i) -> const Text& {
        return keys_[static_cast<std::size_t>(i)];
    };
    const Variant absent(u"cccc");
    const Variant first(std::int16_t{1});
    // Read by nobody, and stored all the same.
    [[maybe_unused]] volatile std::int32_t read = 0;
    [[maybe_unused]] volatile bool found = false;
    const auto readByPosition = [&](std::int32_t i) { read = container.Item(i + 1).ToLong(); };

    Time(1, 1, result_.Items, true, Each(result_.Items, [&](std::int32_t i) {
             contender.Add(data_.Values[static_cast<std::size_t>(i)], key(i));
         }));
    std::int32_t count = container.Count();
    Time(2, 2, count, true,
         Each(count, [&](std::int32_t i) { read = container.Item(key(i)).ToLong(); }));
    count = container.Count();
    Time(3, 3, count, true, Each(count, readByPosition));
    count = container.Count();
    Time(4, 4, count, true, Each(count, [&](std::int32_t) { found = contender.Exists(absent); }));
    ShowSubTotal(1, 4, 5);
    Time(5, 7, container.Count(), true, [&] {
        IgnoringErrors([&] {
            contender.Visit(
                [&](const Variant& item) { IgnoringErrors([&] { read = item.ToLong(); }); });
        });
    });
    count = container.Count();
    Time(6, 8, count, true, Each(count, readByPosition));
    const std::int32_t half = container.Count() / 2;
    Time(7, 10, half, Kind::kReportsRemovalByKey,
         Each(half, [&](std::int32_t i) { container.Remove(key(i)); }));
    count = container.Count();
    Time(8, 11, count, true, Each(count, [&](std::int32_t) { container.Remove(first); }));
    result_.Left = container.Count();
}

// Times one loop with both clocks; one that is not reported has no second reading.
template <class Loop>
void TimingRun::Time(int test, int row, std::int32_t operations, bool reported, Loop&& loop) {
    startTime_ = static_cast<double>(clocks_.Seconds());
    const double fineStart = clocks_.Fine();
    loop();
    const FineTime fine{clocks_.Fine() - fineStart, operations};
    Variant value = Text(kNotApplicable);
    if (reported) {
        value = static_cast<float>(static_cast<double>(clocks_.Seconds()) - startTime_);
    }
    RecordResult(test, row, value, fine);
}

void TimingRun::RecordResult(int test, int row, const Variant& value, const FineTime& fine) {
    const auto at = static_cast<std::size_t>(test);
    result_.Fine.at(at) = fine;
    result_.Times.at(at) = value.IsNumber() ? value.ToDouble() : 0;
    show_({row,
           value.IsNumber() ? FormatNumber(result_.Times.at(at), u"###0.0000") : value.ToText(),
           fine});
}

void TimingRun::ShowSubTotal(int first, int last, int row) {
    double sum = 0;
    FineTime fine;
    for (auto test = static_cast<std::size_t>(first); test <= static_cast<std::size_t>(last);
         ++test) {
        sum += result_.Times.at(test);
        fine.Seconds += result_.Fine.at(test).Seconds;
        fine.Operations += result_.Fine.at(test).Operations;
    }
    result_.Fine[0] = fine;
    show_({row, FormatNumber(sum, u"###0.#####"), fine});
}

}  // namespace zorvane
