// Any steps at all through a container, or a bag, and through its model. The first byte says which,
// the second of which kind, and every two bytes from there are a step.

#include "fuzz/Require.h"
#include "tests/models/StepRun.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvane;
    if (size < 2) return 0;
    Steps steps;
    for (std::size_t at = 2; at + 1 < size; at += 2) {
        steps.push_back(static_cast<std::uint32_t>(data[at] | data[at + 1] << 8));
    }
    const std::string wrong = RunSteps(kModelled.at(data[0] % kModelled.size()), data[1], steps);
    Require(wrong.empty(), wrong);
    return 0;
}
