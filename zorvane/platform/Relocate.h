#pragma once
// The one place that moves live values as raw bytes.
//
// Text, Variant, Ref and records made of them hold no pointer into themselves and nobody points at
// them, so their bytes may travel: the source is dead storage afterwards and must not be destroyed.
// The standard library's texts do point into themselves. A type says that it is relocatable by a
// member type `Relocatable`; whatever is trivially copyable is so anyway.

#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

namespace zorvane {

template <class T>
inline constexpr bool kRelocatable = std::is_trivially_copyable_v<T> || requires {
    typename T::Relocatable;
};

// Ends the life of `count` values at `from` and begins it at `to`; the ranges may overlap.
template <class T>
void Relocate(T* to, const T* from, std::size_t count) noexcept {
    if (count != 0)
        std::memmove(static_cast<void*>(to), static_cast<const void*>(from), count * sizeof(T));
}

// The same for any type, to a range apart.
template <class T>
void MoveAll(T* to, T* from, std::size_t count) noexcept {
    if constexpr (kRelocatable<T>) {
        Relocate(to, from, count);
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            std::construct_at(to + i, std::move(from[i]));
            std::destroy_at(from + i);
        }
    }
}

// Relocates one value to another place; copied without a call.
template <class T>
void RelocateOne(T* to, const T* from) noexcept {
    std::memcpy(static_cast<void*>(to), static_cast<const void*>(from), sizeof(T));
}

// All-zero bytes are the empty state of every relocatable type: no value is destroyed or released.
template <class T>
void ZeroFill(T* at, std::size_t count) noexcept {
    if (count != 0) std::memset(static_cast<void*>(at), 0, count * sizeof(T));
}

// Moves a value to one that is empty: nothing that was there has to be let go.
template <class T>
void MoveToEmpty(T& to, T& from) noexcept {
    RelocateOne(&to, &from);
    ZeroFill(&from, 1);
}

// A value moved out of where it lay; it ends with this one.
template <class T>
class Taken {
  public:
    explicit Taken(const T& from) noexcept { RelocateOne(&value_, &from); }
    Taken(const Taken&) = delete;
    Taken& operator=(const Taken&) = delete;
    ~Taken() { std::destroy_at(&value_); }
    [[nodiscard]] T* operator->() noexcept { return &value_; }

  private:
    union {
        T value_;
    };
};

}  // namespace zorvane
