#pragma once
// TimingRun: one fixed sequence of timed operations against one container, without a window.
//
// What the table shows comes from the clock of seconds since midnight, which steps by milliseconds.
// Beside it every loop is timed with a fine clock, whose readings are not counted with the others.

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "program/demos/Contenders.h"
#include "program/demos/TestData.h"
#include "zorvane/platform/Clock.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

using FineClock = std::function<double()>;  // seconds, from any start, never backwards

// One loop as the fine clock saw it.
struct FineTime {
    double Seconds = 0;
    std::int32_t Operations = 0;
    [[nodiscard]] double SecondsEach() const { return Operations > 0 ? Seconds / Operations : 0; }
    friend bool operator==(const FineTime&, const FineTime&) = default;
};

// What a result shows that is not reported.
inline constexpr std::u16string_view kNotApplicable = u"Not Applicable";

// A result that has just come in.
struct TimingCell {
    int Row;     // 1..11 of the table
    Text Shown;  // "0.0039", "0.01563", "Not Applicable"
    FineTime Fine;
};
using ShowCell = std::function<void(const TimingCell&)>;

struct TimingResult {
    std::int32_t Items = 0;
    std::array<double, 21> Times{};  // seconds by test number 1..8; the others stay 0
    std::array<FineTime, 9> Fine{};  // by test number 1..8; 0 is the sub-total of 1 to 4
    std::int32_t Left = 0;           // entries that the last test has left behind
};

class TimingRun {
  public:
    struct Clocks {
        SecondsClock Seconds = SecondsSinceMidnight;
        FineClock Fine = MonotonicSeconds;
    };

    explicit TimingRun(TestData data) : TimingRun(std::move(data), Clocks()) {}
    TimingRun(TestData data, Clocks clocks) : data_(std::move(data)), clocks_(std::move(clocks)) {}

    // Runs the eight tests on a fresh container and lets go of it. `items` is 1..TestData::kItems.
    // Each result is shown as it comes, in order of rows. An operation that raises is skipped: its
    // cost is part of the time. Reads the clock of seconds 16 times, for the platform's collection
    // 15 times.
    TimingResult Run(
        Contender contender, std::int32_t items, const ShowCell& show = [](const TimingCell&) {});

    // What the fine clock says now.
    [[nodiscard]] double FineSeconds() const { return clocks_.Fine(); }
    [[nodiscard]] static double MonotonicSeconds();

  private:
    template <class Kind>
    void RunTests(Kind contender);
    template <class Loop>
    void Time(int test, int row, std::int32_t operations, bool reported, Loop&& loop);
    void RecordResult(int test, int row, const Variant& value, const FineTime& fine);
    void ShowSubTotal(int first, int last, int row);

    TestData data_;
    Clocks clocks_;
    std::vector<Text> keys_;
    ShowCell show_;
    double startTime_ = 0;
    TimingResult result_;
};

}  // namespace zorvane
