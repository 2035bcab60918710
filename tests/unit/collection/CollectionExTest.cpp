#include "zorvane/collection/CollectionEx.h"

#include "tests/support/Testing.h"

namespace zorvane {
namespace {

TEST(CollectionEx_HashKey, FollowsTheFirst256UnitsOfTheLowerCasedKey) {
    const auto with = [](std::size_t count, std::u16string_view tail) {
        return std::u16string(count, u'a').append(tail);
    };
    const std::tuple<const char*, std::u16string, std::int32_t> rows[] = {
        {"empty", u"", 17},
        {"one unit, in upper case", u"A", 114},
        {"two units", u"ab", 326},
        {"first unit just below the sign", u"\u7FEE", 32767},
        {"first unit that wraps below 0", u"\u7FEF", -32768},
        {"wraps round to 0", u"\xFFEF", 0},
        {"a second unit hides the sign", u"\u7FEFa", 0x3FFF0061},
        {"30 bits are kept", with(40, u""), 0x3FFFFF9F},
        {"unit 256 counts", with(255, u"bzzz"), 0x3FFFFFA0},
        {"unit 257 does not", with(256, u"b"), 0x3FFFFF9F},
    };
    for (const auto& [what, key, hash] : rows) EXPECT_EQ(CollectionEx::HashKey(key), hash) << what;
}

}  // namespace
}  // namespace zorvane
