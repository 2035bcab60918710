#include "program/demos/TimingTable.h"

#include "tests/support/Testing.h"

namespace zorvane {
namespace {

TEST(TimingTable, AnExportHasALinePerDescribedRowAndQuotesWhatNeedsIt) {
    TimingTable table;
    table.Set(1, 2000, {10, u"Not Applicable", {0.0015, 1000}});
    table.Set(4, 50, {1, u"1,5 \"x\"", {0.25, 2000}});
    table.Set(1, 2000, {2, u"1\r2", {0.0015, 1000}});
    table.Set(2, 2000, {11, u"0.0000", {0, 0}});
    EXPECT_EQ(table.AsCsv().ToUtf8(),
              "Description,Vesk Collection (s),ZVKeyList (s),ZVCollection (s),"
              "Quarm_CollectionEx (s),\"Vesk Collection (fine, ms)\",\"ZVKeyList (fine, ms)\","
              "\"ZVCollection (fine, ms)\",\"Quarm_CollectionEx (fine, ms)\","
              "Vesk Collection (ns per operation),ZVKeyList (ns per operation),"
              "ZVCollection (ns per operation),Quarm_CollectionEx (ns per operation)\r\n"
              "Add method,,,,\"1,5 \"\"x\"\"\",,,,250.000000,,,,125000.0\r\n"
              "Item method (by string),\"1\r2\",,,,1.500000,,,,1500.0,,,\r\n"
              "Item method (by index),,,,,,,,,,,,\r\n"
              "Item method (non-existing key),,,,,,,,,,,,\r\n"
              "Sub-Total.. Add & Item methods,,,,,,,,,,,,\r\n"
              "For .. Each Loop,,,,,,,,,,,,\r\n"
              "For .. Next Loop,,,,,,,,,,,,\r\n"
              "Remove method (by string),Not Applicable,,,,1.500000,,,,1500.0,,,\r\n"
              "Remove method (by index),,0.0000,,,,0.000000,,,,0.0,,\r\n"
              "Number of items,2000,2000,,50,,,,,,,,\r\n");
    const std::string html = table.AsHtml().ToUtf8();
    const std::string tabbed = table.AsTabbed().ToUtf8();
    EXPECT_NE(html.find("<tr><td>Sub-Total.. Add &amp; Item methods</td><td></td>"), html.npos);
    EXPECT_NE(tabbed.find("\nAdd method\t\t\t\t1,5 \"x\"\t"), tabbed.npos) << tabbed;
}

TEST(DurationText, KeepsThreeDigitsAndChangesTheUnitBeforeAThousand) {
    const std::pair<double, const char16_t*> rows[] = {
        {0, u"0.00 ns"},        {9.996e-9, u"10.0 ns"},      {99.96e-9, u"100 ns"},
        {999.4e-9, u"999 ns"},  {999.6e-9, u"1.00 \u00B5s"}, {1.6, u"1.60 s"},
        {-0.0015, u"-1.50 ms"}, {12345, u"12345 s"}};
    for (const auto& [seconds, text] : rows) EXPECT_EQ(DurationText(seconds), Text(text));
}

}  // namespace
}  // namespace zorvane
