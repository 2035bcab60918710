// replay_<name> <folder> [--damaged]: runs the body of a fuzzer over every file of the folder, and
// over short ones with any bit turned and cut off anywhere.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    constexpr std::size_t kShort = 256;
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream in(entry.path(), std::ios::binary);
        const std::vector<char> bytes(std::istreambuf_iterator<char>(in), {});
        std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
        LLVMFuzzerTestOneInput(data.data(), data.size());
        ++files;
        if (argc < 3 || data.size() > kShort) continue;
        for (std::size_t bit = 0; bit < 8 * data.size(); ++bit) {
            const auto mask = static_cast<std::uint8_t>(1 << bit % 8);
            data[bit / 8] ^= mask;
            LLVMFuzzerTestOneInput(data.data(), data.size());
            data[bit / 8] ^= mask;
        }
        for (; !data.empty(); data.pop_back()) LLVMFuzzerTestOneInput(data.data(), data.size());
    }
    std::cout << files << " files\n";
    return files == 0 ? 1 : 0;
}
