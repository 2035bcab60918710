#pragma once
// What a fuzzer's body holds to be true: anything else ends the program.

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace zorvane {

inline void Require(bool holds, std::string_view what) {
    if (holds) return;
    std::cerr << "does not hold: " << what << '\n';
    std::abort();
}

}  // namespace zorvane
