#include "zorvane/platform/Clock.h"

#include <chrono>

#include "zorvane/platform/detail/System.h"

namespace zorvane {

float SecondsSinceMidnight() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const auto whole = floor<seconds>(now);
    const std::tm local = LocalTime(system_clock::to_time_t(whole));
    const double fraction = duration<double>(now - whole).count();
    return static_cast<float>(local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec + fraction);
}

}  // namespace zorvane
