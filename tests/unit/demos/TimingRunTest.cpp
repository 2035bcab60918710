#include "demos/TimingRun.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace zorvane {
namespace {

TestData SomeData(std::int32_t items, const std::function<Text(std::int32_t)>& keyOf) {
    TestData data;
    for (std::int32_t i = 0; i < items; ++i) {
        data.Keys.push_back(keyOf(i));
        data.Values.push_back(i * 7);
    }
    return data;
}

Text Distinct(std::int32_t i) {
    return Text(u"key ") + Variant(i).ToText();
}

// A run by clocks that step by themselves: the n-th reading of the seconds is what `seconds(n)`
// says.
struct SteppedRun {
    void Run(Contender contender, std::int32_t items) {
        TimingRun run(SomeData(items, Distinct), {[this] { return seconds(++secondsRead); },
                                                  [this] { return 0.001 * ++fineRead; }});
        result = run.Run(contender, items, [&](const TimingCell& cell) {
            rows += std::to_string(cell.Row) + " ";
            shown += cell.Shown.ToUtf8() + " ";
            readSoFar.push_back(secondsRead);
        });
    }

    std::function<float(int)> seconds = [](int n) { return static_cast<float>(n) * 0.25F; };
    int secondsRead = 0;
    int fineRead = 0;
    std::string rows, shown;
    std::vector<int> readSoFar;
    TimingResult result;
};

TEST(TimingRun, CellsComeInOrderOfRowsEachAsItsTestHasEnded) {
    for (const ContenderInfo& contender : kContenders) {
        SCOPED_TRACE(contender.Button);
        SteppedRun run;
        run.Run(contender.Is, 61);
        EXPECT_EQ(run.rows, "1 2 3 4 5 7 8 10 11 ");
        const bool platform = contender.Is == Contender::Collection;
        EXPECT_EQ(run.readSoFar, (platform ? std::vector<int>{2, 4, 6, 8, 8, 10, 12, 13, 15}
                                           : std::vector<int>{2, 4, 6, 8, 8, 10, 12, 14, 16}));
        const std::int32_t operations[] = {61 * 4, 61, 61, 61, 61, 61, 61, 30, 31};
        for (std::size_t test = 0; test < std::size(operations); ++test) {
            EXPECT_EQ(run.result.Fine[test].Operations, operations[test]) << test;
            EXPECT_NEAR(run.result.Fine[test].Seconds, test == 0 ? 0.004 : 0.001, 1e-9) << test;
            const bool unreported = test == 0 || (test == 7 && platform);
            EXPECT_EQ(run.result.Times[test], unreported ? 0 : 0.25) << test;
        }
    }
}

TEST(TimingRun, CellsShowFourPlacesAndASubTotalOfTheExactSum) {
    const struct {
        const char* what;
        Contender contender;
        std::function<float(int)> seconds;
        const char* shown;
    } rows[] = {
        {"test 1 takes 2^-8 s, test 2 twice that, and so on", Contender::KeyList,
         [](int n) { return n % 2 == 1 ? 0.0F : static_cast<float>(n / 2) / 256.0F; },
         "0.0039 0.0078 0.0117 0.0156 0.03906 0.0195 0.0234 0.0273 0.0313 "},
        {"nothing at all", Contender::CollectionEx, [](int) { return 43200.0F; },
         "0.0000 0.0000 0.0000 0.0000 0. 0.0000 0.0000 0.0000 0.0000 "},
        {"past midnight", Contender::CollectionEx, [](int n) { return n == 1 ? 86399.5F : 0.25F; },
         "-86399.2500 0.0000 0.0000 0.0000 -86399.25 0.0000 0.0000 0.0000 0.0000 "},
    };
    for (const auto& [what, contender, seconds, shown] : rows) {
        SteppedRun run;
        run.seconds = seconds;
        run.Run(contender, 60);
        EXPECT_EQ(run.shown, shown) << what;
    }
}

TEST(TimingRun, KeptTheCollectionDoesNotReportItsRemovalsByKeyAlthoughItMakesThem) {
    SteppedRun run;
    run.Run(Contender::Collection, 60);
    EXPECT_TRUE(run.shown.ends_with("0.2500 Not Applicable 0.2500 ")) << run.shown;
    EXPECT_EQ(run.result.Fine[8].Operations, 30) << "the other half had gone by key";
}

TEST(TimingRun, EveryContainerIsEmptiedAlsoWhereTestKeysRepeat) {
    const struct {
        const char* what;
        std::function<Text(std::int32_t)> keyOf;
        std::int32_t held, heldByCase;  // the generated containers tell keys apart by case
    } rows[] = {
        {"every key twice", [](std::int32_t i) { return Distinct(i / 2); }, 100, 100},
        {"keys that differ in case alone",
         [](std::int32_t i) {
             return Text(i < 100 ? u"KEY " : u"key ") + Variant(i % 100).ToText();
         },
         100, 200},
        {"one key for all", [](std::int32_t) { return Text(u"the same"); }, 1, 1},
    };
    for (const auto& row : rows) {
        for (const ContenderInfo& contender : kContenders) {
            SCOPED_TRACE(testing::Message() << row.what << ", " << contender.Button);
            TimingRun run(SomeData(200, row.keyOf));
            const TimingResult result = run.Run(contender.Is, 200, [](const TimingCell&) {});
            const bool byCase =
                contender.Is == Contender::KeyList || contender.Is == Contender::ZVCollection;
            const std::int32_t held = byCase ? row.heldByCase : row.held;
            EXPECT_EQ(result.Left, 0);
            EXPECT_EQ(result.Fine[1].Operations, 200);
            EXPECT_EQ(result.Fine[2].Operations, held);
            EXPECT_EQ(result.Fine[7].Operations, held / 2);
        }
    }
}

// A set-up that raises goes unseen: its contender is then timed with other settings.
TEST(TimingRun, EveryContenderIsSetUpToTheEnd) {
    KeyListContender keyList;
    keyList.SetUp();
    EXPECT_TRUE(keyList.Container->Sorted() && keyList.Container->Unique());
    ZVCollectionContender collection;
    collection.SetUp();
    EXPECT_EQ(collection.Container->Granularity(), 10000);
    CollectionExContender hashed;
    hashed.SetUp();
    EXPECT_EQ(hashed.Container->TableSize(), 15001);
}

}  // namespace
}  // namespace zorvane
