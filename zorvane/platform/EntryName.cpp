#include "zorvane/platform/EntryName.h"

#include <new>

#include "zorvane/platform/Units.h"
#include "zorvane/platform/detail/Utf8.h"

namespace zorvane {

// The block counts one reference that nobody gives back: its memory is not to be freed.
template <class Fill>
Text KeyInPlace::Make(std::size_t length, Fill&& fill) {
    if (length == 0 || length > kMostUnits) return Text::Make(length, fill);
    auto* const block = new (place_) Text::Block(2, static_cast<std::uint32_t>(length));
    fill(block->Units());
    return Text(block);
}

KeyInPlace::KeyInPlace(std::u16string_view units)
    : value_(Make(units.size(), [&](char16_t* to) { CopyUnits(to, units.data(), units.size()); })) {
}

KeyInPlace::KeyInPlace(std::string_view utf8)
    : value_(IsAscii(utf8) ? Make(utf8.size(), [&](char16_t* to) { WidenAscii(utf8, to); })
                           : Make(UnitsInUtf8(utf8), [&](char16_t* to) { DecodeUtf8(utf8, to); })) {
}

}  // namespace zorvane
