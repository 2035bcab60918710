#include "zorvane/propbag/BagFile.h"

#include <algorithm>
#include <limits>
#include <new>
#include <system_error>
#include <utility>

#include "zorvane/propbag/BagStream.h"
#include "zorvane/runtime/FileWords.h"

namespace zorvane {
namespace {

constexpr std::uint64_t kMostWords = std::numeric_limits<std::int32_t>::max();
constexpr std::uint64_t kGrowth = 4;

}  // namespace

BagLoading LoadBagFile(const std::filesystem::path& path, ZVPropertyBag& bag,
                       std::int32_t atFirst) {
    std::uint64_t most = static_cast<std::uint64_t>(std::max(atFirst, 1));
    while (true) {
        const modZorvane::LoadedWords loaded =
            modZorvane::LoadFileWords(path, static_cast<std::int32_t>(most));
        if (loaded.Error == std::errc::not_enough_memory) throw std::bad_alloc();
        const std::uint64_t all = std::min(loaded.FileBytes / 2 + loaded.FileBytes % 2, kMostWords);
        BagReading reading = DecodeContents(loaded.Words);
        const bool damaged = reading.Damage && loaded.FileBytes != 0;
        const bool goesOn = damaged && !loaded.Error && most < all;
        const std::uint64_t wanted = goesOn ? reading.Damage->Wanted : 0;
        if (wanted <= most || wanted > all) {
            bag.Become(std::move(reading.State));
            return {loaded.Error, loaded.FileBytes, damaged, goesOn};
        }
        most = std::min(std::max(most * kGrowth, wanted), all);
    }
}

}  // namespace zorvane
