#include "program/demos/TimingTable.h"

#include <cmath>
#include <string>
#include <string_view>

#include "zorvane/platform/NumberText.h"

namespace zorvane {
namespace {

constexpr std::array<const char16_t*, TimingTable::kRows> kDescriptions{
    u"Add method",
    u"Item method (by string)",
    u"Item method (by index)",
    u"Item method (non-existing key)",
    u"Sub-Total.. Add & Item methods",
    u"",
    u"For .. Each Loop",
    u"For .. Next Loop",
    u"",
    u"Remove method (by string)",
    u"Remove method (by index)",
    u"",
    u"",
    u"",
};

// Three significant digits of 0 to 999.
Text ThreeDigits(double value) {
    if (value < 9.995) return FormatNumber(value, u"0.00");
    if (value < 99.95) return FormatNumber(value, u"0.0");
    return FormatNumber(value, u"0");
}

// What stands around lines and cells, and how a cell is written.
struct Markup {
    std::u16string_view Begin, Before, Between, Behind, End;
    Text (*Written)(const Text& cell);
};

Text Written(const std::vector<std::vector<Text>>& lines, const Markup& markup) {
    std::u16string all;
    for (const auto& line : lines) {
        all += markup.Begin;
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (i != 0) all += markup.Between;
            all.append(markup.Before).append(markup.Written(line[i])).append(markup.Behind);
        }
        all += markup.End;
    }
    return all;
}

Text Quoted(const Text& cell) {
    const std::u16string_view units = cell.Units();
    if (units.find_first_of(u",\"\r\n") == std::u16string_view::npos) return cell;
    std::u16string quoted = u"\"";
    for (const char16_t unit : units) quoted.append(unit == u'"' ? 2 : 1, unit);
    return quoted + u"\"";
}

Text Escaped(const Text& cell) {
    std::u16string escaped;
    for (const char16_t unit : cell.Units()) {
        if (unit == u'&') {
            escaped += u"&amp;";
        } else if (unit == u'<') {
            escaped += u"&lt;";
        } else {
            escaped += unit;
        }
    }
    return escaped;
}

}  // namespace

Text TimingTable::ColumnCaption(int column) {
    if (column == 0) return u"Description";
    return kContenders.at(static_cast<std::size_t>(column) - 1).ColumnCaption;
}

Text TimingTable::Description(int row) {
    return kDescriptions.at(static_cast<std::size_t>(row) - 1);
}

float TimingTable::ColumnWidth(int column) {
    return column == 0 ? 2500.0F : 1200.0F;
}

void TimingTable::ClearColumn(int column) {
    const auto at = static_cast<std::size_t>(column);
    for (std::size_t row = 1; row <= kClearedRows; ++row) cells_.at(row).at(at) = {};
    items_.at(at) = 0;
}

void TimingTable::Set(int column, std::int32_t items, const TimingCell& cell) {
    const auto at = static_cast<std::size_t>(column);
    cells_.at(static_cast<std::size_t>(cell.Row)).at(at) = {cell.Shown, cell.Fine};
    items_.at(at) = items;
    lastItems_ = items;
}

Text TimingTable::FinerShown(int row, int column) const {
    const auto fine = Fine(row, column);
    return fine ? DurationText(fine->Seconds) : Text();
}

bool TimingTable::FineAlone(int row, int column) const {
    const Cell& cell = At(row, column);
    return cell.Fine && cell.Shown.Units() == kNotApplicable;
}

Text TimingTable::ToolTip(int row, int column) const {
    const Cell& cell = At(row, column);
    if (!cell.Fine) return {};
    return ColumnCaption(column) + u", " + Description(row) + u"\n" + FineTimeText(*cell.Fine) +
           (FineAlone(row, column) ? u"\nTimed by the finer clock alone" : u"");
}

Text TimingTable::ColumnToolTip(int column) const {
    if (column < 1 || column >= kColumns || Items(column) == 0) return {};
    return ColumnCaption(column) + u", with " + GroupedText(Items(column)) + u" items";
}

std::vector<std::vector<Text>> TimingTable::Lines() const {
    std::vector<std::vector<Text>> lines(1, {ColumnCaption(0)});
    for (int column = 1; column < kColumns; ++column) {
        lines[0].push_back(ColumnCaption(column) + u" (s)");
    }
    for (const char16_t* unit : {u" (fine, ms)", u" (ns per operation)"}) {
        for (int column = 1; column < kColumns; ++column) {
            lines[0].push_back(ColumnCaption(column) + unit);
        }
    }
    for (int row = 1; row <= kRows; ++row) {
        if (Description(row).Empty()) continue;
        std::vector<Text> line{Description(row)};
        for (int column = 1; column < kColumns; ++column) line.push_back(Shown(row, column));
        for (int column = 1; column < kColumns; ++column) {
            const auto fine = Fine(row, column);
            line.push_back(fine ? FormatNumber(fine->Seconds * 1000, u"0.000000") : Text());
        }
        for (int column = 1; column < kColumns; ++column) {
            const auto fine = Fine(row, column);
            line.push_back(fine ? FormatNumber(fine->SecondsEach() * 1e9, u"0.0") : Text());
        }
        lines.push_back(std::move(line));
    }
    lines.push_back({u"Number of items"});
    for (int column = 1; column < kColumns; ++column) {
        lines.back().push_back(Items(column) == 0 ? Text() : LongText(Items(column)));
    }
    lines.back().resize(lines.front().size());
    return lines;
}

Text TimingTable::AsCsv() const {
    return Written(Lines(), {.Between = u",", .End = u"\r\n", .Written = Quoted});
}

Text TimingTable::AsHtml() const {
    const Text rows = Written(Lines(), {.Begin = u"<tr>",
                                        .Before = u"<td>",
                                        .Behind = u"</td>",
                                        .End = u"</tr>\n",
                                        .Written = Escaped});
    return Text(u"<table>\n") + rows + u"</table>\n";
}

Text TimingTable::AsTabbed() const {
    const auto asItIs = [](const Text& cell) { return cell; };
    return Written(Lines(), {.Between = u"\t", .End = u"\n", .Written = asItIs});
}

Text DurationText(double seconds) {
    struct Unit {
        double seconds;
        const char16_t* name;
    };
    constexpr std::array<Unit, 4> kUnits{
        {{1e-9, u" ns"}, {1e-6, u" \u00B5s"}, {1e-3, u" ms"}, {1, u" s"}}};
    const double size = std::fabs(seconds);
    const Text sign = seconds < 0 ? u"-" : u"";
    for (const Unit& unit : kUnits) {
        // What would be rounded up to 1000 takes the next unit.
        if (size / unit.seconds < 999.5) return sign + ThreeDigits(size / unit.seconds) + unit.name;
    }
    return sign + FormatNumber(size, u"0") + u" s";
}

Text FineTimeText(const FineTime& fine) {
    return DurationText(fine.Seconds) + u" for " + GroupedText(fine.Operations) + u" operations, " +
           DurationText(fine.SecondsEach()) + u" each";
}

Text GroupedText(std::int64_t value) {
    std::string digits = LongText(value).ToUtf8();
    const std::size_t first = digits.front() == '-' ? 1 : 0;
    for (std::size_t at = digits.size(); at > first + 3;) {
        at -= 3;
        digits.insert(at, 1, ',');
    }
    return digits;
}

}  // namespace zorvane
