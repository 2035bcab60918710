#include "zorvane/platform/Build.h"

// With bodies in sight, the table of this unit makes those of the library.
namespace zorvane::library_and_program_differ_in {

template <int Major, int Minor>
void version_of_headers() {}
template <bool LibStdCxx>
void standard_library() {}
template <bool On>
void debug_mode_of_standard_library() {}
template <std::size_t String, std::size_t Vector>
void sizes_of_string_and_vector() {}
template <std::size_t Bytes>
void size_of_enumerations() {}
template <std::size_t Int, std::size_t Pointer, std::size_t LongLong, std::size_t Double>
void alignment_in_structures() {}

}  // namespace zorvane::library_and_program_differ_in
