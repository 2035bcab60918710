#include "zorvane/propbag/BagFile.h"

#include <algorithm>
#include <limits>
#include <new>
#include <optional>
#include <system_error>

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
        std::optional<StreamDamage> damage;
        if (!loaded.Error && most < all) damage = DecodeBag(loaded.Words.AsArray().Words()).Damage;
        if (!damage || damage->Wanted <= most || damage->Wanted > all) {
            bag.SetContents(loaded.Words);
            return {loaded.Error, loaded.FileBytes, damage.has_value()};
        }
        most = std::min(std::max(most * kGrowth, damage->Wanted), all);
    }
}

}  // namespace zorvane
