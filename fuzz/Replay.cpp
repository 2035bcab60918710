// Runs the body of a fuzzer once over every file that is named, or stands in a folder that is
// named.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void RunOne(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(in), {});
    const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(data.data(), data.size());
}

}  // namespace

int main(int argc, char** argv) {
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            RunOne(argv[i]);
            ++files;
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            RunOne(entry.path());
            ++files;
        }
    }
    std::cout << files << " files\n";
    return files == 0 ? 1 : 0;
}
