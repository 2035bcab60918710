#pragma once
// Report: what each of the programs that a user might write prints at its end.

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <ctime>

// Milliseconds of the processor since it was made, and the most memory that the process has had.
class Report {
  public:
    void Print(const char* who, double sum, std::size_t bytes = 0) const {
        const double spent = static_cast<double>(std::clock() - begin_) * 1000 / CLOCKS_PER_SEC;
        long peak = 0;
        if (std::FILE* const status = std::fopen("/proc/self/status", "r")) {
            char line[256];
            while (std::fgets(line, sizeof line, status)) {
                if (std::strncmp(line, "VmHWM:", 6) == 0) std::sscanf(line + 6, "%ld", &peak);
            }
            std::fclose(status);
        }
        std::printf("%-18s %7.1f ms %8ld KiB  sum %.2f", who, spent, peak, sum);
        if (bytes != 0) std::printf("  %zu bytes", bytes);
        std::printf("\n");
    }

  private:
    std::clock_t begin_ = std::clock();
};
