#include "program/demos/TestData.h"

#include <algorithm>
#include <array>
#include <limits>

#include "zorvane/platform/NumberText.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLeastItems = 50;

// Codes 128 to 159 of the code page Windows-1252; the five that it leaves open stay as they are.
constexpr std::array<char16_t, 32> kUpperCodes{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char16_t UnitOf(std::int32_t code) {
    if (code < 128 || code > 159) return static_cast<char16_t>(code);
    return kUpperCodes.at(static_cast<std::size_t>(code) - 128);
}

std::int32_t Number(const Text& typed) {
    return static_cast<std::int32_t>(
        RoundHalfEvenSaturating(LeadingNumber(typed), std::numeric_limits<std::int32_t>::min(),
                                std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

TestData BuildTestData(Random& random) {
    const auto draw = [&](double factor, double least) {
        return Variant(static_cast<double>(random.Next()) * factor + least).ToLong();
    };
    TestData data;
    data.Values.reserve(TestData::kItems);
    data.Keys.reserve(TestData::kItems);
    for (std::int32_t i = 0; i < TestData::kItems; ++i) {
        data.Values.push_back(draw(1000000, 0));
        const auto length = static_cast<std::size_t>(draw(30, 8));
        data.Keys.push_back(Text::Make(length, [&](char16_t* units) {
            // Kept: codes run beyond the printable range.
            for (std::size_t at = 0; at < length; ++at) units[at] = UnitOf(draw(128, 32));
        }));
    }
    return data;
}

ItemCount ReadItemCount(const Text& typed) {
    const std::int32_t items = Number(typed);
    if (items > TestData::kItems) return {TestData::kItems, LongText(TestData::kItems), true};
    if (items < kLeastItems) {
        constexpr std::u16string_view kBegins = u"+-.0123456789";
        const std::u16string_view units = typed.Units();
        const std::size_t first = std::min(units.find_first_not_of(u' '), units.size());
        const bool number = kBegins.find(units.substr(first, 1)) != kBegins.npos;
        return {kLeastItems, LongText(kLeastItems), number && first != units.size()};
    }
    return {items, std::nullopt, true};
}

}  // namespace zorvane
