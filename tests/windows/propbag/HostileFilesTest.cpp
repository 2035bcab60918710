// State files that are damaged or made to hurt, opened by the real window: it comes up, is seen,
// says nothing and can be closed.

#include "tests/windows/propbag/PropBagFixture.h"
#include "zorvane/runtime/FileWords.h"

namespace zorvane::test {
namespace {

using HostileFilesTest = PropBagTest;

// One of these four at most is damaged.
Variant WindowWith(const char16_t* name, const Variant& value) {
    ZVPropertyBag bag;
    for (const char16_t* side : {u"Left", u"Top"}) bag.WriteProperty(side, 1500.0F);
    for (const char16_t* side : {u"Width", u"Height"}) bag.WriteProperty(side, 6000.0F);
    bag.WriteProperty(name, value);
    return bag.Contents();
}

TEST_F(HostileFilesTest, AWindowComesUpWhateverIsDamaged) {
    const Text million(std::u16string(1'000'000, u'M'));
    const Array strange(VarType::Double, 3, 5);
    ZVPropertyBag byName;
    byName.WriteProperty(u"Left", 7, {.Index = 1});  // unsorted from now on
    const std::tuple<const char*, const char16_t*, Variant> cases[] = {
        {"width that is a text", u"Width", Variant(u"wide")},
        {"negative width", u"Width", Variant(-5000.0F)},
        {"left that is no single", u"Left", Variant(1e300)},
        {"left of a monitor that is gone", u"Left", Variant(90000.0F)},
        {"top above every monitor", u"Top", Variant(-30000.0F)},
        {"colour beyond 32 bits", u"BackColor", Variant(1e12)},
        {"colour of an unknown system", u"ForeColor", Variant(std::int32_t{-1})},
        {"caption of a million units", u"Caption", Variant(million)},
        {"caption of controls", u"Caption",
         Variant(std::u16string(u"a\0b\r\n\t\xd800 \x202e", 10))},
        {"caption that is an array", u"Caption", Variant(strange)},
        {"font that is a number", u"Font", Variant(7)},
        {"font that is no object", u"Font", Variant(Ref<Object>())},
        {"font size of a house", u"Font", MakeObject<Font>(FontRecord{.Size = 1e9})},
        {"font name of a million units", u"Font",
         MakeObject<Font>(FontRecord{.Name = million, .Charset = -1})},
        // All of the window:
        {"a text in its place", nullptr, Variant(u"window")},
        {"no words", nullptr, Variant(Array(VarType::Integer, 0, 0))},
        {"words of no bag", nullptr, Variant(Array(VarType::Integer, 0, 500))},
        {"a bag that cannot be asked by name", nullptr, Variant(byName.Contents())},
    };
    for (const auto& [what, name, value] : cases) {
        SCOPED_TRACE(what);
        ZVPropertyBag bag;
        bag.Add(name ? WindowWith(name, value) : value, u"DemoZVPropertyBag1");
        ASSERT_FALSE(modZorvane::SaveFileWords(file_, bag.Contents()));
        Open();
        if (name) {
            EXPECT_TRUE(window_->Left() == 1500 || window_->Top() == 1500);
            EXPECT_TRUE(window_->Width() == 6000 || window_->Height() == 6000);
        }
        EXPECT_FALSE(window_->Caption().Empty()) << "what the file lacks stays";
        const QRect title(window_->frameGeometry().topLeft(), QSize(window_->width(), 24));
        const QRect seen = title & window_->screen()->availableGeometry();
        EXPECT_TRUE(seen.width() >= 64 && seen.height() >= 16) << "nobody could hold it";
        EXPECT_GE(window_->width(), 200);
        EXPECT_GE(window_->height(), 150);
        EXPECT_FALSE(window_->grab().isNull());
        Close();
        EXPECT_TRUE(dialogs_.Said.empty());
    }
}

}  // namespace
}  // namespace zorvane::test
