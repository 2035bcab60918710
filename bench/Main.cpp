#include "bench/Harness.h"

int main(int argc, char** argv) {
    return bench::mainWith(argc, argv);
}
