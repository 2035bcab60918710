#include "zorvane/runtime/FileWords.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <bit>
#include <exception>
#include <limits>

#include "zorvane/runtime/detail/FileReplacement.h"
#include "zorvane/runtime/detail/PosixFile.h"

namespace zorvane::modZorvane {
namespace {

// Turns words of this machine into words of the file, and back.
void SwapOnBigEndian(std::span<std::byte> bytes) noexcept {
    if constexpr (std::endian::native == std::endian::big)
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) std::swap(bytes[i], bytes[i + 1]);
}

Variant ReadWords(const std::string& path) {
    const Descriptor file = OpenAt(AT_FDCWD, path, O_RDONLY);
    struct stat state {};
    if (!file || ::fstat(file.Number(), &state) != 0 || !S_ISREG(state.st_mode)) return {};
    // Kept: an empty file gives one word.
    const std::int64_t count = (std::int64_t{state.st_size} - 1) / 2 + 1;
    if (count > std::numeric_limits<std::int32_t>::max()) return {};
    Array words = Array::Uninitialised(VarType::Integer, 0, static_cast<std::int32_t>(count));
    const std::span<std::byte> bytes = words.MutableBytes();
    const std::size_t got = ReadAt(file, bytes.first(static_cast<std::size_t>(state.st_size)), 0);
    std::ranges::fill(bytes.subspan(got), std::byte{0});
    SwapOnBigEndian(bytes);
    return words;
}

// Nothing is said of what fails on the way, a path that would be cut short at U+0000 included.
template <class Work>
auto Quietly(const Text& path, Work&& work) -> decltype(work(std::string())) {
    try {
        const std::string name = path.ToUtf8();
        if (name.find('\0') == std::string::npos) return work(name);
    } catch (const std::exception&) {
    }
    return {};
}

}  // namespace

bool CanWriteFileWords(const Text& path) {
    return Quietly(path, [](const std::string& name) { return MaySaveOverFile(name); });
}

Variant ReadFileWords(const Text& path) {
    return Quietly(path, ReadWords);
}

void WriteFileWords(const Text& path, const Variant& words) {
    if (words.Type() != (VarType::ArrayFlag | VarType::Integer)) return;
    Quietly(path, [&](const std::string& name) {
        Array stored = words.AsArray();
        if constexpr (std::endian::native == std::endian::big)
            SwapOnBigEndian(stored.MutableBytes());
        SaveOverFile(name, stored.Bytes());
        return true;
    });
}

}  // namespace zorvane::modZorvane
