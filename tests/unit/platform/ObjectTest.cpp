#include "platform/Object.h"

#include <gtest/gtest.h>

#include "platform/Classes.h"
#include "platform/Random.h"
#include "platform/Variant.h"
#include "tests/unit/CountedObject.h"
#include "tests/unit/Raises.h"

namespace zorvane {
namespace {

TEST(Object_LateBound, RefusesAnUnknownMemberByNumberSourceAndName) {
    const auto object = MakeObject<CountedObject>();
    const std::optional<Error> errors[] = {
        RaisedBy([&] { static_cast<void>(object->Call(u"Speak")); }),
        RaisedBy([&] { static_cast<void>(object->Get(u"Speak")); }),
        RaisedBy([&] { object->Set(u"Speak", 1); }),
    };
    for (const auto& error : errors) {
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Number, 438);
        EXPECT_EQ(error->Source, Text(u"CountedObject"));
        EXPECT_EQ(error->Description, Text(u"The object has no such property or method: Speak"));
    }
}

TEST(Ref, FreesWithItsLastHolderAndNotBefore) {
    Ref<Object> first = MakeObject<CountedObject>();
    {
        const Ref<Object> second = first;
        Ref<Object> third = std::move(first);
        EXPECT_FALSE(first);  // NOLINT: the state after a move is promised
        third = second;
        Ref<Object>& same = third;
        third = same;
        EXPECT_EQ(CountedObject::Alive(), 1);
        first = second;
    }
    EXPECT_EQ(CountedObject::Alive(), 1);
    first = nullptr;
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(Ref, DetachHandsTheReferenceOver) {
    Ref<Object> object = MakeObject<CountedObject>();
    Object* const taken = object.Detach();
    EXPECT_EQ(CountedObject::Alive(), 1);
    taken->Release();
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(Ref, NeverFreesAnObjectThatStandsOnTheStack) {
    CountedObject object;
    { const Ref<Object> reference(&object); }
    EXPECT_EQ(CountedObject::Alive(), 1);
}

TEST(Ref, MadeByADestructorToItsOwnObjectDoesNotFreeItTwice) {
    class Clinging : public CountedObject {
      public:
        ~Clinging() override { const Ref<Object> toMyself(this); }
    };
    MakeObject<Clinging>();
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(Ref, IsNotFreedWhileItsConstructorHandsItselfOut) {
    class Introducing : public CountedObject {
      public:
        Introducing() { const Ref<Object> toMyself(this); }
    };
    const auto object = MakeObject<Introducing>();
    EXPECT_EQ(CountedObject::Alive(), 1);
}

TEST(ViewAs, GivesNothingForAnotherClass) {
    class Other : public CountedObject {};
    const Ref<Object> object = MakeObject<CountedObject>();
    EXPECT_TRUE(ViewAs<CountedObject>(object));
    EXPECT_FALSE(ViewAs<Other>(object));
    EXPECT_FALSE(ViewAs<Other>(Ref<Object>()));
}

TEST(Classes_Create, FindsNamesWithoutCaseAndRefusesOthers) {
    Classes classes;
    const Text name = ClassIdentifier(u"Sample");
    EXPECT_EQ(name, Text(u"ZorvaneDemoProject.Sample"));
    classes.Register(name, [] { return Ref<Object>(); });
    classes.Register(u"ZORVANEdemoPROJECT.sample", [] { return MakeObject<CountedObject>(); });
    EXPECT_TRUE(classes.Create(name));  // the later registration
    EXPECT_EQ(NumberRaisedBy([&] { static_cast<void>(classes.Create(u"Sample")); }), 429);
}

TEST(Error_Description, IsThePlatformsOwnWhereNoneIsGiven) {
    for (const std::int32_t number : {5, 6, 9, 13, 91, 380, 429, 438, 457}) {
        const Error error(number);
        EXPECT_NE(error.Description, Error(1).Description) << number;
        EXPECT_EQ(error.what(), error.Description.ToUtf8());
    }
    EXPECT_EQ(Error(5, u"a::b", u"told").Description, Text(u"told"));
}

TEST(IgnoringErrors, SwallowsErrorsAlone) {
    EXPECT_TRUE(IgnoringErrors([] {}));
    EXPECT_FALSE(IgnoringErrors([] { RaisePlatform(PlatformError::Overflow); }));
    EXPECT_THROW(IgnoringErrors([] { throw 5; }), int);
}

// Test data and generated keys come from this sequence: it must never move.
TEST(Random_Next, GivesTheSameSequenceEverywhereEvenlyBelowOne) {
    Random random;
    for (const int k : {11602493, 11087610, 2506929, 7077214}) {
        EXPECT_EQ(random.Next(), static_cast<float>(k) * 0x1p-24f);
    }
    double sum = 0;
    for (int i = 0; i < 100000; ++i) {
        const float drawn = random.Next();
        ASSERT_GE(drawn, 0.0f);
        ASSERT_LT(drawn, 1.0f);
        sum += static_cast<double>(drawn);
    }
    EXPECT_NEAR(sum / 100000, 0.5, 0.005);
}

}  // namespace
}  // namespace zorvane
