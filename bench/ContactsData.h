#pragma once
// The contacts of both contacts programs.

#include <random>
#include <string>

#include "bench/Report.h"

struct Contact {
    std::string Name;
    std::string City;
    int Born;
    double Owed;
};

inline Contact AnyContact(std::mt19937& random) {
    std::string name(8 + random() % 16, ' ');
    for (char& letter : name) letter = static_cast<char>('a' + random() % 26);
    return {std::move(name), "City " + std::to_string(random() % 500),
            1900 + static_cast<int>(random() % 120), static_cast<double>(random() % 100000) / 100};
}
