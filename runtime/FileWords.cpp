#include "runtime/FileWords.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <bit>
#include <exception>
#include <limits>

#include "runtime/FileReplacement.h"
#include "runtime/PosixFile.h"

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

}  // namespace

Variant ReadFileWords(const Text& path) {
    try {
        const std::string name = path.ToUtf8();
        if (name.find('\0') != std::string::npos) return {};
        return ReadWords(name);
    } catch (const std::exception&) {
        return {};
    }
}

void WriteFileWords(const Text& path, const Variant& words) {
    if (words.Type() != (VarType::ArrayFlag | VarType::Integer)) return;
    try {
        const std::string name = path.ToUtf8();
        if (name.find('\0') != std::string::npos) return;
        Array stored = words.AsArray();
        if constexpr (std::endian::native == std::endian::big)
            SwapOnBigEndian(stored.MutableBytes());
        SaveOverFile(name, stored.Bytes());
    } catch (const std::exception&) {
        // Nothing is said: whatever was begun has been undone on the way here.
    }
}

}  // namespace zorvane::modZorvane
