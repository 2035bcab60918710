#pragma once
// ColumnList: several columns of a record, each with a direction, as one thing to compare by.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <tuple>
#include <type_traits>
#include <utility>

#include "zorvane/table/Columns.h"
#include "zorvane/table/detail/Plain.h"
#include "zorvane/table/detail/SortPrefix.h"

namespace zorvane::detail {

// Something to tell types apart by.
template <class T>
inline constexpr char kTag = 0;

// A data member, by the type of a pointer to it and the pointer.
struct MemberName {
    const char* Tag;
    const void* Pointer;
};

template <class Record, class Column>
struct ColumnOf {
    Column Projection;
    static constexpr bool kDescending = false;
};
template <class Record, class Column>
struct ColumnOf<Record, Descending<Column>> : ColumnOf<Record, Column> {
    constexpr ColumnOf(Descending<Column> column)
        : ColumnOf<Record, Column>{std::move(column.Ascending)} {}
    static constexpr bool kDescending = !ColumnOf<Record, Column>::kDescending;
};

template <class Record, class Column>
inline constexpr bool kIsColumn = std::is_invocable_v<const Column&, const Record&>;
template <class Record, class Column>
inline constexpr bool kIsColumn<Record, Descending<Column>> = kIsColumn<Record, Column>;

template <class Record, class Column>
inline constexpr bool kIsOrdered = [] {
    if constexpr (kIsColumn<Record, Column>) {
        using Value = std::remove_cvref_t<std::invoke_result_t<const Column&, const Record&>>;
        return kCompares<Value, Value>;
    }
    return true;  // it is no column at all
}();
template <class Record, class Column>
inline constexpr bool kIsOrdered<Record, Descending<Column>> = kIsOrdered<Record, Column>;

template <class Record, class... Columns>
class ColumnList {
    static_assert(sizeof...(Columns) > 0, "an order needs a column");
    static_assert((kIsColumn<Record, Columns> && ...), "no column of this type of record");
    static_assert((kIsOrdered<Record, Columns> && ...), "a column's values have neither <=> nor <");

    template <std::size_t kColumn>
    using At = std::tuple_element_t<kColumn, std::tuple<ColumnOf<Record, Columns>...>>;
    template <std::size_t kColumn>
    using Value = decltype(std::invoke(std::declval<const At<kColumn>&>().Projection,
                                       std::declval<const Record&>()));
    using First = std::remove_cvref_t<Value<0>>;

  public:
    explicit ColumnList(Columns... columns)
        : columns_(ColumnOf<Record, Columns>{std::move(columns)}...) {}

    [[nodiscard]] std::weak_ordering Compare(const Record& left, const Record& right) const {
        return CompareFrom<0>([&](const auto& column) {
            return CompareValues(std::invoke(column.Projection, left),
                                 std::invoke(column.Projection, right));
        });
    }
    // How a record stands to values of its first columns.
    template <class... Values>
    [[nodiscard]] std::weak_ordering CompareWith(const Record& record,
                                                 const std::tuple<const Values&...>& values) const {
        return CompareWithFrom<0>(record, values);
    }

    static constexpr bool kHasPrefix = detail::kHasPrefix<First>;
    static constexpr bool kHasText = kIsText<First>;
    // Numbers of one column tie where their prefixes do.
    static constexpr bool kPrefixTellsAll = kHasPrefix && !kHasText && sizeof...(Columns) == 1;
    [[nodiscard]] std::uint64_t PrefixOf(const Record& record, std::size_t lead) const {
        return Turned(SortPrefix<First>(FirstOf(record), lead));
    }
    // The same of a value of the first column, unless it is of a type that the column's cannot
    // stand for.
    template <class Asked>
    [[nodiscard]] static bool PrefixOfValue(const Asked& value, std::size_t lead,
                                            std::uint64_t& prefix) noexcept {
        if constexpr (kHasText && std::is_same_v<PlainOf<Asked>, PlainOf<First>>) {
            prefix = Turned(SortPrefix(value, lead));
            return true;
        } else if constexpr (std::is_arithmetic_v<Asked> && std::is_arithmetic_v<First> &&
                             kHasPrefix && !std::is_same_v<Asked, First>) {
            const std::optional<First> same = SameNumber<First>(value);
            if (same) prefix = Turned(SortPrefix(*same, 0));
            return same.has_value();
        } else if constexpr (std::is_same_v<Asked, First> && kHasPrefix) {
            prefix = Turned(SortPrefix(value, 0));
            return true;
        } else {
            return false;
        }
    }
    template <class Asked>
    [[nodiscard]] std::size_t SharedLeadWith(const Record& record, const Asked& value) const {
        if constexpr (kHasText && std::is_same_v<PlainOf<Asked>, PlainOf<First>>) {
            return SharedLead<PlainOf<First>>(Plain(FirstOf(record)), Plain(value));
        } else {
            return 0;
        }
    }
    [[nodiscard]] std::size_t SharedLeadOf(const Record& left, const Record& right) const {
        const Value<0> value = FirstOf(right);
        return SharedLeadWith(left, static_cast<const First&>(value));
    }

    // Whether these are the same columns. Functions are the same only where they capture nothing.
    [[nodiscard]] bool Same(const ColumnList& other) const { return SameFrom<0>(other); }
    // Whether a data member may have a part in a column.
    [[nodiscard]] bool LooksAt(MemberName member) const noexcept {
        const auto looks = [member]<class C>(const C& column) {
            using Pointer = std::remove_cvref_t<decltype(column.Projection)>;
            if constexpr (!std::is_member_object_pointer_v<Pointer>) {
                return true;
            } else {
                using Member =
                    std::remove_cvref_t<decltype(std::declval<Record&>().*column.Projection)>;
                // A record that is no class has no members, and a pointer to one is not even a
                // type.
                using Class = std::conditional_t<std::is_scalar_v<Record>, MemberName, Record>;
                using Own = Member Class::*;
                if (member.Tag != &kTag<Own>) return false;
                return *static_cast<const Own*>(member.Pointer) == column.Projection;
            }
        };
        return std::apply([&](const auto&... column) { return (looks(column) || ...); }, columns_);
    }

  private:
    [[nodiscard]] Value<0> FirstOf(const Record& record) const {
        return std::invoke(std::get<0>(columns_).Projection, record);
    }
    [[nodiscard]] static std::uint64_t Turned(std::uint64_t prefix) noexcept {
        return At<0>::kDescending ? ~prefix : prefix;
    }
    template <std::size_t kColumn>
    [[nodiscard]] static std::weak_ordering Turned(std::weak_ordering order) noexcept {
        return At<kColumn>::kDescending ? 0 <=> order : order;
    }
    template <std::size_t kColumn, class CompareColumn>
    [[nodiscard]] std::weak_ordering CompareFrom(CompareColumn&& compare) const {
        const auto order = Turned<kColumn>(compare(std::get<kColumn>(columns_)));
        if constexpr (kColumn + 1 < sizeof...(Columns)) {
            if (order == 0) return CompareFrom<kColumn + 1>(compare);
        }
        return order;
    }
    template <std::size_t kColumn, class Values>
    [[nodiscard]] std::weak_ordering CompareWithFrom(const Record& record,
                                                     const Values& values) const {
        const auto order = Turned<kColumn>(
            CompareValues(std::invoke(std::get<kColumn>(columns_).Projection, record),
                          std::get<kColumn>(values)));
        if constexpr (kColumn + 1 < std::tuple_size_v<Values>) {
            if (order == 0) return CompareWithFrom<kColumn + 1>(record, values);
        }
        return order;
    }
    template <std::size_t kColumn>
    [[nodiscard]] bool SameFrom(const ColumnList& other) const {
        const auto& mine = std::get<kColumn>(columns_).Projection;
        const auto& others = std::get<kColumn>(other.columns_).Projection;
        bool same = std::is_empty_v<std::remove_cvref_t<decltype(mine)>>;
        if constexpr (requires {
                          { mine == others } -> std::convertible_to<bool>;
                      }) {
            same = same || mine == others;
        }
        if constexpr (kColumn + 1 < sizeof...(Columns)) {
            return same && SameFrom<kColumn + 1>(other);
        } else {
            return same;
        }
    }

    std::tuple<ColumnOf<Record, Columns>...> columns_;
};

}  // namespace zorvane::detail
