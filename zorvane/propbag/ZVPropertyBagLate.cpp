// The late-bound members of ZVPropertyBag.

#include <array>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Error.h"
#include "zorvane/propbag/ZVPropertyBag.h"

namespace zorvane {
namespace {

// How a caller by name leaves out an argument in front of one that it gives.
constexpr std::int32_t kOmitted = -2147352572;

bool IsGiven(Arguments arguments, std::size_t at) {
    return at < arguments.size() &&
           !(arguments[at].Type() == VarType::Error && arguments[at].AsError() == kOmitted);
}

std::optional<Variant> Optional(Arguments arguments, std::size_t at) {
    if (IsGiven(arguments, at)) return arguments[at];
    return std::nullopt;
}

const Variant& Required(Arguments arguments, std::size_t at) {
    if (!IsGiven(arguments, at)) RaisePlatform(PlatformError::InvalidCall);
    return arguments[at];
}

std::int32_t LongOr0(Arguments arguments, std::size_t at) {
    return IsGiven(arguments, at) ? arguments[at].ToLong() : 0;
}

bool Flag(Arguments arguments, std::size_t at) {
    return IsGiven(arguments, at) && arguments[at].ToBoolean();
}

PropertyOptions OptionsFrom(Arguments arguments, std::size_t at) {
    return {.Default = Optional(arguments, at), .Index = LongOr0(arguments, at + 1)};
}

using Member = Variant (*)(ZVPropertyBag& bag, Arguments arguments);

struct NamedMember {
    std::u16string_view Name;
    Member Run;
};

constexpr NamedMember kMembers[] = {
    {u"Add",
     [](ZVPropertyBag& bag, Arguments given) {
         return bag.Add(Required(given, 0), IsGiven(given, 1) ? given[1].ToText() : Text(),
                        {.Before = Optional(given, 2),
                         .After = Optional(given, 3),
                         .Position = LongOr0(given, 4),
                         .ReturnItem = Flag(given, 5)});
     }},
    {u"Changed", [](ZVPropertyBag& bag, Arguments) -> Variant { return bag.Changed(); }},
    {u"ClassName", [](ZVPropertyBag& bag, Arguments) -> Variant { return bag.ClassName(); }},
    {u"Clear",
     [](ZVPropertyBag& bag, Arguments) {
         bag.Clear();
         return Variant();
     }},
    {u"Contents", [](ZVPropertyBag& bag, Arguments) -> Variant { return bag.Contents(); }},
    {u"CopyFrom",
     [](ZVPropertyBag& bag, Arguments given) {
         const auto* source = dynamic_cast<ZVPropertyBag*>(&Required(given, 0).TheObject());
         if (!source) RaisePlatform(PlatformError::TypeMismatch);
         bag.CopyFrom(*source, Flag(given, 1));
         return Variant();
     }},
    {u"CopyItemValue",
     [](ZVPropertyBag& bag, Arguments given) {
         Variant value;
         bag.CopyItemValue(Required(given, 0), value);
         return value;
     }},
    {u"Count", [](ZVPropertyBag& bag, Arguments) -> Variant { return bag.Count(); }},
    {u"Granularity", [](ZVPropertyBag& bag, Arguments) -> Variant { return bag.Granularity(); }},
    {u"Item", [](ZVPropertyBag& bag, Arguments given) { return bag.Item(Required(given, 0)); }},
    {u"ItemFn", [](ZVPropertyBag& bag, Arguments given) { return bag.ItemFn(Required(given, 0)); }},
    {u"Key",
     [](ZVPropertyBag& bag, Arguments given) -> Variant {
         return bag.Key(Required(given, 0).ToLong());
     }},
    {u"ObjName",
     [](ZVPropertyBag& bag, Arguments given) -> Variant {
         return bag.ObjName(Required(given, 0));
     }},
    {u"PropIsObject",
     [](ZVPropertyBag& bag, Arguments given) -> Variant {
         return bag.PropIsObject(Required(given, 0));
     }},
    {u"ReadProperty",
     [](ZVPropertyBag& bag, Arguments given) {
         return bag.ReadProperty(Required(given, 0).ToText(), OptionsFrom(given, 1));
     }},
    {u"Remove",
     [](ZVPropertyBag& bag, Arguments given) {
         bag.Remove(Required(given, 0));
         return Variant();
     }},
    {u"Sorted", [](ZVPropertyBag& bag, Arguments) -> Variant { return bag.Sorted(); }},
    {u"WriteProperty",
     [](ZVPropertyBag& bag, Arguments given) {
         bag.WriteProperty(Required(given, 0).ToText(), Required(given, 1), OptionsFrom(given, 2));
         return Variant();
     }},
};

}  // namespace

Variant ZVPropertyBag::Call(std::u16string_view member, Arguments arguments) {
    for (const NamedMember& known : kMembers) {
        if (EqualTexts(known.Name, member, CompareMode::Text)) return known.Run(*this, arguments);
    }
    RaisePlatform(PlatformError::NoSuchMember);
}

Variant ZVPropertyBag::Get(std::u16string_view member, Arguments arguments) {
    return Call(member, arguments);
}

void ZVPropertyBag::Set(std::u16string_view member, const Variant& value, Arguments) {
    const auto names = [&](std::u16string_view name) {
        return EqualTexts(name, member, CompareMode::Text);
    };
    if (names(u"Changed")) return SetChanged(value.ToBoolean());
    if (names(u"Contents")) return SetContents(value);
    if (names(u"Granularity")) return SetGranularity(value.ToLong());
    RaisePlatform(PlatformError::NoSuchMember);
}

}  // namespace zorvane
