#pragma once
// The contacts of both contacts programs, and what each prints at its end.

#include <cstdio>
#include <cstring>
#include <ctime>
#include <random>
#include <string>

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

// Milliseconds of the processor since it was made, and the most memory that the process has had.
class Report {
  public:
    void Print(const char* who, double sum) const {
        const double spent = static_cast<double>(std::clock() - begin_) * 1000 / CLOCKS_PER_SEC;
        long peak = 0;
        if (std::FILE* const status = std::fopen("/proc/self/status", "r")) {
            char line[256];
            while (std::fgets(line, sizeof line, status)) {
                if (std::strncmp(line, "VmHWM:", 6) == 0) std::sscanf(line + 6, "%ld", &peak);
            }
            std::fclose(status);
        }
        std::printf("%-18s %7.1f ms %8ld KiB  sum %.2f\n", who, spent, peak, sum);
    }

  private:
    std::clock_t begin_ = std::clock();
};
