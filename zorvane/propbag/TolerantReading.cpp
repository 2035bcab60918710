#include "zorvane/propbag/TolerantReading.h"

#include <utility>

namespace zorvane {
namespace {

thread_local TolerantReading* innermost = nullptr;

}  // namespace

TolerantReading::TolerantReading() noexcept : outer_(std::exchange(innermost, this)) {}

TolerantReading::~TolerantReading() {
    innermost = outer_;
}

bool TolerantReading::Skip(const Text& name, const Text& className) {
    if (innermost) innermost->skipped_.push_back({name, className});
    return innermost != nullptr;
}

}  // namespace zorvane
