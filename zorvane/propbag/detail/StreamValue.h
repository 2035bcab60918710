#pragma once
// Single encoded values in a stream that grows, for whoever assembles or takes apart one by hand; a
// bag itself computes the whole size first (BagStream.h).

#include <cstdint>

#include "zorvane/platform/Array.h"
#include "zorvane/platform/Variant.h"

namespace zorvane::modZorvane {

// Writes the encoded value at word `Position` of an array of 16-bit integers from 0 and moves
// `Position` behind it. `Capacity` is the stream's highest index. Where a write would come close to
// it, it grows by 32768 words and, for texts and numbers in arrays, by what they take; new words
// are 0. Raises 13 for any other array, 5 for arrays nested too deep, 6 for more words than an
// array can count, 9 for a negative position or one behind the capacity; then nothing changed.
void WriteStreamValue(Array& Stream, std::int32_t& Capacity, std::int32_t& Position,
                      const Variant& Value);

// The encoded value at word `Position`, which moves behind it. Raises 13 for an array of anything
// but 16-bit integers, and 9 where the words end too early or contradict themselves; then
// `Position` stays.
[[nodiscard]] Variant ReadStreamValue(const Array& Stream, std::int32_t& Position);

}  // namespace zorvane::modZorvane
