#include "demos/TimingRun.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zorvane {
namespace {

// Clocks that step by themselves: the n-th reading of the seconds is what `seconds(n)` says.
struct SteppingClocks {
    int secondsRead = 0;
    int fineRead = 0;
    std::function<float(int)> seconds = [](int n) { return static_cast<float>(n) * 0.25F; };

    TimingRun::Clocks Clocks() {
        return {[this] { return seconds(++secondsRead); }, [this] { return 0.001 * ++fineRead; }};
    }
};

TestData SomeData(std::int32_t items) {
    TestData data;
    for (std::int32_t i = 1; i <= items; ++i) {
        data.Keys.push_back(Text(u"key ") + Variant(i).ToText());
        data.Values.push_back(i * 7);
    }
    return data;
}

std::vector<TimingCell> CellsOf(TimingRun& run, Contender contender, std::int32_t items) {
    std::vector<TimingCell> cells;
    run.Run(contender, items, [&](const TimingCell& cell) { cells.push_back(cell); });
    return cells;
}

TEST(TimingRun_Cells, ComeInOrderOfRowsEachAsItsTestHasEnded) {
    for (const ContenderInfo& contender : kContenders) {
        SteppingClocks clocks;
        TimingRun run(SomeData(60), clocks.Clocks());
        std::string rows;
        std::vector<int> readSoFar;
        run.Run(contender.Is, 60, [&](const TimingCell& cell) {
            rows += std::to_string(cell.Row) + " ";
            readSoFar.push_back(clocks.secondsRead);
        });
        EXPECT_EQ(rows, "1 2 3 4 5 7 8 10 11 ");
        const bool platform = contender.Is == Contender::Collection;
        EXPECT_EQ(readSoFar, (platform ? std::vector<int>{2, 4, 6, 8, 8, 10, 12, 13, 15}
                                       : std::vector<int>{2, 4, 6, 8, 8, 10, 12, 14, 16}))
            << contender.Button;
        EXPECT_EQ(clocks.fineRead, 16) << contender.Button;
    }
}

TEST(TimingRun_Cells, ShowFourPlacesAndASubTotalOfTheExactSum) {
    SteppingClocks clocks;
    // Test 1 takes 2^-8 s, test 2 twice that, and so on: exact in single precision.
    clocks.seconds = [](int n) { return n % 2 == 1 ? 0.0F : static_cast<float>(n / 2) / 256.0F; };
    TimingRun run(SomeData(60), clocks.Clocks());
    const auto cells = CellsOf(run, Contender::KeyList, 60);
    const char* expected[] = {"0.0039", "0.0078", "0.0117", "0.0156", "0.03906",
                              "0.0195", "0.0234", "0.0273", "0.0313"};
    ASSERT_EQ(cells.size(), std::size(expected));
    for (std::size_t i = 0; i < cells.size(); ++i) {
        EXPECT_EQ(cells[i].Shown.ToUtf8(), expected[i]) << "row " << cells[i].Row;
    }
}

TEST(TimingRun_Cells, ShowZerosNegativesAndWhatSinglePrecisionLeaves) {
    SteppingClocks clocks;
    clocks.seconds = [](int) { return 43200.0F; };
    TimingRun still(SomeData(60), clocks.Clocks());
    const auto zeros = CellsOf(still, Contender::CollectionEx, 60);
    EXPECT_EQ(zeros[0].Shown, Text(u"0.0000"));
    EXPECT_EQ(zeros[4].Shown, Text(u"0."));

    clocks = {};
    clocks.seconds = [](int n) { return n == 1 ? 86399.5F : 0.25F; };  // past midnight
    TimingRun midnight(SomeData(60), clocks.Clocks());
    EXPECT_EQ(CellsOf(midnight, Contender::CollectionEx, 60)[0].Shown, Text(u"-86399.2500"));
}

TEST(TimingRun_Collection, KeptDoesNotReportItsRemovalsByKeyAlthoughItMakesThem) {
    SteppingClocks clocks;
    TimingRun run(SomeData(60), clocks.Clocks());
    std::vector<TimingCell> cells;
    const TimingResult result =
        run.Run(Contender::Collection, 60, [&](const TimingCell& cell) { cells.push_back(cell); });
    EXPECT_EQ(cells[7].Row, 10);
    EXPECT_EQ(cells[7].Shown, Text(u"Not Applicable"));
    EXPECT_EQ(result.Times[7], 0);
    EXPECT_EQ(cells[8].Shown, Text(u"0.2500"));
    EXPECT_EQ(result.Fine[8].Operations, 30);  // the other half had gone by key
}

TEST(TimingRun_Result, KeepsTimesAndOperationsByTestNumber) {
    SteppingClocks clocks;
    TimingRun run(SomeData(61), clocks.Clocks());
    const TimingResult result = run.Run(Contender::ZVCollection, 61, [](const TimingCell&) {});
    EXPECT_EQ(result.Items, 61);
    EXPECT_EQ(result.Times[0], 0);
    const std::int32_t operations[] = {61 * 4, 61, 61, 61, 61, 61, 61, 30, 31};
    for (std::size_t test = 0; test < std::size(operations); ++test) {
        EXPECT_EQ(result.Fine[test].Operations, operations[test]) << test;
        if (test != 0) {
            EXPECT_EQ(result.Times[test], 0.25) << test;
            EXPECT_NEAR(result.Fine[test].Seconds, 0.001, 1e-9) << test;
        }
    }
    for (std::size_t unused = 9; unused < result.Times.size(); ++unused) {
        EXPECT_EQ(result.Times[unused], 0);
    }
}

TEST(TimingRun_Run, LeavesEveryContainerEmptyAlsoWhereTestKeysRepeat) {
    struct {
        const char* what;
        TestData data;
        std::int32_t held;
    } rows[] = {{"distinct keys", SomeData(200), 200},
                {"every key twice, one after the other", SomeData(200), 100},
                {"the second half repeats the first", SomeData(200), 100},
                {"keys that differ in case alone", SomeData(200), 0},
                {"one key for all", SomeData(200), 1}};
    for (std::size_t i = 0; i < 200; ++i) {
        rows[1].data.Keys[i] = rows[0].data.Keys[i / 2];
        rows[2].data.Keys[i] = rows[0].data.Keys[i % 100];
        rows[3].data.Keys[i] = Text(i < 100 ? u"KEY " : u"key ") +
                               Variant(static_cast<std::int32_t>(i % 100)).ToText();
        rows[4].data.Keys[i] = u"the same";
    }
    for (const auto& row : rows) {
        for (const ContenderInfo& contender : kContenders) {
            TimingRun run(row.data);
            const TimingResult result = run.Run(contender.Is, 200, [](const TimingCell&) {});
            EXPECT_EQ(result.Left, 0) << row.what << ", " << contender.Button;
            EXPECT_EQ(result.Fine[1].Operations, 200);
            // The generated containers tell keys apart by case, the others do not.
            const bool byCase =
                contender.Is == Contender::KeyList || contender.Is == Contender::ZVCollection;
            const std::int32_t held = row.held != 0 ? row.held : byCase ? 200 : 100;
            EXPECT_EQ(result.Fine[2].Operations, held) << row.what << ", " << contender.Button;
            EXPECT_EQ(result.Fine[7].Operations, held / 2) << row.what << ", " << contender.Button;
        }
    }
}

TEST(TimingRun_Run, StartsEachTimeFromAFreshContainer) {
    TimingRun run(SomeData(100));
    for (int i = 0; i < 2; ++i) {
        const TimingResult result =
            run.Run(Contender::KeyList, i == 0 ? 100 : 50, [](const TimingCell&) {});
        EXPECT_EQ(result.Fine[3].Operations, i == 0 ? 100 : 50);
    }
}

TEST(TimingRun_SetUp, GivesEachContenderItsOwnSettings) {
    KeyListContender keyList;
    keyList.SetUp();
    EXPECT_EQ(keyList.Container->Granularity(), 2000);
    EXPECT_TRUE(keyList.Container->Sorted());
    EXPECT_TRUE(keyList.Container->Unique());
    ZVCollectionContender collection;
    collection.SetUp();
    EXPECT_EQ(collection.Container->Granularity(), 10000);
    EXPECT_FALSE(collection.Container->Sorted());
    CollectionExContender hashed;
    hashed.SetUp();
    EXPECT_EQ(hashed.Container->Capacity(), 10000);
    EXPECT_EQ(hashed.Container->TableSize(), 15001);
}

}  // namespace
}  // namespace zorvane
