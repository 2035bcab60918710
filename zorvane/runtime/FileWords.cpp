#include "zorvane/runtime/FileWords.h"

#include <algorithm>
#include <bit>
#include <exception>
#include <limits>
#include <new>
#include <string>
#include <type_traits>

#include "zorvane/runtime/detail/FileReplacement.h"
#include "zorvane/runtime/detail/SystemFile.h"

namespace zorvane::modZorvane {
namespace {

using Path = std::filesystem::path;

constexpr std::int64_t kWhole = std::numeric_limits<std::int64_t>::max();

// Turns words of this machine into words of the file, and back.
void SwapOnBigEndian(std::span<std::byte> bytes) noexcept {
    if constexpr (std::endian::native == std::endian::big)
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) std::swap(bytes[i], bytes[i + 1]);
}

// Never through a code page, and a lone surrogate stays one where the system has UTF-16.
Path PathOf(const Text& text) {
    const std::u16string_view units = text.Units();
    if constexpr (std::is_same_v<Path::value_type, wchar_t>)
        return std::wstring(units.begin(), units.end());
    else
        return text.ToUtf8();
}

// What memory has run out for is a failure like any other; so is a path that the system would cut
// short at U+0000. What names no file is refused alike in front of all work, as the system has
// other reasons for reading than for making a file.
template <class Work>
std::error_code Answered(const Path& path, Work&& work) noexcept {
    try {
        if (path.empty() || path.native().find(Path::value_type{}) != Path::string_type::npos)
            return std::make_error_code(std::errc::no_such_file_or_directory);
        if (!path.has_filename()) return std::make_error_code(std::errc::is_a_directory);
        return work();
    } catch (const std::bad_alloc&) {
        return std::make_error_code(std::errc::not_enough_memory);
    } catch (const std::exception&) {
        return std::make_error_code(std::errc::io_error);  // no random numbers to be had
    }
}

std::error_code Read(const Path& path, std::int64_t most, LoadedWords& loaded) {
    SystemFile file;
    if (const std::error_code error = OpenToRead(path, file, loaded.FileBytes)) return error;
    // Kept: an empty file gives one word.
    const std::int64_t all = (static_cast<std::int64_t>(loaded.FileBytes) - 1) / 2 + 1;
    const std::int64_t count = std::min(all, most);
    if (count > std::numeric_limits<std::int32_t>::max())
        return std::make_error_code(std::errc::file_too_large);
    Array words = Array::Uninitialised(VarType::Integer, 0, static_cast<std::int32_t>(count));
    const std::span<std::byte> bytes = words.MutableBytes();
    const auto due =
        static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), loaded.FileBytes));
    std::size_t got = 0;
    const std::error_code error = file.ReadAt(bytes.first(due), 0, got);
    std::ranges::fill(bytes.subspan(got), std::byte{0});
    SwapOnBigEndian(bytes);
    loaded.Words = std::move(words);
    return error;
}

}  // namespace

std::error_code CheckFileWords(const Path& path) noexcept {
    return Answered(path, [&] { return MaySaveOverFile(path); });
}

LoadedWords LoadFileWords(const Path& path) noexcept {
    LoadedWords loaded;
    loaded.Error = Answered(path, [&] { return Read(path, kWhole, loaded); });
    return loaded;
}

LoadedWords LoadFileWords(const Path& path, std::int32_t most) noexcept {
    LoadedWords loaded;
    loaded.Error = Answered(path, [&] { return Read(path, std::max(most, 0), loaded); });
    return loaded;
}

Variant ReadFileWords(const Text& path) {
    try {
        return LoadFileWords(PathOf(path)).Words;
    } catch (const std::bad_alloc&) {
        return {};
    }
}

std::error_code SaveFileWords(const Path& path, const Variant& words,
                              SaveOptions options) noexcept {
    if (words.Type() != (VarType::ArrayFlag | VarType::Integer))
        return std::make_error_code(std::errc::invalid_argument);
    return Answered(path, [&] {
        Array stored = words.AsArray();
        if constexpr (std::endian::native == std::endian::big)
            SwapOnBigEndian(stored.MutableBytes());
        return SaveOverFile(path, stored.Bytes(),
                            options.CutOldTail ? OldTail::Cut : OldTail::Stays);
    });
}

void WriteFileWords(const Text& path, const Variant& words) {
    try {
        (void)SaveFileWords(PathOf(path), words);
    } catch (const std::bad_alloc&) {
    }
}

}  // namespace zorvane::modZorvane
