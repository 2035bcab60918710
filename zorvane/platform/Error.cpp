#include "zorvane/platform/Error.h"

namespace zorvane {
namespace {

const char* DefaultDescription(std::int32_t number) {
    switch (static_cast<PlatformError>(number)) {
        case PlatformError::InvalidCall:
            return "Invalid procedure call or argument";
        case PlatformError::Overflow:
            return "Overflow";
        case PlatformError::OutOfRange:
            return "Position or bound out of range";
        case PlatformError::TypeMismatch:
            return "Type mismatch";
        case PlatformError::ObjectNotSet:
            return "There is no object here";
        case PlatformError::InvalidValue:
            return "Invalid property value";
        case PlatformError::CannotCreateObject:
            return "No class of this name can be created";
        case PlatformError::NoSuchMember:
            return "The object has no such property or method";
        case PlatformError::DuplicateKey:
            return "The key is already in use";
    }
    return "Application-defined error";
}

}  // namespace

Error::Error(std::int32_t number, Text source, Text description)
    : Number(number),
      Source(std::move(source)),
      Description(description.Empty() ? Text(DefaultDescription(number)) : std::move(description)),
      what_(Description.ToUtf8()) {}

void RaisePlatform(PlatformError number) {
    throw Error(number);
}

}  // namespace zorvane
