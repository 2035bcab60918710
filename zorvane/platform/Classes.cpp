#include "zorvane/platform/Classes.h"

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Error.h"

namespace zorvane {

Text ClassIdentifier(const Text& typeName) {
    return Text(kProjectName) + u"." + typeName;
}

bool Classes::Before::operator()(const Text& left, const Text& right) const noexcept {
    return CompareTexts(left, right, CompareMode::Text) < 0;
}

void Classes::Register(const Text& className, Maker maker) {
    makers_.insert_or_assign(className, std::move(maker));
}

Ref<Object> Classes::Create(const Text& className) const {
    const auto refuse = [&](const char* why) {
        throw Error(PlatformError::CannotCreateObject, {}, Text(why) + className);
    };
    const auto found = makers_.find(className);
    if (found == makers_.end()) refuse("No class of this name can be created: ");
    Ref<Object> made = found->second ? found->second() : nullptr;
    if (!made) refuse("The maker of this class made nothing: ");
    return made;
}

Classes& CreatableClasses() {
    static Classes classes;
    return classes;
}

}  // namespace zorvane
