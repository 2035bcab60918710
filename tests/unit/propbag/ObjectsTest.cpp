// Objects in a bag: stored, restored in place, made anew by name; fonts; no object; what fails.

#include <gtest/gtest.h>

#include <functional>
#include <type_traits>

#include "platform/Classes.h"
#include "platform/Font.h"
#include "propbag/IZVPropertyBag.h"
#include "propbag/PropertyObjects.h"
#include "propbag/ZVPropertyBag.h"
#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

// A person with a parent, possibly: as users write such classes, and with a diary of what was
// called.
class Person : public IZVPropertyBag {
  public:
    explicit Person(Text name = {}, Ref<Object> child = {})
        : Name(std::move(name)), Child(std::move(child)) {}

    [[nodiscard]] Text TypeName() const override { return Type; }
    [[nodiscard]] Text ClassName() const override { return Class; }
    void InitProperties() override { Diary += "init "; }
    [[nodiscard]] Variant ParentObject() override { return Variant(); }
    void ReadProperties(ZVPropertyBag& bag) override {
        Diary += "read ";
        Seen = bag.Count();
        Name = bag.ReadProperty(u"Name", {.Default = Name}).ToText();
        Child = bag.ReadProperty(u"Child", {.Default = Ref<Object>()}).AsObject();
    }
    void WriteProperties(ZVPropertyBag& bag) override {
        Diary += "write ";
        if (OnWrite) OnWrite();
        bag.WriteProperty(u"Name", Name, {.Default = u""});
        bag.WriteProperty(u"Child", Child);
    }

    Text Name;
    Ref<Object> Child;
    Text Type = u"Person";
    Text Class = u"ZorvaneDemoProject.Person";
    std::string Diary;
    std::int32_t Seen = -1;
    std::function<void()> OnWrite;
};

class ZVPropertyBag_Objects : public testing::Test {
  protected:
    ZVPropertyBag_Objects() {
        CreatableClasses().Register(u"ZorvaneDemoProject.Person",
                                    [] { return Ref<Object>(MakeObject<Person>()); });
        CreatableClasses().Register(u"ZorvaneDemoProject.Counted",
                                    [] { return Ref<Object>(MakeObject<CountedObject>()); });
    }
    // The bag as it comes back from a file.
    static ZVPropertyBag Reopened(const ZVPropertyBag& bag) {
        ZVPropertyBag read;
        read.SetContents(bag.Contents());
        return read;
    }

    ZVPropertyBag bag_;
};

TEST_F(ZVPropertyBag_Objects, AChainOfObjectsIsMadeAnewByName) {
    const auto grandchild = MakeObject<Person>(u"Cleo");
    const auto child = MakeObject<Person>(u"Bea", grandchild);
    bag_.WriteProperty(u"Head", MakeObject<Person>(u"Ann", child));
    const ZVPropertyBag bag = Reopened(bag_);
    EXPECT_EQ(bag.ObjName(u"head"), u"ZorvaneDemoProject.Person");
    EXPECT_TRUE(bag.PropIsObject(1));
    EXPECT_TRUE(bag.Item(1).IsArray());
    const auto head = ViewAs<Person>(bag.ReadProperty(u"Head").AsObject());
    ASSERT_TRUE(head);
    EXPECT_EQ(head->Diary, "read ");
    EXPECT_EQ(head->Name, u"Ann");
    const auto second = ViewAs<Person>(head->Child);
    EXPECT_EQ(second->Name, u"Bea");
    EXPECT_EQ(ViewAs<Person>(second->Child)->Name, u"Cleo");
    EXPECT_FALSE(ViewAs<Person>(second->Child)->Child);
    EXPECT_NE(second, child);
}

TEST_F(ZVPropertyBag_Objects, AnObjectGivenAsDefaultIsRestoredInPlaceOrInitialised) {
    bag_.WriteProperty(u"P", MakeObject<Person>(u"Ann"));
    const auto person = MakeObject<Person>(u"before");
    EXPECT_EQ(bag_.ReadProperty(u"P", {.Default = person}), Variant(person));
    EXPECT_EQ(person->Name, u"Ann");
    EXPECT_EQ(bag_.ReadProperty(u"Q", {.Default = person}), Variant(person));
    EXPECT_EQ(person->Diary, "read init ");
}

TEST_F(ZVPropertyBag_Objects, KeptADefaultObjectBeatsTheNoObjectMark) {
    bag_.WriteProperty(u"P", Ref<Object>());
    const auto person = MakeObject<Person>(u"stays");
    EXPECT_EQ(bag_.ReadProperty(u"P", {.Default = person}), Variant(person));
    EXPECT_EQ(person->Diary, "read ");
    EXPECT_EQ(person->Seen, 0);
    EXPECT_EQ(person->Name, u"stays");
}

TEST_F(ZVPropertyBag_Objects, NoObjectIsAMarkThatComesBackAsNoObject) {
    bag_.WriteProperty(u"P", MakeObject<Person>(u"Ann"));
    bag_.WriteProperty(u"p", Ref<Object>());
    const ZVPropertyBag bag = Reopened(bag_);
    ASSERT_EQ(bag.Count(), 1);
    EXPECT_EQ(bag.ObjName(1), u"\r");
    EXPECT_TRUE(bag.PropIsObject(u"P"));
    EXPECT_EQ(bag.Item(1), Variant());
    EXPECT_EQ(bag.ReadProperty(u"P", {.Default = 5}), Variant(Ref<Object>()));
    EXPECT_EQ(bag.ReadProperty(u"P", {.Default = Ref<Object>()}), Variant(Ref<Object>()));
    EXPECT_EQ(bag.ReadProperty(u"absent", {.Default = Ref<Object>()}), Variant(Ref<Object>()));
}

TEST_F(ZVPropertyBag_Objects, APlainValueOverAnObjectIsPlainAgain) {
    bag_.WriteProperty(u"P", MakeObject<Person>(u"Ann"));
    bag_.WriteProperty(u"P", 5);
    EXPECT_FALSE(bag_.PropIsObject(u"P"));
    EXPECT_EQ(bag_.ReadProperty(u"P"), Variant(5));
    bag_.WriteProperty(u"P", MakeObject<Person>(u"Ann"), {.Default = 5});
    EXPECT_TRUE(bag_.PropIsObject(u"P"));
}

TEST_F(ZVPropertyBag_Objects, KeptWithoutAClassNameTheWordsThemselvesComeBack) {
    const auto window = MakeObject<Person>(u"a window");
    window->Class = u"";
    bag_.WriteProperty(u"W", window);
    EXPECT_FALSE(bag_.PropIsObject(u"W"));
    const Variant words = bag_.ReadProperty(u"W");
    EXPECT_EQ(words.Type(), VarType::ArrayFlag | VarType::Integer);
    const auto fresh = MakeObject<Person>();
    EXPECT_EQ(bag_.ReadProperty(u"W", {.Default = fresh}), Variant(fresh));
    EXPECT_EQ(fresh->Name, u"a window");
}

TEST_F(ZVPropertyBag_Objects, AnObjectThatWritesNothingReadsAnEmptyBag) {
    const auto person = MakeObject<Person>();
    person->OnWrite = [] {};
    class Silent : public Person {
        void WriteProperties(ZVPropertyBag&) override {}
    };
    bag_.WriteProperty(u"P", MakeObject<Silent>());
    EXPECT_EQ(bag_.Item(1).AsArray().Count(), 16);
    EXPECT_EQ(ViewAs<Person>(bag_.ReadProperty(u"P").AsObject())->Seen, 0);
}

TEST_F(ZVPropertyBag_Objects, WhatCannotBeStoredOrMadeRaisesAndChangesNothing) {
    bag_.WriteProperty(u"P", MakeObject<Person>(u"Ann"));
    bag_.WriteProperty(u"Five", 5);
    const Array before = bag_.Contents();
    const auto angry = MakeObject<Person>();
    angry->OnWrite = [] { RaisePlatform(PlatformError::Overflow); };
    const auto picture = MakeObject<Person>();
    picture->Type = u"Picture";
    ZVPropertyBag foreign;
    const auto person = MakeObject<Person>(u"x");
    person->Class = u"No.Such";
    foreign.WriteProperty(u"P", person);
    person->Class = u"ZorvaneDemoProject.Counted";
    foreign.WriteProperty(u"C", person);
    const auto read = [](const ZVPropertyBag& bag, const char16_t* name, Variant byDefault) {
        static_cast<void>(bag.ReadProperty(name, {.Default = std::move(byDefault)}));
    };
    const struct {
        const char* what;
        std::function<void()> run;
        std::int32_t number;
    } table[] = {
        {"write without interface", [&] { bag_.WriteProperty(u"P", MakeObject<CountedObject>()); },
         13},
        {"write another bag", [&] { bag_.WriteProperty(u"P", MakeObject<ZVPropertyBag>()); }, 13},
        {"WriteProperties raises", [&] { bag_.WriteProperty(u"P", angry); }, 6},
        {"restore without interface", [&] { read(bag_, u"P", MakeObject<CountedObject>()); }, 13},
        {"initialise without interface", [&] { read(bag_, u"Q", MakeObject<CountedObject>()); },
         13},
        {"unknown class", [&] { read(foreign, u"P", 5); }, 429},
        {"known class without interface", [&] { read(foreign, u"C", Variant()); }, 13},
        {"a picture as default is no place to restore to", [&] { read(foreign, u"P", picture); },
         429},
    };
    for (const auto& row : table) {
        EXPECT_EQ(NumberRaisedBy(row.run), row.number) << row.what;
        EXPECT_EQ(bag_.Contents(), before) << row.what;
    }
    EXPECT_EQ(picture->Diary, "");
    EXPECT_EQ(bag_.ReadProperty(u"Q", {.Default = picture}), Variant(picture));
    EXPECT_EQ(picture->Diary, "");
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST_F(ZVPropertyBag_Objects, ObjectsThatContainOneAnotherRaiseInsteadOfEndingTheProgram) {
    const auto ann = MakeObject<Person>(u"Ann");
    const auto bea = MakeObject<Person>(u"Bea", ann);
    ann->Child = bea;
    const auto error = RaisedBy([&] { bag_.WriteProperty(u"P", ann); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number, 5);
    EXPECT_EQ(error->Description, u"The object is being written already");
    EXPECT_EQ(ann->Diary, "write ");
    EXPECT_EQ(bag_.Count(), 0);
    bea->Child = bea;
    EXPECT_EQ(NumberRaisedBy([&] { bag_.WriteProperty(u"P", bea); }), 5);
    // The same object twice, side by side, is no circle.
    bea->Child = {};
    ann->OnWrite = [&] { bag_.WriteProperty(u"Beside", bea); };
    bag_.WriteProperty(u"P", ann);
    EXPECT_EQ(bag_.Count(), 2);
    ann->Child = {};
}

TEST_F(ZVPropertyBag_Objects, AsDeepAsAllowedTheyComeBackAndDeeperTheyAreRefused) {
    Ref<Person> top = MakeObject<Person>(u"0");
    for (int depth = 1; depth < kObjectDepth; ++depth) {
        top = MakeObject<Person>(Text(std::to_string(depth)), top);
    }
    bag_.WriteProperty(u"P", top);
    Variant read = bag_.ReadProperty(u"P");
    int depth = 0;
    for (; read.AsObject(); ++depth) read = ViewAs<Person>(read.AsObject())->Child;
    EXPECT_EQ(depth, kObjectDepth);
    const auto tooDeep = MakeObject<Person>(u"one more", top);
    EXPECT_EQ(NumberRaisedBy([&] { bag_.WriteProperty(u"Q", tooDeep); }), 5);
    EXPECT_EQ(bag_.Count(), 1);
}

TEST_F(ZVPropertyBag_Objects, AnObjectMayUseTheBagWhileItIsWritten) {
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
    EXPECT_EQ(ViewAs<Person>(bag_.ReadProperty(u"", {.Index = 1}).AsObject())->Name, u"Ann");
}

TEST_F(ZVPropertyBag_Objects, AnObjectMayClearTheBagWhileItIsRead) {
    class Clearer : public Person {
      public:
        explicit Clearer(ZVPropertyBag& bag) : bag_(bag) {}
        void ReadProperties(ZVPropertyBag& bag) override {
            bag_.Clear();
            Person::ReadProperties(bag);
        }

      private:
        ZVPropertyBag& bag_;
    };
    CreatableClasses().Register(u"Clearer", [&] { return Ref<Object>(MakeObject<Clearer>(bag_)); });
    const auto stored = MakeObject<Person>(u"Ann");
    stored->Class = u"Clearer";
    for (const bool inPlace : {false, true}) {
        bag_.WriteProperty(u"P", stored);
        const auto object = MakeObject<Clearer>(bag_);
        const Variant byDefault = inPlace ? Variant(object) : Variant();
        const Variant read = bag_.ReadProperty(u"P", {.Default = byDefault});
        EXPECT_EQ(ViewAs<Person>(read.AsObject())->Name, u"Ann");
        EXPECT_EQ(bag_.Count(), 0);
    }
}

TEST_F(ZVPropertyBag_Objects, AnObjectMayKeepTheBagThatItWasGiven) {
    class Keeper : public Person {
      public:
        void ReadProperties(ZVPropertyBag& bag) override { Kept = Ref<ZVPropertyBag>(&bag); }
        Ref<ZVPropertyBag> Kept;
    };
    bag_.WriteProperty(u"P", MakeObject<Person>(u"Ann"));
    const auto keeper = MakeObject<Keeper>();
    static_cast<void>(bag_.ReadProperty(u"P", {.Default = keeper}));
    EXPECT_EQ(keeper->Kept->ReadProperty(u"Name"), Variant(u"Ann"));
}

class ZVPropertyBag_Fonts : public ZVPropertyBag_Objects {
  protected:
    // The font as it comes back from a file.
    FontValue Back(const FontValue& value) {
        bag_.WriteProperty(u"Font", MakeObject<Font>(value));
        return ReadBack();
    }
    FontValue ReadBack() const {
        const ZVPropertyBag bag = Reopened(bag_);
        const auto current = MakeObject<Font>(FontValue{.Name = u"current"});
        const auto font = ViewAs<Font>(bag.ReadProperty(u"Font", {.Default = current}).AsObject());
        EXPECT_NE(font, current);  // a font is always made anew
        return font ? font->Value : FontValue{};
    }
    static ZVPropertyBag NestedBag(const ZVPropertyBag& bag) {
        ZVPropertyBag nested;
        nested.SetContents(bag.Item(u"Font"));
        return nested;
    }
};

TEST_F(ZVPropertyBag_Fonts, EveryPropertyComesBack) {
    const FontValue plain{.Name = u"Roman", .Size = 8.25, .Weight = 0};
    EXPECT_EQ(Back(plain), plain);
    const struct {
        const char* what;
        FontValue font;
    } table[] = {
        {"name", {.Name = u"Sans"}},
        {"no name", {.Name = u""}},
        {"size", {.Size = 12.5}},
        {"weight", {.Weight = 700}},
        {"bold", {.Bold = true}},
        {"charset", {.Charset = -1}},
        {"italic", {.Italic = true}},
        {"struck", {.Strikethrough = true}},
        {"underlined", {.Underline = true}},
    };
    for (const auto& row : table) EXPECT_EQ(Back(row.font), row.font) << row.what;
    EXPECT_EQ(bag_.ObjName(u"Font"), u"Font");
}

TEST_F(ZVPropertyBag_Fonts, KeptTheDefaultWeightIs0SoThat400IsStored) {
    static_cast<void>(Back({.Name = u"Roman"}));
    EXPECT_EQ(NestedBag(bag_).Count(), 1);
    EXPECT_EQ(NestedBag(bag_).ReadProperty(u"Weight"), Variant(std::int16_t{400}));
    EXPECT_EQ(Back({.Name = u"Roman", .Weight = 0}).Weight, 0);
    EXPECT_EQ(bag_.Item(u"Font").AsArray().Count(), 16);  // all defaults: an empty bag's words
}

TEST_F(ZVPropertyBag_Fonts, ValuesThatNoFontTakesFallBackToTheDefaults) {
    ZVPropertyBag nested;
    nested.WriteProperty(u"Name", Array(VarType::Long, 0, 3));
    nested.WriteProperty(u"Size", u"not a number");
    nested.WriteProperty(u"Weight", 1e9);
    nested.WriteProperty(u"Bold", Variant::Null());
    nested.WriteProperty(u"Charset", 99999);
    nested.WriteProperty(u"Italic", u"True");
    nested.WriteProperty(u"Underline", MakeObject<Person>(u"x"));
    bag_.WriteProperty(u"Font", MakeObject<Font>());
    // The hostile words under the font's mark.
    Array words = nested.Contents();
    ZVPropertyBag outer;
    outer.WriteProperty(u"Font", MakeObject<Font>(FontValue{.Name = u"x"}));
    outer.WriteProperty(u"Font", words, {.Index = 1});
    const Variant plain = outer.ReadProperty(u"", {.Index = 1});
    EXPECT_TRUE(plain.IsArray());  // without the mark it is no font
    const FontValue font = ViewAs<Font>(MakeStoredObject({words, u"Font"}).AsObject())->Value;
    EXPECT_EQ(font, (FontValue{.Name = u"Roman", .Weight = 0, .Italic = true}));
    const FontValue odd = ViewAs<Font>(MakeStoredObject({u"no words", u"Font"}).AsObject())->Value;
    EXPECT_EQ(odd, (FontValue{.Name = u"Roman", .Weight = 0}));
}

TEST_F(ZVPropertyBag_Fonts, AnyObjectOfThatTypeNameIsAskedByName) {
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
    bag_.WriteProperty(u"Font", other);
    EXPECT_EQ(other->asked, "Name Size Weight Bold Charset Italic Strikethrough Underline ");
    EXPECT_EQ(ReadBack(), (FontValue{u"Other", 1, 1, true, 1, true, true, true}));
}

TEST(Font_Late, NamesAndConversions) {
    Font font;
    font.Set(u"SIZE", u"12.5");
    font.Set(u"weight", 700.5);
    font.Set(u"Bold", -1);
    EXPECT_EQ(font.Value, (FontValue{.Size = 12.5, .Weight = 700, .Bold = true}));
    EXPECT_EQ(font.Get(u"bold"), Variant(true));
    EXPECT_EQ(NumberRaisedBy([&] { font.Set(u"Size", u"large"); }), 13);
    EXPECT_EQ(NumberRaisedBy([&] { font.Set(u"Charset", 40000); }), 6);
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(font.Get(u"Colour")); }), 438);
    EXPECT_EQ(NumberRaisedBy([&] { font.Set(u"Colour", 1); }), 438);
    EXPECT_EQ(font.Value, (FontValue{.Size = 12.5, .Weight = 700, .Bold = true}));
}

}  // namespace
}  // namespace zorvane
