#include "zorvane/platform/Font.h"

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Error.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {
namespace {

struct Property {
    std::u16string_view Name;
    Variant (*Get)(const FontValue& font);
    void (*Set)(FontValue& font, const Variant& value);
};

constexpr Property kProperties[] = {
    {u"Name", [](const FontValue& font) -> Variant { return font.Name; },
     [](FontValue& font, const Variant& value) { font.Name = value.ToText(); }},
    {u"Size", [](const FontValue& font) -> Variant { return font.Size; },
     [](FontValue& font, const Variant& value) { font.Size = value.ToDouble(); }},
    {u"Weight", [](const FontValue& font) -> Variant { return font.Weight; },
     [](FontValue& font, const Variant& value) { font.Weight = value.ToInteger(); }},
    {u"Bold", [](const FontValue& font) -> Variant { return font.Bold; },
     [](FontValue& font, const Variant& value) { font.Bold = value.ToBoolean(); }},
    {u"Charset", [](const FontValue& font) -> Variant { return font.Charset; },
     [](FontValue& font, const Variant& value) { font.Charset = value.ToInteger(); }},
    {u"Italic", [](const FontValue& font) -> Variant { return font.Italic; },
     [](FontValue& font, const Variant& value) { font.Italic = value.ToBoolean(); }},
    {u"Strikethrough", [](const FontValue& font) -> Variant { return font.Strikethrough; },
     [](FontValue& font, const Variant& value) { font.Strikethrough = value.ToBoolean(); }},
    {u"Underline", [](const FontValue& font) -> Variant { return font.Underline; },
     [](FontValue& font, const Variant& value) { font.Underline = value.ToBoolean(); }},
};

const Property& PropertyNamed(std::u16string_view name) {
    for (const Property& property : kProperties) {
        if (EqualTexts(property.Name, name, CompareMode::Text)) return property;
    }
    RaisePlatform(PlatformError::NoSuchMember);
}

}  // namespace

Variant Font::Get(std::u16string_view member, Arguments) {
    return PropertyNamed(member).Get(Value);
}

void Font::Set(std::u16string_view member, const Variant& value, Arguments) {
    PropertyNamed(member).Set(Value, value);
}

}  // namespace zorvane
