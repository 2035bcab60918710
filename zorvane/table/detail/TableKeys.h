#pragma once
// TableKeys: what a table's key is, and in what form it is hashed and compared when it is asked
// for.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

#include "zorvane/platform/Units.h"
#include "zorvane/table/TableHash.h"
#include "zorvane/table/detail/Plain.h"

namespace zorvane::detail {

// For classes whose own swap hides all others.
template <class T>
void Exchange(T& left, T& right) noexcept {
    using std::swap;
    swap(left, right);
}

template <class T>
concept Transparent = requires {
    typename T::is_transparent;
};

template <class Record, auto kKey, class Hash, class Equal>
class TableKeys {
  public:
    using Key = std::remove_cvref_t<std::invoke_result_t<decltype(kKey), const Record&>>;
    using Projection = std::remove_cv_t<decltype(kKey)>;

    static constexpr bool kIsMember = std::is_member_object_pointer_v<Projection>;

    TableKeys() = default;
    TableKeys(Hash hash, Equal equal) : hash_(std::move(hash)), equal_(std::move(equal)) {}

    [[nodiscard]] static decltype(auto) Of(const Record& record) {
        return std::invoke(kKey, record);
    }
    // Whether the key may depend on a data member, by a pointer to one of Record's.
    template <class Column>
    [[nodiscard]] static bool LooksAt(Column column) noexcept {
        if constexpr (!kIsMember) {
            return true;
        } else if constexpr (std::is_convertible_v<Projection, Column>) {
            return static_cast<Column>(kKey) == column;
        } else {
            return false;
        }
    }
    template <class... Arguments>
    [[nodiscard]] static Record Make(Arguments&&... arguments) {
        if constexpr (std::is_constructible_v<Record, Arguments...>) {
            return Record(std::forward<Arguments>(arguments)...);
        } else {
            return Record{std::forward<Arguments>(arguments)...};
        }
    }

    // What `look` gives for a key as it can be hashed; nothing is made of it unless it has to be.
    // A default result where the key's type cannot hold the value.
    template <class Asked, class Look>
    auto As(const Asked& key, Look&& look) const {
        if constexpr (std::is_same_v<Asked, Key> || kByItself || kSamePlain<Asked>) {
            return look(key);
        } else if constexpr (std::is_arithmetic_v<Asked> && std::is_arithmetic_v<Key>) {
            const std::optional<Key> same = SameNumber<Key>(key);
            return same ? look(*same) : decltype(look(*same))();
        } else {
            static_assert(std::is_constructible_v<Key, const Asked&>,
                          "a key is looked up by what compares with it or can be made into one");
            return look(static_cast<const Key&>(Key(key)));
        }
    }
    // Never 0, and well mixed in its high bits.
    template <class Asked>
    [[nodiscard]] std::uint32_t HashOf(const Asked& key) const {
        const auto hash = static_cast<std::uint64_t>(hash_(Form(key)));
        const std::uint64_t mixed = (hash ^ (hash >> 32)) * 0x9E3779B97F4A7C15u;
        const auto high = static_cast<std::uint32_t>(mixed >> 32);
        return high != 0 ? high : 1;
    }
    [[nodiscard]] std::uint32_t HashOfRecord(const Record& record) const {
        return HashOf<Key>(Of(record));
    }
    template <class Asked>
    [[nodiscard]] bool Equals(const Record& record, const Asked& key) const {
        if constexpr (kOurs && std::is_same_v<PlainOf<Key>, std::u16string_view>) {
            return SameUnits(Plain<Key>(Of(record)), Plain(key));
        } else {
            return static_cast<bool>(equal_(Form<Key>(Of(record)), Form(key)));
        }
    }

    friend void swap(TableKeys& left, TableKeys& right) noexcept {
        using std::swap;
        swap(left.hash_, right.hash_);
        swap(left.equal_, right.equal_);
    }

  private:
    static constexpr bool kOurs =
        std::is_same_v<Hash, TableHash<Key>> && std::is_same_v<Equal, std::equal_to<>>;
    static constexpr bool kByItself = Transparent<Hash> && Transparent<Equal>;
    template <class Asked>
    static constexpr bool kSamePlain = kOurs&& std::is_same_v<PlainOf<Asked>, PlainOf<Key>>;

    // As our own hash and equality take it; those of the user's get the key itself.
    template <class Asked>
    [[nodiscard]] static decltype(auto) Form(const Asked& key) noexcept {
        if constexpr (kOurs) {
            return Plain(key);
        } else {
            return static_cast<const Asked&>(key);
        }
    }

    [[no_unique_address]] Hash hash_{};
    [[no_unique_address]] Equal equal_{};
};

}  // namespace zorvane::detail
