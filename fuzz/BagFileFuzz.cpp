// Any bytes at all in a bag's file: they are read as they stand, a bag takes from them what it
// takes from the same words elsewhere, and what is saved over them is read back.

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <vector>

#include "fuzz/Require.h"
#include "propbag/ZVPropertyBag.h"
#include "runtime/FileWords.h"
#include "tests/unit/runtime_files/Folder.h"

namespace {

using namespace zorvane;

Array WordsIn(const std::string& path) {
    const Variant read = modZorvane::ReadFileWords(path);
    Require(read.IsArray(), "a file is read");
    return read.AsArray();
}

Array AfterATrip(const Array& words) {
    ZVPropertyBag bag;
    bag.WriteProperty(u"old", 1);
    bag.SetContents(words);
    return bag.Contents();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    const std::string path = folder.At("bag");
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));

    std::vector<std::int16_t> words(size == 0 ? 1 : (size + 1) / 2);
    for (std::size_t i = 0; i < size; ++i) {
        words[i / 2] = static_cast<std::int16_t>(words[i / 2] | data[i] << (i % 2 * 8));
    }
    const Array read = WordsIn(path);
    Require(std::ranges::equal(read.Words(), words), "a file's words are its bytes, padded by 0");
    const Array taken = AfterATrip(read);
    Require(taken == AfterATrip(Array::OfWords(words)), "a file's words are like any others");

    modZorvane::WriteFileWords(path, taken);
    const Array saved = WordsIn(path);
    const auto length = static_cast<std::size_t>(taken.Count());
    Require(saved.Count() == std::max(read.Count(), taken.Count()), "a file never becomes shorter");
    Require(std::ranges::equal(saved.Words().first(length), taken.Words()),
            "what is saved stands in front");
    Require(AfterATrip(saved) == AfterATrip(taken), "what stands behind a bag is not read");
    return 0;
}
