#pragma once
// StreamDecoder: tagged values out of the words of a stream that may be damaged or hostile.
//
// Every count, length and bound is checked in 64 bits against the words that are left before
// anything is allocated, so what is decoded takes a small multiple of the stream's size, however
// its arrays are nested. Nothing in a stream ever becomes a pointer.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>

#include "zorvane/platform/Text.h"
#include "zorvane/platform/TextMaker.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

// The word at which a stream cannot be read on, and why.
class StreamDamage : public std::exception {
  public:
    StreamDamage(std::size_t word, const char* what, std::uint64_t wanted = 0) noexcept
        : Word(word), Wanted(wanted), what_(what) {}
    [[nodiscard]] const char* what() const noexcept override { return what_; }

    std::size_t Word;
    std::uint64_t Wanted;  // words that a stream must have to be read further; 0: none would help

  private:
    const char* what_;  // a literal
};

enum class StreamCare {
    Reader,   // reads on wherever that is safe, as every reader of the format does
    Checker,  // also takes for damage what no writer produces or no reader can follow
};

class StreamDecoder {
  public:
    // `words` outlives the decoder; reading starts at word `position`.
    StreamDecoder(std::span<const std::int16_t> words, std::size_t position,
                  StreamCare care = StreamCare::Reader) noexcept
        : words_(words), position_(position), care_(care), spare_(words.size_bytes()) {}

    // The next word to be read; may stand behind the last one.
    [[nodiscard]] std::size_t Position() const noexcept { return position_; }
    // Goes back to where Position() was when nothing but texts was read since.
    void Return(std::size_t position) noexcept { position_ = position; }
    // One encoded value. Throws StreamDamage; then the decoder is of no further use.
    [[nodiscard]] Variant Read();
    // Reads the header of an array of `count` texts from position 1, as writers make it, and gives
    // true: as many texts are due. In front of anything else reads nothing.
    [[nodiscard]] bool EnterTexts(std::int32_t count) noexcept;
    // A text that is due, with nothing in front to say so. Throws as Read.
    [[nodiscard]] Text ReadText() {
        // Most texts of a bag are empty: what plain values have for a class name.
        if (Has(2) && words_[position_] == 0 && words_[position_ + 1] == 0) {
            position_ += 2;
            return {};
        }
        return ReadUnits();
    }
    // How many of so many values there can be in the words that are left.
    [[nodiscard]] std::size_t MostValues(std::int32_t count) const noexcept {
        const std::size_t left = words_.size() - std::min(words_.size(), position_);
        return std::min(static_cast<std::size_t>(std::max(count, 0)), left / kLeastValue);
    }
    // Whether `words` more can be read, beside those that enclosing arrays await.
    [[nodiscard]] bool Has(std::uint64_t words) const noexcept {
        const std::uint64_t taken = position_ + promised_;
        return taken <= words_.size() && words <= words_.size() - taken;
    }

  private:
    struct ArrayHeader;
    static constexpr std::size_t kLeastValue = 2;  // words of the shortest value, and of a text

    // Damage at `word` unless the decoder has so many words.
    void Need(std::uint64_t words, std::size_t word, const char* what) const {
        if (!Has(words)) throw StreamDamage(word, what, position_ + promised_ + words);
    }
    // Damage for a checker; a reader goes on.
    void Doubt(bool doubtful, std::size_t word, const char* what) const;
    // Takes bytes of memory that no words of the stream stand for.
    void TakeSpare(std::uint64_t bytes, std::size_t word);
    [[nodiscard]] Variant ReadArray(std::uint16_t element, std::uint16_t size);
    [[nodiscard]] Array ReadNumbers(VarType element, std::uint16_t size, const ArrayHeader& header);
    [[nodiscard]] Variant ReadScalar(std::uint16_t type, std::uint16_t size);
    [[nodiscard]] Text ReadUnits();
    [[nodiscard]] Array ReadTexts(const ArrayHeader& header);
    [[nodiscard]] Array ReadValues(const ArrayHeader& header);
    [[nodiscard]] std::uint32_t TakeLong() noexcept;  // two words that were checked
    [[nodiscard]] std::uint16_t TakeWord() noexcept {
        return static_cast<std::uint16_t>(words_[position_++]);
    }

    std::span<const std::int16_t> words_;
    std::size_t position_;
    StreamCare care_;
    std::uint64_t spare_;         // bytes that arrays may still take beyond their data
    std::uint64_t promised_ = 0;  // the least words of the elements that enclosing arrays await
    int depth_ = 0;
    TextMaker texts_;
};

}  // namespace zorvane
