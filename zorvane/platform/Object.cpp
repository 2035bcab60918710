#include "zorvane/platform/Object.h"

#include "zorvane/platform/Error.h"
#include "zorvane/platform/StackLeft.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {
namespace {

[[noreturn]] void RaiseNoSuchMember(const Object& object, std::u16string_view member) {
    throw Error(PlatformError::NoSuchMember, object.TypeName(),
                Text("The object has no such property or method: ") + Text(member));
}

}  // namespace

Variant Object::Call(std::u16string_view member, Arguments) {
    RaiseNoSuchMember(*this, member);
}

Variant Object::Get(std::u16string_view member, Arguments) {
    RaiseNoSuchMember(*this, member);
}

void Object::Set(std::u16string_view member, const Variant&, Arguments) {
    RaiseNoSuchMember(*this, member);
}

void Object::Free() const noexcept {
    // This deep the system is not asked, and the order of ends is plainly that of references.
    constexpr int kShallow = 32;
    static thread_local int depth = 0;
    static thread_local const Object* waiting = nullptr;
    // Where the system tells nothing, nothing is left: an empty optional is less than any number.
    if (depth >= kShallow && StackLeft() < kStackReserve) {
        next_ = std::exchange(waiting, this);
        return;
    }
    const Object* dying = this;
    do {
        ++depth;
        delete dying;
        --depth;
        dying = depth == 0 && waiting ? std::exchange(waiting, waiting->next_) : nullptr;
    } while (dying);
}

}  // namespace zorvane
