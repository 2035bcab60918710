#pragma once
// UTF-8 to UTF-16 and back. Malformed bytes and lone surrogates become U+FFFD, one each.
//
// Most texts are plain ASCII, so that is asked first: eight bytes at a time, and for the usual
// lengths in the steps of Units.h.

#include <cstddef>
#include <string>
#include <string_view>

namespace zorvane {

[[nodiscard]] bool IsAscii(std::string_view bytes) noexcept;
// Writes ASCII as units, as many as there are bytes.
void WidenAscii(std::string_view ascii, char16_t* units) noexcept;

// How many units DecodeUtf8 writes: never more than there are bytes. O(n).
[[nodiscard]] std::size_t UnitsInUtf8(std::string_view bytes) noexcept;
void DecodeUtf8(std::string_view bytes, char16_t* units) noexcept;
// One allocation for ASCII. O(n).
[[nodiscard]] std::string EncodeUtf8(std::u16string_view units);

}  // namespace zorvane
