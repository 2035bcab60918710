#pragma once
/// \class zorvane::Object
/// What a tagged value can refer to: counted, with members that can be reached by name.
///
/// An object made by MakeObject lives until the last Ref lets go. An object that stands on the
/// stack or inside another is never freed by a Ref; whoever owns it outlives every Ref to it.
/// Objects may hold objects however deep: one whose end would come with the stack nearly used up
/// waits until the outermost end on its thread is through.
///
/// Threads: different ones may be used at once, and const members of one at once; so may Refs.

#include <cstdint>
#include <functional>
#include <span>
#include <type_traits>
#include <utility>

#include "zorvane/platform/Build.h"
#include "zorvane/platform/SharedCount.h"
#include "zorvane/platform/Text.h"

namespace zorvane {

class Variant;
using Arguments = std::span<const Variant>;

class ZORVANE_EXPORT Object {
  public:
    Object() noexcept = default;
    /// The count belongs to the object, not to its value.
    Object(const Object&) noexcept {}
    Object& operator=(const Object&) noexcept { return *this; }
    virtual ~Object() = default;

    /// The class's plain name, such as "KeyListEX" or "Font".
    [[nodiscard]] virtual Text TypeName() const = 0;

    /// Late-bound use: members by name, without regard to case. The defaults raise 438.
    virtual Variant Call(std::u16string_view member, Arguments arguments = {});
    virtual Variant Get(std::u16string_view member, Arguments arguments = {});
    virtual void Set(std::u16string_view member, const Variant& value, Arguments arguments = {});

    void Retain() const noexcept { references_.Add(); }
    void Release() const noexcept {
        if (references_.Take() != 0 || !counted_) return;
        counted_ = false;  // a Ref that the destructor makes to itself must not free it again
        Free();
    }

  private:
    template <class T, class... Args>
    friend auto MakeObject(Args&&... args);

    void Free() const noexcept;  // out of line: a compiler that sees both cases takes them for one

    mutable SharedCount<std::uint32_t> references_{0};
    mutable bool counted_ = false;          // made by MakeObject: freed with its last reference
    mutable const Object* next_ = nullptr;  // among those that wait for their end
};

/// A counted reference; null is "no object".
template <class T>
class Ref {
  public:
    constexpr Ref() noexcept = default;
    constexpr Ref(std::nullptr_t) noexcept {}
    explicit Ref(T* object) noexcept : object_(object) {
        if (object_) object_->Retain();
    }
    Ref(const Ref& other) noexcept : Ref(other.object_) {}
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    template <class U>
    requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other)
    noexcept : Ref(other.Get()) {}
    Ref& operator=(Ref other) noexcept {
        swap(*this, other);
        return *this;
    }
    ~Ref() {
        if (object_) object_->Release();
    }

    [[nodiscard]] T* Get() const noexcept { return object_; }
    /// Lets go without releasing: the caller takes over this reference.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(object_, nullptr); }
    T& operator*() const noexcept { return *object_; }
    T* operator->() const noexcept { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    friend bool operator==(const Ref& left, const Ref& right) noexcept {
        return left.object_ == right.object_;
    }
    friend void swap(Ref& left, Ref& right) noexcept { std::swap(left.object_, right.object_); }

  private:
    T* object_ = nullptr;
};

template <class T, class... Args>
auto MakeObject(Args&&... args) {
    static_assert(std::is_base_of_v<Object, T>);
    T* object = new T(std::forward<Args>(args)...);
    static_cast<Object*>(object)->counted_ = true;
    return Ref<T>(object);
}

/// The object viewed as a T, or null when it is none.
template <class T>
Ref<T> ViewAs(const Ref<Object>& object) noexcept {
    return Ref<T>(dynamic_cast<T*>(object.Get()));
}

}  // namespace zorvane
