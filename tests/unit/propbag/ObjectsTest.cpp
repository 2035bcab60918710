// Objects in a bag: stored, restored in place, made anew by name; fonts; no object; what fails.

#include "tests/support/SmallStack.h"
#include "tests/support/Testing.h"
#include "tests/unit/propbag/Words.h"
#include "zorvane/platform/Classes.h"
#include "zorvane/platform/Font.h"
#include "zorvane/propbag/IZVPropertyBag.h"
#include "zorvane/propbag/TolerantReading.h"
#include "zorvane/propbag/detail/PropertyObjects.h"

namespace zorvane {
namespace {

// A person with a child, possibly, and with a diary of what was called.
class Person : public IZVPropertyBag {
  public:
    explicit Person(Text name = {}, Ref<Object> child = {})
        : Name(std::move(name)), Child(std::move(child)) {}

    [[nodiscard]] Text TypeName() const override { return Type; }
    [[nodiscard]] Text ClassName() const override { return Class; }
    void InitProperties() override { Diary += "init "; }
    [[nodiscard]] Variant ParentObject() override { return Variant(); }
    void ReadProperties(ZVPropertyBag& bag) override {
        Diary += "read" + std::to_string(bag.Count()) + " ";
        Given = Ref<ZVPropertyBag>(&bag);
        if (OnRead) OnRead();
        Name = bag.ReadProperty(u"Name", {.Default = Name}).ToText();
        Child = bag.ReadProperty(u"Child", {.Default = Ref<Object>()}).AsObject();
    }
    void WriteProperties(ZVPropertyBag& bag) override {
        Diary += "write ";
        if (OnWrite) OnWrite();
        bag.WriteProperty(u"Name", Name, {.Default = u""});
        bag.WriteProperty(u"Child", Child);
        if (Twice) bag.WriteProperty(u"Again", Child);
    }

    Text Name;
    Ref<Object> Child;
    Text Type = u"Person";
    Text Class = u"ZorvaneDemoProject.Person";
    std::string Diary;
    bool Twice = false;
    Ref<ZVPropertyBag> Given;
    std::function<void()> OnWrite;
    static inline std::function<void()> OnRead;
};

Ref<Person> PersonIn(const Variant& value) {
    return ViewAs<Person>(value.AsObject());
}

class ZVPropertyBag_Objects : public testing::Test {
  protected:
    ZVPropertyBag_Objects() {
        CreatableClasses().Register(u"ZorvaneDemoProject.Person",
                                    [] { return Ref<Object>(MakeObject<Person>()); });
        CreatableClasses().Register(u"ZorvaneDemoProject.Counted",
                                    [] { return Ref<Object>(MakeObject<CountedObject>()); });
    }
    ZVPropertyBag bag_;
};

TEST_F(ZVPropertyBag_Objects, WhatCannotBeStoredOrMadeRaisesAndChangesNothing) {
    const auto person = MakeObject<Person>(u"x");
    bag_.WriteProperty(u"P", person);
    for (const char16_t* name : {u"No.Such", u"ZorvaneDemoProject.Counted"}) {
        person->Class = name;
        bag_.WriteProperty(name, person);
    }
    const Array before = bag_.Contents();
    const auto angry = MakeObject<Person>();
    angry->OnWrite = [] { RaisePlatform(PlatformError::Overflow); };
    const auto picture = MakeObject<Person>();
    picture->Type = u"Picture";
    const Variant counted = MakeObject<CountedObject>();
    const struct {
        const char* what;
        bool write;
        const char16_t* name;
        Variant value;
        std::int32_t number;
    } table[] = {
        {"without interface", true, u"P", counted, 13},
        {"another bag", true, u"P", MakeObject<ZVPropertyBag>(), 13},
        {"WriteProperties raises", true, u"P", angry, 6},
        {"restored without interface", false, u"P", counted, 13},
        {"initialised without interface", false, u"Q", counted, 13},
        {"unknown class", false, u"No.Such", 5, 429},
        {"known class without interface", false, u"ZorvaneDemoProject.Counted", 5, 13},
        {"a picture as default is no place to restore to", false, u"No.Such", picture, 429},
        {"nor is it initialised", false, u"Q", picture, 0},
    };
    for (const auto& row : table) {
        const auto run = [&] {
            if (row.write) return bag_.WriteProperty(row.name, row.value);
            static_cast<void>(bag_.ReadProperty(row.name, {.Default = row.value}));
        };
        EXPECT_EQ(NumberRaisedBy(run), row.number) << row.what;
        EXPECT_EQ(bag_.Contents(), before) << row.what;
    }
    EXPECT_EQ(picture->Diary, "");
    EXPECT_EQ(CountedObject::Alive(), 1);
}

TEST_F(ZVPropertyBag_Objects, ATolerantReadingLacksWhatCannotBeMadeAndSaysSo) {
    const auto stranger = MakeObject<Person>(u"Bea");
    stranger->Class = u"Of.Tomorrow";
    bag_.WriteProperty(u"P", MakeObject<Person>(u"Ann", stranger));
    {
        const TolerantReading reading;
        const Ref<Person> read = PersonIn(bag_.ReadProperty(u"P"));
        EXPECT_EQ(read->Name, u"Ann");
        EXPECT_FALSE(read->Child);
        ASSERT_EQ(reading.Skipped().size(), 1u);
        EXPECT_EQ(reading.Skipped()[0].Name, u"Child");
        EXPECT_EQ(reading.Skipped()[0].ClassName, stranger->Class);
    }
    EXPECT_EQ(NumberRaisedBy([&] { return bag_.ReadProperty(u"P"); }), 429);
}

TEST_F(ZVPropertyBag_Objects, ObjectsThatContainOneAnotherRaiseInsteadOfEndingTheProgram) {
    const auto ann = MakeObject<Person>(u"Ann");
    const auto bea = MakeObject<Person>(u"Bea", ann);
    ann->Child = bea;
    EXPECT_EQ(OutcomeOf([&] { bag_.WriteProperty(u"P", ann); }),
              "raised 5 | ZorvaneDemoProject.ZVPropertyBag | The object is being written already");
    EXPECT_EQ(ann->Diary, "write ");
    bea->Child = bea;
    EXPECT_EQ(NumberRaisedBy([&] { bag_.WriteProperty(u"P", bea); }), 5);
    EXPECT_EQ(bag_.Count(), 0);
    // The same object twice, side by side, is no circle.
    bea->Child = {};
    ann->OnWrite = [&] { bag_.WriteProperty(u"Beside", bea); };
    bag_.WriteProperty(u"P", ann);
    EXPECT_EQ(bag_.Count(), 2);
    ann->Child = {};
}

TEST_F(ZVPropertyBag_Objects, AsDeepAsAllowedTheyAreMadeAnewByNameAndDeeperTheyAreRefused) {
    Ref<Person> top;
    for (int i = 1; i <= kObjectDepth; ++i) top = MakeObject<Person>(Variant(i).ToText(), top);
    bag_.WriteProperty(u"P", top);
    Ref<Person> read = PersonIn(BagFrom(bag_.Contents()).ReadProperty(u"P"));
    for (int i = kObjectDepth; i > 0; --i, read = PersonIn(read->Child)) {
        ASSERT_TRUE(read);
        EXPECT_EQ(read->Diary, "read2 ");
        EXPECT_EQ(read->Name, Variant(i).ToText());
        EXPECT_EQ(read->Given->ReadProperty(u"Name"), read->Name) << "it may keep its bag";
    }
    EXPECT_FALSE(read);
    // A small stack takes fewer, whether they are written or read.
    RunOnStackOf(256 << 10, [&] {
        EXPECT_EQ(NumberRaisedBy([&] { bag_.WriteProperty(u"P", top); }), 5);
        EXPECT_EQ(NumberRaisedBy([&] { return bag_.ReadProperty(u"P"); }), 5);
    });
    const auto tooDeep = MakeObject<Person>(u"one more", top);
    EXPECT_EQ(NumberRaisedBy([&] { bag_.WriteProperty(u"Q", tooDeep); }), 5);
    EXPECT_EQ(bag_.Count(), 1);
}

TEST_F(ZVPropertyBag_Objects, OnesThatManyHoldAreWrittenForEachOfThemButNotWithoutEnd) {
    for (const auto& [levels, error] : {std::pair(10, 0), std::pair(40, 6)}) {
        auto top = MakeObject<Person>(u"the one");
        for (int i = 0; i < levels; ++i) {
            top = MakeObject<Person>(u"twice", top);
            top->Twice = true;
        }
        EXPECT_EQ(NumberRaisedBy([&] { bag_.WriteProperty(u"P", top); }), error);
    }
    EXPECT_EQ(bag_.Count(), 1);
}

TEST_F(ZVPropertyBag_Objects, AnObjectMayUseTheBagWhileItIsWrittenOrRead) {
    for (const Variant& byDefault : {Variant(), Variant(MakeObject<Person>())}) {
        bag_.WriteProperty(u"P", MakeObject<Person>(u"Ann"));
        Person::OnRead = [&] { bag_.Clear(); };
        EXPECT_EQ(PersonIn(bag_.ReadProperty(u"P", {.Default = byDefault}))->Name, u"Ann");
        Person::OnRead = {};
        EXPECT_EQ(bag_.Count(), 0);
    }
    bag_.WriteProperty(u"A", 1);
    bag_.WriteProperty(u"C", 2);
    const auto person = MakeObject<Person>(u"Ann");
    person->OnWrite = [&] { bag_.Remove(u"A"); };
    bag_.WriteProperty(u"B", person);
    EXPECT_EQ(bag_.Key(1), u"B");
    EXPECT_EQ(bag_.Key(2), u"C");
    // It ends the bag's names: then nothing is written by name any more.
    person->OnWrite = [&] { bag_.WriteProperty(u"C", 3, {.Index = 2}); };
    person->Name = u"Zoe";
    bag_.WriteProperty(u"B", person);
    EXPECT_EQ(bag_.Count(), 2);
    EXPECT_EQ(PersonIn(bag_.ReadProperty(u"", {.Index = 1}))->Name, u"Ann");
}

// The font as it comes back from a file: always made anew.
FontValue Back(const Variant& font) {
    ZVPropertyBag bag;
    bag.WriteProperty(u"Font", font);
    const auto current = MakeObject<Font>(FontValue{.Name = u"current"});
    const Variant read = BagFrom(bag.Contents()).ReadProperty(u"Font", {.Default = current});
    EXPECT_NE(read, Variant(current));
    return ViewAs<Font>(read.AsObject())->Value;
}

TEST(ZVPropertyBag_Fonts, EveryPropertyComesBack) {
    const FontValue table[] = {{u"Sans", 12.5, 700, true, -1, true, true, true},
                               {.Name = u"", .Bold = true, .Italic = true},
                               {.Name = u"Roman", .Weight = 0, .Bold = true, .Underline = true}};
    for (const FontValue& font : table) EXPECT_EQ(Back(MakeObject<Font>(font)), font);
}

TEST(ZVPropertyBag_Fonts, ValuesThatNoFontTakesFallBackToTheDefaults) {
    ZVPropertyBag nested;
    nested.WriteProperty(u"Name", Array(VarType::Long, 0, 3));
    nested.WriteProperty(u"Size", u"not a number");
    nested.WriteProperty(u"Weight", 1e9);
    nested.WriteProperty(u"Bold", Variant::Null());
    nested.WriteProperty(u"Charset", 99999);
    nested.WriteProperty(u"Italic", u"True");
    nested.WriteProperty(u"Underline", MakeObject<Person>(u"x"));
    const FontValue odd{.Name = u"Roman", .Weight = 0, .Italic = true};
    EXPECT_EQ(ViewAs<Font>(MakeStoredObject({nested.Contents(), u"Font"}, u"")->AsObject())->Value,
              odd);
    const FontValue plain{.Name = u"Roman", .Weight = 0};
    EXPECT_EQ(ViewAs<Font>(MakeStoredObject({u"no words", u"Font"}, u"")->AsObject())->Value,
              plain);
}

TEST(ZVPropertyBag_Fonts, AnyObjectOfThatTypeNameIsAskedByName) {
    class OtherFont : public Object {
      public:
        [[nodiscard]] Text TypeName() const override { return u"Font"; }
        Variant Get(std::u16string_view member, Arguments) override {
            asked += Text(member).ToUtf8() + " ";
            return member == u"Name" ? Variant(u"Other") : Variant(std::uint8_t{1});
        }
        std::string asked;
    };
    const auto other = MakeObject<OtherFont>();
    EXPECT_EQ(Back(other), (FontValue{u"Other", 1, 1, true, 1, true, true, true}));
    EXPECT_EQ(other->asked, "Name Size Weight Bold Charset Italic Strikethrough Underline ");
}

TEST(Font_Late, FindsNamesWithoutCaseAndRefusesOthers) {
    Font font;
    font.Set(u"WEIGHT", 700.5);
    EXPECT_EQ(font.Get(u"weight"), Variant(std::int16_t{700}));
    EXPECT_EQ(NumberRaisedBy([&] { return font.Get(u"Colour"); }), 438);
    EXPECT_EQ(NumberRaisedBy([&] { font.Set(u"Colour", 1); }), 438);
}

}  // namespace
}  // namespace zorvane
