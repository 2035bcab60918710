#include "zorvane/platform/Object.h"

#include "zorvane/platform/Error.h"
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
    delete this;
}

}  // namespace zorvane
