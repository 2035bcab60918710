#include "zorvane/platform/Object.h"

#include <cstdlib>
#include <ctime>

#include "tests/support/Testing.h"
#include "zorvane/platform/Classes.h"
#include "zorvane/platform/Clock.h"
#include "zorvane/platform/Random.h"

namespace zorvane {
namespace {

TEST(Object_LateBound, RefusesAnUnknownMemberByNumberSourceAndName) {
    const auto object = MakeObject<CountedObject>();
    const std::string refusal =
        "raised 438 | CountedObject | The object has no such property or method: Speak";
    EXPECT_EQ(OutcomeOf([&] { return object->Call(u"Speak"); }), refusal);
    EXPECT_EQ(OutcomeOf([&] { return object->Get(u"Speak"); }), refusal);
    EXPECT_EQ(OutcomeOf([&] { object->Set(u"Speak", 1); }), refusal);
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
        first = second;
    }
    EXPECT_EQ(CountedObject::Alive(), 1);
    Object* const taken = first.Detach();
    EXPECT_EQ(CountedObject::Alive(), 1);
    taken->Release();
    EXPECT_EQ(CountedObject::Alive(), 0);
}

TEST(Ref, MadeToAnObjectThatBeginsEndsOrStandsOnTheStackFreesNothing) {
    class Clinging : public CountedObject {
      public:
        Clinging() { const Ref<Object> toMyself(this); }
        ~Clinging() override { const Ref<Object> toMyself(this); }
    };
    Ref<Object> counted = MakeObject<Clinging>();
    EXPECT_EQ(CountedObject::Alive(), 1);
    counted = nullptr;
    EXPECT_EQ(CountedObject::Alive(), 0);
    CountedObject object;
    counted = Ref<Object>(&object);
    EXPECT_FALSE(ViewAs<Clinging>(counted));
    EXPECT_TRUE(ViewAs<CountedObject>(counted));
    counted = nullptr;
    EXPECT_EQ(CountedObject::Alive(), 1);
    EXPECT_FALSE(ViewAs<Clinging>(counted));
}

TEST(Classes_Create, FindsNamesWithoutCaseAndRefusesOthers) {
    Classes classes;
    const Text name = ClassIdentifier(u"Sample");
    EXPECT_EQ(name, Text(u"ZorvaneDemoProject.Sample"));
    classes.Register(name, [] { return Ref<Object>(); });
    EXPECT_EQ(NumberRaisedBy([&] { return classes.Create(name); }), 429) << "it makes nothing";
    classes.Register(u"ZORVANEdemoPROJECT.sample", [] { return MakeObject<CountedObject>(); });
    EXPECT_TRUE(classes.Create(name));  // the later registration
    EXPECT_EQ(NumberRaisedBy([&] { return classes.Create(u"Sample"); }), 429);
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

#ifndef _WIN32
// Catches a part of the time that weighs wrongly, and the time of another place.
TEST(SecondsSinceMidnight, FollowTheLocalTimeOfDay) {
    for (const auto& [zone, ahead] : {std::pair("UTC0", 0), {"HERE-5:30", 19800}}) {
        ::setenv("TZ", zone, 1);
        ::tzset();
        const double apart = SecondsSinceMidnight() - static_cast<double>(std::time(nullptr));
        EXPECT_LT(std::abs(std::remainder(apart - ahead, 86400)), 2) << zone;
    }
    ::unsetenv("TZ");
    ::tzset();
}
#endif

// Test data and generated keys come from this sequence: it must never move.
TEST(Random_Next, GivesTheSameSequenceEverywhere) {
    Random random;
    for (const int k : {11602493, 11087610, 2506929, 7077214}) {
        EXPECT_EQ(random.Next(), static_cast<float>(k) * 0x1p-24f);
    }
}

}  // namespace
}  // namespace zorvane
