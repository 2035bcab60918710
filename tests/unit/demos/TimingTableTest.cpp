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
    Text described;
    for (const auto& line : table.Lines()) described = described + line[0] + u";";
    EXPECT_EQ(described,
              u"Description;Add method;Item method (by string);Item method (by index);"
              "Item method (non-existing key);Sub-Total.. Add & Item methods;For .. Each Loop;"
              "For .. Next Loop;Remove method (by string);Remove method (by index);"
              "Number of items;");
    const std::string csv = table.AsCsv().ToUtf8();
    const std::string html = table.AsHtml().ToUtf8();
    const std::string tabbed = table.AsTabbed().ToUtf8();
    const std::pair<const std::string&, const char*> rows[] = {
        {csv, "Description,Vesk Collection (s),ZVKeyList (s),ZVCollection (s),"},
        {csv, ",Quarm_CollectionEx (s),\"Vesk Collection (fine, ms)\",\"ZVKeyList (fine, ms)\","},
        {csv, ",\"Quarm_CollectionEx (fine, ms)\",Vesk Collection (ns per operation),"},
        {csv, "\r\nAdd method,,,,\"1,5 \"\"x\"\"\",,,,250.000000,,,,125000.0\r\n"},
        {csv, "\r\nItem method (by string),\"1\r2\","},
        {csv, "\r\nRemove method (by string),Not Applicable,,,,1.500000,,,,1500.0,,,\r\n"},
        {csv, "\r\nRemove method (by index),,0.0000,,,,0.000000,,,,0.0,,\r\n"},
        {csv, "\r\nNumber of items,2000,2000,,50,,,,,,,,\r\n"},
        {html, "<tr><td>Sub-Total.. Add &amp; Item methods</td><td></td>"},
        {tabbed, "\nAdd method\t\t\t\t1,5 \"x\"\t"}};
    for (const auto& [written, line] : rows) {
        EXPECT_NE(written.find(line), std::string::npos) << line << "\nis not in\n" << written;
    }
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
