#include "zorvane/propbag/detail/PropertyObjects.h"

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_set>
#include <utility>

#include "zorvane/platform/Classes.h"
#include "zorvane/platform/Error.h"
#include "zorvane/platform/Font.h"
#include "zorvane/platform/StackLeft.h"
#include "zorvane/propbag/IZVPropertyBag.h"
#include "zorvane/propbag/TolerantReading.h"
#include "zorvane/propbag/ZVPropertyBag.h"
#include "zorvane/propbag/detail/StreamEncoder.h"

namespace zorvane {
namespace {

// One object that is being written or read right now; the innermost one is at the head.
class Nesting {
  public:
    explicit Nesting(const Object* written) : written_(written), outer_(innermost) {
        if (outer_) depth_ = outer_->depth_ + 1;
        top_ = outer_ && outer_->top_ ? outer_->top_ : written_ ? this : nullptr;
        if (depth_ > kObjectDepth || StackLeft().value_or(kStackReserve) < kStackReserve) {
            Refuse(u"Objects are nested too deep");
        }
        innermost = this;
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { innermost = outer_; }

    // Raises for an object that contains itself, directly or through others.
    static void RefuseCycle(const Object& object) {
        for (const Nesting* at = innermost; at; at = at->outer_) {
            if (at->written_ == &object) Refuse(u"The object is being written already");
        }
    }

    // Notes the words of the object. One that was written before, for another that holds it too,
    // has its words again; raises 6 when these are too many.
    void NoteWords(std::int32_t words) const {
        if (top_ == this) return;  // nobody holds the outermost
        if (!top_->inner_) top_->inner_ = std::make_unique<Inner>();
        if (top_->inner_->Written.insert(written_).second) return;
        top_->inner_->Repeated += static_cast<std::uint64_t>(words);
        RequireFewRepeated(top_->inner_->Repeated);
    }

  private:
    // What was written within the outermost object. (An address may stand for several, one after
    // the other, that an object makes for the time of its own writing.)
    struct Inner {
        std::unordered_set<const Object*> Written;
        std::uint64_t Repeated = 0;  // words
    };

    [[noreturn]] static void Refuse(const char16_t* why) {
        throw Error(PlatformError::InvalidCall, ZVPropertyBag::ClassName(), why);
    }

    static thread_local const Nesting* innermost;

    const Object* written_;  // null while reading
    const Nesting* outer_;
    const Nesting* top_;  // the outermost that is written, if any is
    mutable std::unique_ptr<Inner> inner_;
    int depth_ = 1;
};

thread_local const Nesting* Nesting::innermost = nullptr;

struct FontProperty {
    Text Name;
    Variant Default;
};

// In the order of the stream's makers, which a sorted bag does not keep.
const std::array<FontProperty, 8>& FontProperties() {
    static const std::array<FontProperty, 8> properties{{
        {u"Name", u"Roman"},
        {u"Size", 8.25},
        // Kept: a weight's default is False, so 400 is always stored and 0 is left out.
        {u"Weight", false},
        {u"Bold", false},
        {u"Charset", std::int16_t{0}},
        {u"Italic", false},
        {u"Strikethrough", false},
        {u"Underline", false},
    }};
    return properties;
}

Variant StoreFont(Object& font) {
    ZVPropertyBag bag;
    for (const FontProperty& property : FontProperties()) {
        bag.WriteProperty(property.Name, font.Get(property.Name), {.Default = property.Default});
    }
    return bag.Contents();
}

// A property that is missing, or whose value no font takes, gets its default.
Variant MakeFont(const Variant& words) {
    ZVPropertyBag bag;
    bag.SetContents(words);
    const Ref<Font> font = MakeObject<Font>();
    for (const FontProperty& property : FontProperties()) {
        const bool taken = IgnoringErrors([&] {
            font->Set(property.Name,
                      bag.ReadProperty(property.Name, {.Default = property.Default}));
        });
        if (!taken) font->Set(property.Name, property.Default);
    }
    return font;
}

}  // namespace

IZVPropertyBag& AsPersistable(Object& object) {
    auto* persistable = dynamic_cast<IZVPropertyBag*>(&object);
    if (!persistable) {
        throw Error(PlatformError::TypeMismatch, ZVPropertyBag::ClassName(),
                    Text(u"The object cannot be stored in a property bag: ") + object.TypeName());
    }
    return *persistable;
}

bool RestoresInPlace(const Variant& value) {
    if (!value.IsObject() || !value.AsObject()) return false;
    const Text type = value.AsObject()->TypeName();
    return type != Text(u"Font") && type != Text(u"Picture");
}

StoredObject StoreObject(const Ref<Object>& object) {
    if (!object) return {{}, kNoObjectMark};
    if (object->TypeName() == Text(kFontMark)) return {StoreFont(*object), kFontMark};
    IZVPropertyBag& persistable = AsPersistable(*object);
    Nesting::RefuseCycle(*object);
    const Nesting nesting(object.Get());
    const Ref<ZVPropertyBag> bag = MakeObject<ZVPropertyBag>();
    persistable.WriteProperties(*bag);
    Array words = bag->Contents();
    nesting.NoteWords(words.Count());
    return {std::move(words), persistable.ClassName()};
}

void RestoreObject(Object& object, const Variant& words) {
    const Nesting nesting(nullptr);
    const Ref<ZVPropertyBag> bag = MakeObject<ZVPropertyBag>();
    bag->SetContents(words);
    AsPersistable(object).ReadProperties(*bag);
}

std::optional<Variant> MakeStoredObject(const StoredObject& stored, const Text& name) {
    if (stored.ObjName == Text(kFontMark)) return MakeFont(stored.Words);
    Ref<Object> made;
    try {
        made = CreatableClasses().Create(stored.ObjName);
    } catch (const Error& error) {
        const bool unknown =
            error.Number == static_cast<std::int32_t>(PlatformError::CannotCreateObject);
        if (unknown && TolerantReading::Skip(name, stored.ObjName)) return std::nullopt;
        throw;
    }
    RestoreObject(*made, stored.Words);
    return made;
}

}  // namespace zorvane
