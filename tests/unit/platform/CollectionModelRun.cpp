#include "tests/unit/platform/CollectionModelRun.h"

#include <algorithm>
#include <random>
#include <vector>

#include "platform/CaseMapping.h"
#include "platform/Collection.h"
#include "tests/support/Outcome.h"

namespace zorvane {
namespace {

class PairedRun {
  public:
    explicit PairedRun(std::uint32_t seed) : random_(seed) {}

    // Gives what disagreed, or nothing.
    std::string Step() {
        const Variant v = AnyIndex();
        const Text key = AnyKey();
        const std::int32_t item = ++step_;
        switch (Below(8)) {
            case 0:
            case 1:
            case 2:
            case 3: {
                const CollectionAdd options{KeyOrNone(key), Perhaps(), Perhaps()};
                return Compare(
                    "Add", [&] { collection_.Add(item, options); }, [&] { Add(item, options); });
            }
            case 4:
            case 5:
                return Compare(
                    "Remove", [&] { collection_.Remove(v); }, [&] { rows_.erase(At(v)); });
            default:
                return Compare(
                    "Item", [&] { return collection_.Item(v); }, [&] { return At(v)->item; });
        }
    }

  private:
    struct Row {
        Variant item;
        std::optional<Text> key;
    };

    std::uint32_t Below(std::size_t n) { return static_cast<std::uint32_t>(random_() % n); }
    Text AnyKey() {
        if (Below(30) == 0) return {};
        const auto letter = static_cast<char16_t>((Below(2) != 0 ? u'A' : u'a') + Below(20));
        return std::u16string(1 + Below(2), letter);
    }
    std::optional<Text> KeyOrNone(const Text& key) {
        return Below(4) == 0 ? std::nullopt : std::optional(key);
    }
    Variant AnyIndex() {
        switch (Below(6)) {
            case 0:
                return static_cast<std::int16_t>(Below(rows_.size() + 2));
            case 1:
                return Below(2 * rows_.size() + 4) / 2.0;
            case 2:
                return static_cast<std::int32_t>(Below(rows_.size() + 2)) - 1;
            default:
                return Below(20) == 0 ? Variant::Null() : Variant(AnyKey());
        }
    }
    std::optional<Variant> Perhaps() {
        return Below(3) == 0 ? std::optional(AnyIndex()) : std::nullopt;
    }

    auto Find(const Text& key) {
        return std::ranges::find_if(rows_, [&](const Row& row) {
            return row.key && EqualTexts(*row.key, key, CompareMode::Text);
        });
    }
    std::vector<Row>::iterator At(const Variant& v) {
        if (v.IsText()) {
            if (Find(v.AsText()) == rows_.end()) throw Error(5);
            return Find(v.AsText());
        }
        const std::int32_t position = v.ToLong();
        if (position < 1 || position > static_cast<std::int32_t>(rows_.size())) throw Error(9);
        return rows_.begin() + (position - 1);
    }
    void Add(std::int32_t item, const CollectionAdd& options) {
        if (options.Before && options.After) throw Error(5);
        if (options.Key && Find(*options.Key) != rows_.end()) throw Error(457);
        auto at = rows_.end();
        if (options.Before) at = At(*options.Before);
        if (options.After) at = At(*options.After) + 1;
        rows_.insert(at, {item, options.Key});
    }

    template <class Ours, class Models>
    std::string Compare(const char* what, Ours&& ours, Models&& models) {
        const std::string actual = OutcomeOf(ours);
        const std::string expected = OutcomeOf(models);
        if (actual != expected) return what + (": " + actual) + " instead of " + expected;
        const bool same =
            collection_.Count() == static_cast<std::int32_t>(rows_.size()) &&
            std::equal(collection_.begin(), collection_.end(), rows_.begin(), rows_.end(),
                       [](const Variant& item, const Row& row) { return item == row.item; }) &&
            std::ranges::all_of(rows_, [&](const Row& row) {
                return !row.key || collection_.Item(*row.key) == row.item;
            });
        return same ? "" : what + std::string(": the state differs");
    }

    std::mt19937 random_;
    std::int32_t step_ = 0;
    Collection collection_;
    std::vector<Row> rows_;
};

}  // namespace

std::optional<std::string> RunPlatformCollectionModel(std::uint32_t seed, int operations) {
    PairedRun run(seed);
    for (int i = 1; i <= operations; ++i) {
        const std::string wrong = run.Step();
        if (!wrong.empty()) return "operation " + std::to_string(i) + ", " + wrong;
    }
    return std::nullopt;
}

}  // namespace zorvane
