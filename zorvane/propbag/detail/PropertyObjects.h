#pragma once
// PropertyObjects: how a bag stores objects as words and makes or restores objects out of words.

#include <optional>

#include "zorvane/platform/Object.h"
#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

class IZVPropertyBag;

// Objects may hold objects this deep, and as long as kStackReserve is left, so that neither a long
// chain nor a hostile file can use up the stack. Deeper ones raise 5.
inline constexpr int kObjectDepth = 500;

struct StoredObject {
    Variant Words;  // the Contents of the object's own bag; Empty for no object
    Text ObjName;
};

// The object viewed through its interface. Raises 13 when it does not have it.
[[nodiscard]] IZVPropertyBag& AsPersistable(Object& object);

// True for an object that a bag restores in place when it is given as a default.
[[nodiscard]] bool RestoresInPlace(const Variant& value);

// Lets the object write itself; a font is asked for its properties, no object is a mark. Raises 13
// without the interface, 5 for an object that is being written already, 6 for too many words that
// were written before (kRepeatedWords), and what the object raises.
[[nodiscard]] StoredObject StoreObject(const Ref<Object>& object);

// Lets the object read itself from the words. Raises as StoreObject does.
void RestoreObject(Object& object, const Variant& words);

// A new object of the class, restored. One that cannot be made raises 429, or is nothing for a
// tolerant reading, which notes it as the property `name`. Else raises as RestoreObject.
[[nodiscard]] std::optional<Variant> MakeStoredObject(const StoredObject& stored, const Text& name);

}  // namespace zorvane
