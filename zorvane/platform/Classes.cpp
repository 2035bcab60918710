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
    const auto found = makers_.find(className);
    if (found == makers_.end()) {
        throw Error(PlatformError::CannotCreateObject, {},
                    Text("No class of this name can be created: ") + className);
    }
    return found->second();
}

Classes& CreatableClasses() {
    static Classes classes;
    return classes;
}

}  // namespace zorvane
