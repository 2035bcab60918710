#pragma once
// StreamMaker: streams of bags out of any bytes: a sound one first, with values of every type, then
// some of its words altered, most of them where a reader goes by them.

#include <cstdint>
#include <span>
#include <vector>

#include "zorvane/platform/Variant.h"

namespace zorvane {

class StreamMaker {
  public:
    // Every choice takes a byte; when none is left, the first of what there is.
    explicit StreamMaker(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    [[nodiscard]] std::vector<std::int16_t> Make();
    // Whether what was made is just as a bag writes it.
    [[nodiscard]] bool IsSound() const noexcept { return sound_; }

  private:
    std::uint32_t Below(std::uint32_t limit) noexcept;
    std::int16_t Word() noexcept;
    Variant SomeArray(int depth);
    Variant SomeNumber();
    Variant SomeText();
    Variant SomeTexts(std::int32_t count);
    Variant SomeValue(int depth);
    void Alter();
    void Put(const Variant& value);
    void PutColumn(std::int32_t count);

    std::span<const std::uint8_t> bytes_;
    std::vector<std::int16_t> words_;
    bool sound_ = true;
};

}  // namespace zorvane
