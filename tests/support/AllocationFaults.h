#pragma once
// Every k-th allocation fails: runs an operation again and again, each time with the next of its
// allocations failing, until it gets through. Link AllocationFaults.cpp, which replaces operator
// new.

#include <cstdint>
#include <new>

namespace zorvane {

// The allocation with this number from now on (1 is the next) throws std::bad_alloc; 0: none does.
void FailAllocation(std::int64_t number) noexcept;
// Whether the failure asked for last has happened.
[[nodiscard]] bool AllocationHasFailed() noexcept;
// Allocations since the start of the program.
[[nodiscard]] std::int64_t AllocationCount() noexcept;
// Bytes allocated since the start of the program, freed ones included.
[[nodiscard]] std::int64_t AllocatedBytes() noexcept;

// make() gives what operate(subject) works on; check(subject, failed) looks at it after each try.
// Gives the number of allocations that were made to fail.
template <class Make, class Operate, class Check>
int WithEveryAllocationFailing(Make&& make, Operate&& operate, Check&& check) {
    for (int number = 1;; ++number) {
        auto subject = make();
        bool failed = false;
        FailAllocation(number);
        try {
            operate(subject);
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        const bool happened = AllocationHasFailed();
        FailAllocation(0);
        check(subject, failed);
        if (!happened) return number - 1;
    }
}

}  // namespace zorvane
