// Objects that have nothing in common in several threads at once, and one that many only read. A
// thread sanitizer sees most in these; without it they count.

#include <atomic>
#include <thread>

#include "tests/unit/zorvane/Containers.h"
#include "zorvane/platform/Font.h"
#include "zorvane/platform/Random.h"

namespace zorvane {
namespace {

// Runs work(0) to work(2), each in a thread of its own, from one moment on.
template <class Work>
void InThreads(Work&& work) {
    constexpr int kThreads = 3;
    std::atomic<int> ready = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            for (++ready; ready < kThreads;) std::this_thread::yield();
            work(i);
        });
    }
    for (std::thread& thread : threads) thread.join();
}

// Catches a count that two threads can take a step of at once: of texts alone and in one slab,
// objects and arrays.
TEST(Threads, CopiesOfOneValueAreCountedWhereverTheyAre) {
    {
        ZVPropertyBag written;
        for (int i = 0; i < 20; ++i) written.WriteProperty(KeyOf(i), u"text");
        ZVPropertyBag bag;
        bag.SetContents(written.Contents());
        const Variant object = Ref<Object>(MakeObject<CountedObject>());
        const std::array<Variant, 3> values = {object, Array(VarType::Long, 0, 3), Text(u"alone")};
        std::vector<Variant> ofStream(bag.begin(), bag.end());
        bag.Clear();
        InThreads([&, values](int i) {
            for (int round = 0; round < 1'000'000; ++round) auto copies = values;
            // The texts of one stream go their own ways.
            for (std::size_t at = static_cast<std::size_t>(i); at < ofStream.size(); at += 3) {
                ofStream[at] = Variant();
            }
        });
        EXPECT_EQ(CountedObject::Alive(), 1);
    }
    EXPECT_EQ(CountedObject::Alive(), 0);
}

// Catches what classes share behind the back of whoever uses them: the table of a font's
// properties, the program's random numbers.
TEST(Threads, ObjectsThatHaveNothingInCommonDoNotMeet) {
    Random same = ProgramRandom();
    constexpr int kDraws = 100'000;
    InThreads([](int) {
        for (int round = 0; round < 20'000; ++round) {
            ZVPropertyBag bag;
            bag.WriteProperty(u"Font", Ref<Object>(MakeObject<Font>(FontValue{.Name = u"Sans"})));
            ZVCollectionEx collection;
            collection.SetSorted(false);
            collection.Add(bag.Contents(), {});
        }
        for (int draw = 20'000; draw < kDraws; ++draw) static_cast<void>(ProgramRandom().Next());
    });
    for (int draw = 0; draw < 3 * kDraws; ++draw) static_cast<void>(same.Next());
    EXPECT_EQ(ProgramRandom().Next(), same.Next());
}

// Catches a look-up that leaves something behind for the next one: the place that was found last,
// a count of blocks, a seat, a text's hash.
TEST(Threads, ManyMayReadOneContainer) {
    constexpr int kCount = 2000;
    for (int round = 0; round < 20; ++round) {
        Collection plain;
        CollectionEx simple;
        ZVCollectionEx hashed;
        hashed.SetSorted(false);
        KeyListEX list;
        // From the second on in front of the last: an order in blocks.
        for (int i = kCount; i > 0; --i) {
            const std::int32_t before = i == kCount ? 1 : 2;
            plain.Add(i, {.Key = KeyOf(i)});
            simple.Add(i, KeyOf(i),
                       {.After = i == kCount ? std::nullopt : std::optional<Variant>(1)});
            hashed.Add(i, KeyOf(i), {.Position = before});
            list.Add(i, KeyOf(i));
        }
        const CollectionEx& simpleRead = simple;
        const ZVCollectionEx& hashedRead = hashed;
        const Text key = KeyOf(7);
        std::atomic<int> wrong = 0;
        InThreads([&](int thread) {
            const auto check = [&](bool right) { wrong += right ? 0 : 1; };
            for (int at = 2 + thread; at <= kCount; at += 7) {
                const int value = at - 1;
                const Text own = KeyOf(value);
                check(simpleRead.FindItem(at)->ToLong() == value);
                check(simpleRead.Index(own) == at);
                check(hashedRead.FindItem(at)->ToLong() == value);
                std::int32_t position = 0;
                check(hashedRead.Exists(own, position) && position == at);
                check(hashedRead.CopyItemValue(at, 2).ToLong() > 0);
                check(hashedRead.Key(at) == own);
                check(std::as_const(plain).Item(own).ToLong() == value);
                check(std::as_const(list).CopyItemValue(at, 4).IsText());
                check(simpleRead.Exists(key));
            }
        });
        ASSERT_EQ(wrong, 0);
    }
}

}  // namespace
}  // namespace zorvane
