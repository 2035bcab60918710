#pragma once
// LateBound: a class's table of members that can be reached by name.

#include <cstddef>
#include <span>
#include <string_view>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Error.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

template <class T>
struct LateMember {
    std::u16string_view Name;
    std::size_t ArgumentCount;  // that it needs at least
    Variant (*Invoke)(T& object, Arguments arguments);
};

// Runs the member of that name, without regard to case. Raises 438 when there is none and 5 when
// arguments are missing.
template <class T>
Variant InvokeMember(T& object, std::span<const LateMember<T>> members, std::u16string_view name,
                     Arguments arguments) {
    for (const LateMember<T>& member : members) {
        if (!EqualTexts(member.Name, name, CompareMode::Text)) continue;
        if (arguments.size() < member.ArgumentCount) RaisePlatform(PlatformError::InvalidCall);
        return member.Invoke(object, arguments);
    }
    return object.Object::Get(name, arguments);  // raises: there is no such member
}

}  // namespace zorvane
