#pragma once
// Slabs: room for many objects of one plain kind, allocated many at a time.
//
// Objects that lie together share pages, large ones from some size on: whoever goes from one to the
// next at random would otherwise wait for the page more than for the object. What is given back is
// taken again first; the memory itself goes with the slabs.

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "zorvane/platform/LargeBlock.h"

namespace zorvane {

template <class T>
class Slabs {
    static_assert(std::is_trivially_destructible_v<T>);

  public:
    Slabs() = default;
    Slabs(Slabs&& other) noexcept { swap(*this, other); }
    Slabs& operator=(Slabs&& other) noexcept {
        Slabs taken(std::move(other));
        swap(*this, taken);
        return *this;
    }
    ~Slabs() {
        for (const Slab& slab : slabs_) FreeBlock(slab.places, slab.size * sizeof(Place));
    }

    // Sees to it that Take can be called `count` times. May throw, then nothing changed.
    void Prepare(std::size_t count = 1);
    // A new object, its members as T's own initialisers say. Only after Prepare.
    [[nodiscard]] T* Take() noexcept {
        --ready_;
        Place* const place = free_ ? std::exchange(free_, free_->next) : fresh_++;
        return new (static_cast<void*>(place)) T;
    }
    // Ends an object that Take gave.
    void Give(T* object) noexcept {
        free_ = new (static_cast<void*>(object)) Place{free_};
        ++ready_;
    }

    friend void swap(Slabs& left, Slabs& right) noexcept {
        left.slabs_.swap(right.slabs_);
        std::swap(left.free_, right.free_);
        std::swap(left.fresh_, right.fresh_);
        std::swap(left.ready_, right.ready_);
        std::swap(left.places_, right.places_);
    }

  private:
    union Place {
        Place* next;  // free places are a list
        alignas(T) std::byte object[sizeof(T)];
    };
    struct Slab {
        Place* places;
        std::size_t size;
    };

    std::vector<Slab> slabs_;
    Place* free_ = nullptr;
    Place* fresh_ = nullptr;  // of the last slab: the first place never taken
    std::size_t ready_ = 0;   // places that are free or fresh
    std::size_t places_ = 0;  // in all slabs
};

template <class T>
void Slabs<T>::Prepare(std::size_t count) {
    // As many again as there are, until a large block is worth it.
    constexpr std::size_t kWorthwhile = kLargeBlock / 4 / sizeof(Place);
    constexpr std::size_t kLarge = kLargeBlock / sizeof(Place) + 1;
    if (ready_ >= count) return;
    const std::size_t wanted = places_ < kWorthwhile ? places_ : kLarge;
    const std::size_t size = wanted > count ? wanted : count;
    slabs_.reserve(slabs_.size() + 1);
    auto* const places = static_cast<Place*>(AllocateBlock(size * sizeof(Place)));
    // Whatever the last slab has left joins the free places.
    if (!slabs_.empty()) {
        Place* const end = slabs_.back().places + slabs_.back().size;
        for (; fresh_ != end; ++fresh_) free_ = new (static_cast<void*>(fresh_)) Place{free_};
    }
    slabs_.push_back({places, size});
    fresh_ = places;
    ready_ += size;
    places_ += size;
}

}  // namespace zorvane
