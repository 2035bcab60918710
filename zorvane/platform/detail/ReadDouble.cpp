#include "zorvane/platform/detail/ReadDouble.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>

namespace zorvane {
namespace {

const char* PastDigits(const char* first, const char* last) {
    return std::find_if_not(first, last, [](char unit) { return unit >= '0' && unit <= '9'; });
}

// Behind the longest number that stands at `first`, or `first` itself: a stream would take the
// "1e" of "1e+x" and fail.
const char* PastNumber(const char* first, const char* last) {
    const char* const whole = first != last && *first == '-' ? first + 1 : first;
    const char* end = PastDigits(whole, last);
    auto digits = end - whole;
    if (end != last && *end == '.') {
        const char* const part = end + 1;
        end = PastDigits(part, last);
        digits += end - part;
    }
    if (digits == 0) return first;
    if (end == last || (*end != 'e' && *end != 'E')) return end;
    const char* power = end + 1;
    if (power != last && (*power == '-' || *power == '+')) ++power;
    const char* const past = PastDigits(power, last);
    return past != power ? past : end;
}

// Whether a digit other than zero stands before the power of ten.
bool HasValue(std::string_view number) {
    const std::size_t digit = number.find_first_of("123456789eE");
    return digit < number.size() && number[digit] <= '9';
}

}  // namespace

std::from_chars_result ReadDoubleByStream(const char* first, const char* last, double& value) {
    const char* const end = PastNumber(first, last);
    if (end == first) return {first, std::errc::invalid_argument};
    std::istringstream stream(std::string(first, end));
    stream.imbue(std::locale::classic());  // the program's own locale may want a comma
    stream.exceptions(std::ios::badbit);   // lack of memory is no number
    double read = 0;
    stream >> read;
    // Not all streams fail for what is too small, and some fail for what they read well.
    const bool tooSmall = read == 0 && HasValue({first, end});
    const bool tooGreat = stream.fail() && std::fabs(read) >= std::numeric_limits<double>::max();
    if (tooSmall || tooGreat) return {end, std::errc::result_out_of_range};
    value = read;
    return {end, {}};
}

}  // namespace zorvane
