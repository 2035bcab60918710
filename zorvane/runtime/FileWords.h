#pragma once
// Whole files of 16-bit words, little end first, with nothing before or after them.
//
// Neither routine raises or says anything: a file that cannot be read yields Empty, a file that
// cannot be written stays as it was. Only regular files are touched, through links where there are
// any; a FIFO or a device is never waited for.

#include "zorvane/platform/Text.h"
#include "zorvane/platform/Variant.h"

namespace zorvane::modZorvane {

// Whether WriteFileWords would find a file that it may write, or a directory that takes one.
[[nodiscard]] bool CanWriteFileWords(const Text& path);

// The file as an array of 16-bit integers from 0. A file of n bytes gives (n - 1) \ 2 + 1 words
// (one word, 0, for an empty file); an odd last byte is the low half of the last word. Empty when
// there is no such file, it is not a regular one or it cannot be opened. Where reading fails
// half-way the words not read are 0. O(n), one array.
[[nodiscard]] Variant ReadFileWords(const Text& path);

// The file then holds `words` followed by whatever it held behind them: it is never cut short.
// A value that is not an array of 16-bit integers writes nothing, and a file that already begins
// with the words is not written again.
//
// The new file is assembled beside the old one and takes its place, mode and owner in one step:
// whoever reads, or is left with the disk after a crash, has the old file or the new one. Where
// that cannot be done (a directory that may not be written, a file of several names) the file is
// written in place, its first two words last: a crash then leaves a file that begins with two zero
// words. A file without write permission is not written.
// What a killed process leaves beside the file is removed by the next call for that directory.
void WriteFileWords(const Text& path, const Variant& words);

}  // namespace zorvane::modZorvane
