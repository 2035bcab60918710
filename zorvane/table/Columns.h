#pragma once
/// \file
/// What records are put in order by.
///
/// A column is anything that std::invoke takes a const record with: a pointer to a data member or
/// to a const member function, or a function. What it gives is compared by its own <=> or <; texts
/// by their units or bytes, numbers of any two types by value. Floating numbers that are none (NaN)
/// stand behind all others, and in a descending column in front of them.

#include <utility>

namespace zorvane {

/// A column from its greatest value down.
template <class Column>
struct Descending {
    Column Ascending;
};

template <class Column>
[[nodiscard]] constexpr Descending<Column> descending(Column column) {
    return {std::move(column)};
}

}  // namespace zorvane
