#pragma once
// What a statement raises, for tests that compare number, source and description at once.

#include <gtest/gtest.h>

#include <optional>

#include "platform/Error.h"

namespace zorvane {

// The error that the statement raises, or nothing when it runs to its end.
template <class Statement>
std::optional<Error> RaisedBy(Statement&& statement) {
    try {
        statement();
    } catch (const Error& error) {
        return error;
    }
    return std::nullopt;
}

// The number of the error that the statement raises, or 0.
template <class Statement>
std::int32_t NumberRaisedBy(Statement&& statement) {
    const std::optional<Error> error = RaisedBy(statement);
    return error ? error->Number : 0;
}

}  // namespace zorvane
