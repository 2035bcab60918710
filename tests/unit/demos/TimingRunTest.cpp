#include "program/demos/TimingRun.h"

#include "tests/support/Testing.h"

namespace zorvane {
namespace {

Text Distinct(std::int32_t i) {
    return Text(u"key ") + Variant(i).ToText();
}

float QuarterSeconds(int n) {
    return static_cast<float>(n) * 0.25F;
}

// A run by clocks that step by themselves: the n-th reading of the seconds is what `seconds(n)`
// says.
struct SteppedRun {
    SteppedRun(Contender contender, std::int32_t items, float (*seconds)(int) = QuarterSeconds,
               Text (*keyOf)(std::int32_t) = Distinct) {
        TestData data{std::vector<std::int32_t>(static_cast<std::size_t>(items)), {}};
        for (std::int32_t i = 0; i < items; ++i) data.Keys.push_back(keyOf(i));
        int secondsRead = 0, fineRead = 0;
        TimingRun run(std::move(data),
                      {[&] { return seconds(++secondsRead); }, [&] { return 0.001 * ++fineRead; }});
        result = run.Run(contender, items, [&](const TimingCell& cell) {
            shown += cell.Shown.ToUtf8() + " ";
            readSoFar += std::to_string(secondsRead) + " ";
        });
    }

    std::string shown, readSoFar;
    TimingResult result;
};

// Kept: the platform's collection does not report its removals by key although it makes them.
TEST(TimingRun, CellsComeEachAsItsTestHasEndedAndKeptOneIsNotReported) {
    for (const ContenderInfo& contender : kContenders) {
        SCOPED_TRACE(contender.Button);
        const SteppedRun run(contender.Is, 61);
        const bool platform = contender.Is == Contender::Collection;
        EXPECT_EQ(run.readSoFar, platform ? "2 4 6 8 8 10 12 13 15 " : "2 4 6 8 8 10 12 14 16 ");
        const std::int32_t operations[] = {61 * 4, 61, 61, 61, 61, 61, 61, 30, 31};
        for (std::size_t test = 0; test < std::size(operations); ++test) {
            EXPECT_EQ(run.result.Fine[test].Operations, operations[test]) << test;
        }
    }
}

TEST(TimingRun, CellsShowFourPlacesAndASubTotalOfTheExactSum) {
    const std::tuple<const char*, float (*)(int), const char*> rows[] = {
        {"test 1 takes 2^-8 s, test 2 twice that, and so on",
         [](int n) { return n % 2 == 1 ? 0.0F : static_cast<float>(n / 2) / 256.0F; },
         "0.0039 0.0078 0.0117 0.0156 0.03906 0.0195 0.0234 0.0273 0.0313 "},
        {"nothing at all", [](int) { return 43200.0F; },
         "0.0000 0.0000 0.0000 0.0000 0. 0.0000 0.0000 0.0000 0.0000 "},
        {"past midnight", [](int n) { return n == 1 ? 86399.5F : 0.25F; },
         "-86399.2500 0.0000 0.0000 0.0000 -86399.25 0.0000 0.0000 0.0000 0.0000 "},
    };
    for (const auto& [what, seconds, shown] : rows) {
        EXPECT_EQ(SteppedRun(Contender::KeyList, 60, seconds).shown, shown) << what;
    }
}

TEST(TimingRun, EveryContainerIsEmptiedAlsoWhereTestKeysRepeat) {
    const auto caseAlone = [](std::int32_t i) {
        return Text(i < 100 ? u"KEY " : u"key ") + Variant(i % 100).ToText();
    };
    for (const ContenderInfo& contender : kContenders) {
        SCOPED_TRACE(contender.Button);
        const TimingResult result = SteppedRun(contender.Is, 200, QuarterSeconds, caseAlone).result;
        // The generated containers tell keys apart by case, the others do not.
        const bool generated =
            contender.Is == Contender::KeyList || contender.Is == Contender::ZVCollection;
        EXPECT_EQ(result.Left, 0);
        EXPECT_EQ(result.Fine[2].Operations, generated ? 200 : 100);
        EXPECT_EQ(result.Fine[7].Operations, generated ? 100 : 50);
        const auto same = [](std::int32_t) { return Text(u"the same"); };
        EXPECT_EQ(SteppedRun(contender.Is, 200, QuarterSeconds, same).result.Left, 0);
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
