#pragma once
// MadeOnce: what const members of an object work out when somebody asks, for all who ask later.

#include <atomic>
#include <memory>
#include <utility>

namespace zorvane {

// Get may be called by many threads at once, the other members by one alone.
template <class T>
class MadeOnce {
  public:
    MadeOnce() = default;
    MadeOnce(const MadeOnce&) = delete;
    MadeOnce& operator=(const MadeOnce&) = delete;
    ~MadeOnce() { Drop(); }

    // What was made, or else make() makes now; of those who make it at the same time, one is heard.
    template <class Make>
    [[nodiscard]] const T& Get(Make&& make) const {
        const T* made = made_.load(std::memory_order_acquire);
        if (made) return *made;
        auto fresh = std::make_unique<const T>(make());
        return made_.compare_exchange_strong(made, fresh.get(), std::memory_order_acq_rel)
                   ? *fresh.release()
                   : *made;
    }
    // For when that from which it was made changes.
    void Drop() noexcept {
        if (made_.load(std::memory_order_relaxed)) [[unlikely]]
            delete made_.exchange(nullptr, std::memory_order_relaxed);
    }
    friend void swap(MadeOnce& left, MadeOnce& right) noexcept {
        left.made_ = right.made_.exchange(left.made_);
    }

  private:
    mutable std::atomic<const T*> made_ = nullptr;
};

}  // namespace zorvane
