#include "zorvane/table/detail/Raise.h"

#include <stdexcept>

#include "zorvane/platform/Text.h"

namespace zorvane::detail {

void RaiseNoKey(const std::string& key) {
    throw std::out_of_range(key.empty() ? "no record has this key"
                                        : "no record has the key " + key);
}

void RaiseKeyInUse(const std::string& key) {
    throw std::invalid_argument(key.empty() ? "another record has this key"
                                            : "another record has the key " + key);
}

void RaiseNoPosition(std::size_t position, std::size_t size) {
    throw std::out_of_range("position " + std::to_string(position) + " of " + std::to_string(size) +
                            " records");
}

void RaiseFull() {
    throw std::length_error("a table holds no more records");
}

std::string Quoted(std::string_view key) {
    return '"' + std::string(key) + '"';
}

std::string Quoted(std::u16string_view key) {
    return Quoted(Text(key).ToUtf8());
}

}  // namespace zorvane::detail
