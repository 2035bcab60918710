#include "zorvane/runtime/ErrorTable.h"

namespace zorvane {

std::u16string_view MessageOf(Failure failure) noexcept {
    switch (failure) {
        case Failure::NoItem:
            return u"There is no item with the vKeyIndex specified.";
        case Failure::KeyPresent:
            return u"There is already an item with this vKeyIndex.";
        case Failure::BadPosition:
            return u"Bad Before/After Value in call to Add";
        case Failure::Unknown:
            break;
    }
    return u"Unknown error";
}

void RaiseFailure(Failure failure, const Text& className, std::u16string_view member,
                  std::u16string_view label, const Variant& argument) {
    Text shown;
    IgnoringErrors([&] { shown = argument.ToText(); });
    throw Error(kObjectErrorBase + static_cast<std::int32_t>(failure), className + Text(member),
                Text(MessageOf(failure)) + Text(label) + shown);
}

}  // namespace zorvane
