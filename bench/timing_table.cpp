// Prints the timing comparison as a table: usage: timing_table [items [runs]]
//
// The same run as in the window, for each of the four containers: what the window shows, and the
// time of the fine clock. Of several runs each fine time is the median.

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "program/demos/TimingRun.h"
#include "program/demos/TimingTable.h"

namespace {

using namespace zorvane;

// Every row's fine times of one column over all runs.
struct Samples {
    std::vector<FineTime> OfRow[TimingTable::kRows + 1];
};

FineTime Median(std::vector<FineTime> samples) {
    const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
    std::nth_element(samples.begin(), middle, samples.end(),
                     [](const FineTime& a, const FineTime& b) { return a.Seconds < b.Seconds; });
    return *middle;
}

void Print(const TimingTable& table) {
    std::printf("%-32s", "");
    for (int column = 1; column < TimingTable::kColumns; ++column) {
        std::printf("%24s", TimingTable::ColumnCaption(column).ToUtf8().c_str());
    }
    std::printf("\n");
    for (int row = 1; row <= TimingTable::kRows; ++row) {
        const std::string description = TimingTable::Description(row).ToUtf8();
        if (description.empty()) continue;
        std::printf("%-32s", description.c_str());
        for (int column = 1; column < TimingTable::kColumns; ++column) {
            const FineTime fine = table.Fine(row, column).value_or(FineTime());
            std::printf("%15.3f ms %6.0f", fine.Seconds * 1000, fine.SecondsEach() * 1e9);
        }
        std::printf("\n");
    }
}

}  // namespace

int main(int argc, char** argv) {
    const ItemCount count = ReadItemCount(argc > 1 ? Text(argv[1]) : Text("10000"));
    const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : 1;
    TimingRun timing(BuildTestData(ProgramRandom()));
    std::vector<Samples> samples(TimingTable::kColumns);
    TimingTable table;
    // Round robin, so that a busy moment of the machine does not fall on one container alone.
    for (int run = 0; run < runs; ++run) {
        for (const ContenderInfo& contender : kContenders) {
            const int column = static_cast<int>(contender.Is);
            auto& rows = samples[static_cast<std::size_t>(column)].OfRow;
            timing.Run(contender.Is, count.Items, [&](const TimingCell& cell) {
                rows[cell.Row].push_back(cell.Fine);
                table.Set(column, count.Items, {cell.Row, cell.Shown, Median(rows[cell.Row])});
            });
        }
    }
    std::printf("%d items, %d run%s; milliseconds, nanoseconds per operation\n\n", count.Items,
                runs, runs == 1 ? "" : "s");
    Print(table);
    return 0;
}
