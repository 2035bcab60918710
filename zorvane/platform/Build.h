#pragma once
// What every header of the library asks of whoever compiles it: C++20 and the layouts that the
// library was compiled with; and the mark of what a shared library shows.

#if __cplusplus < 202002L
#error Zorvane needs C++20: compile with -std=c++20, by g++ 12, clang 14 or a newer one.
#include "C++20 is needed"  // There is none: compilers stop at this and say nothing further.
#endif

#include <cstddef>
#include <string>
#include <vector>

#include "zorvane/platform/Version.h"

// Stands at what programs call. A static library shows nothing, whoever holds it.
#if defined(_WIN32) && defined(ZORVANE_BUILDING_SHARED)
#define ZORVANE_EXPORT __declspec(dllexport)
#elif defined(_WIN32) && defined(ZORVANE_SHARED)
#define ZORVANE_EXPORT __declspec(dllimport)
#elif defined(ZORVANE_BUILDING_SHARED) || defined(ZORVANE_SHARED)
#define ZORVANE_EXPORT __attribute__((visibility("default")))
#else
#define ZORVANE_EXPORT
#endif

// Keeps what nobody names, at the linker's too.
#if defined(__ELF__) && __has_attribute(retain)
#define ZORVANE_KEPT __attribute__((used, retain))
#else
#define ZORVANE_KEPT __attribute__((used))
#endif

// The library defines these for what it was compiled with, and for nothing else: a program whose
// compiler sees another layout is not linked, and the linker names what differs.
namespace zorvane::library_and_program_differ_in {

template <int Major, int Minor>
ZORVANE_EXPORT void version_of_headers();
template <bool LibStdCxx>
ZORVANE_EXPORT void standard_library();
template <bool On>
ZORVANE_EXPORT void debug_mode_of_standard_library();
template <std::size_t String, std::size_t Vector>
ZORVANE_EXPORT void sizes_of_string_and_vector();
template <std::size_t Bytes>
ZORVANE_EXPORT void size_of_enumerations();
template <std::size_t Int, std::size_t Pointer, std::size_t LongLong, std::size_t Double>
ZORVANE_EXPORT void alignment_in_structures();

#ifdef __GLIBCXX__
static constexpr bool kLibStdCxx = true;
#else
static constexpr bool kLibStdCxx = false;
#endif
#ifdef _GLIBCXX_DEBUG
static constexpr bool kDebugMode = true;
#else
static constexpr bool kDebugMode = false;
#endif
enum Enumeration { kOne };
template <class T>
struct Behind {
    char First;
    T Second;
};
// Where a value stands behind a single byte.
template <class T>
consteval std::size_t OffsetOf() {
    return sizeof(Behind<T>) - sizeof(T);
}

// Each unit of a program holds its own: of inline functions with one name the linker would keep
// one, be it the library's, and see no difference.
ZORVANE_KEPT static void (*const kSeenHere[])() = {
    &version_of_headers<ZORVANE_VERSION_MAJOR, ZORVANE_VERSION_MINOR>,
    &standard_library<kLibStdCxx>,
    &debug_mode_of_standard_library<kDebugMode>,
    &sizes_of_string_and_vector<sizeof(std::string), sizeof(std::vector<int>)>,
    &size_of_enumerations<sizeof(Enumeration)>,
    &alignment_in_structures<OffsetOf<int>(), OffsetOf<void*>(), OffsetOf<long long>(),
                             OffsetOf<double>()>,
};

}  // namespace zorvane::library_and_program_differ_in

#undef ZORVANE_KEPT
