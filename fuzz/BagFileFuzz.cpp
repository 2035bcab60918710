// Any bytes at all in a bag's file: they are read as they stand, a bag takes from them what it
// takes from the same words elsewhere, and what is saved over them is read back.

#include "fuzz/Require.h"
#include "tests/unit/propbag/Words.h"
#include "tests/unit/runtime_files/Folder.h"
#include "zorvane/propbag/BagFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvane;
    static const Folder folder;
    const std::string path = folder.At("bag");
    std::string bytes(data, data + size);
    folder.Put("bag", bytes);
    if (bytes.empty()) bytes = '\0';
    const Variant words = WordsOf(bytes);
    Require(ReadFileWords(path) == words, "a file's words are its bytes, padded by 0");
    const Array taken = BagFrom(words).Contents();

    ZVPropertyBag inPieces;
    const BagLoading loading = LoadBagFile(path, inPieces, 4);
    Require(!loading.Error && loading.FileBytes == size, "a file is read in pieces");
    Require(loading.Damaged == (size > 0 && DecodeContents(words).Damage.has_value()),
            "damage is told");
    Require(inPieces.Contents() == taken, "what is not read on would not have helped");
    Require(!LoadBagFile(path, inPieces).Foreign || size > 1 << 17, "a short file is read whole");
    Require(LoadBagFile(folder.At("none"), inPieces).FileBytes == 0, "no file has no bytes");

    WriteFileWords(path, taken);
    const Array saved = ReadFileWords(path).AsArray();
    const auto length = static_cast<std::size_t>(taken.Count());
    Require(saved.Count() == std::max(words.AsArray().Count(), taken.Count()),
            "a file never becomes shorter");
    Require(std::ranges::equal(saved.Words().first(length), taken.Words()),
            "what is saved stands in front");
    Require(BagFrom(saved).Contents() == BagFrom(taken).Contents(),
            "what stands behind a bag is not read");
    return 0;
}
