#pragma once
// SharedCount: how many hold something in common, in whatever threads they are; and Remembered,
// what const members of an object keep for one another.

#include <atomic>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace zorvane {

// Whether the process has, or may have, more than one thread. Where the system does not tell, it
// may.
[[nodiscard]] inline bool MayHaveThreads() noexcept {
#if __has_include(<sys/single_threaded.h>)
    return __libc_single_threaded == 0;
#else
    return true;
#endif
}

// Atomic where there may be other threads; else plain, as every copy of a text takes such a step.
template <class Integer>
class SharedCount {
  public:
    explicit constexpr SharedCount(Integer count) noexcept : count_(count) {}

    // So many more; gives the sum. Whoever counts itself for a thing that is shared already holds
    // it, or is its maker.
    Integer Add(Integer more = 1) noexcept {
        if (MayHaveThreads()) return __atomic_add_fetch(&count_, more, __ATOMIC_RELAXED);
        return count_ = static_cast<Integer>(count_ + more);
    }
    // So many fewer; gives what is left. Whoever is told that nobody is left sees all that the
    // others did before they let go.
    Integer Take(Integer fewer = 1) noexcept {
        if (MayHaveThreads()) return __atomic_sub_fetch(&count_, fewer, __ATOMIC_ACQ_REL);
        return count_ = static_cast<Integer>(count_ - fewer);
    }
    // Only the answer that the asking holder is the last can be relied on.
    [[nodiscard]] Integer Now() const noexcept {
        return __atomic_load_n(&count_, __ATOMIC_ACQUIRE);
    }

  private:
    Integer count_;
};

// A value that const members may replace, each by one that serves the others as well. Whoever gets
// it sees what was written before it was set. Copied and assigned like a plain one.
template <class T>
class Remembered {
  public:
    constexpr Remembered(T value = {}) noexcept : value_(value) {}
    constexpr Remembered(const Remembered& other) noexcept : value_(other.Get()) {}
    Remembered& operator=(const Remembered& other) noexcept {
        Set(other.Get());
        return *this;
    }

    [[nodiscard]] T Get() const noexcept { return value_.load(std::memory_order_acquire); }
    void Set(T value) const noexcept { value_.store(value, std::memory_order_release); }

  private:
    static_assert(std::atomic<T>::is_always_lock_free);
    mutable std::atomic<T> value_;
};

}  // namespace zorvane
