#include "zorvane/platform/detail/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Units.h"

namespace zorvane {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::uint64_t kNoAscii = 0x8080808080808080u;
constexpr std::size_t kWord = sizeof(std::uint64_t);

std::uint64_t WordAt(const char* bytes) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

void WidenEight(const char* bytes, char16_t* units) noexcept {
#ifdef __SSE2__
    const __m128i eight = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes));
    const __m128i wide = _mm_unpacklo_epi8(eight, _mm_setzero_si128());
#else
    using EightBytes [[gnu::vector_size(8)]] = std::uint8_t;
    EightBytes eight;
    std::memcpy(&eight, bytes, sizeof eight);
    const EightUnits wide = __builtin_convertvector(eight, EightUnits);
#endif
    std::memcpy(units, &wide, sizeof wide);
}

// Reads one code point at `at` and moves past it; a malformed byte is one U+FFFD.
char32_t DecodePoint(std::string_view bytes, std::size_t& at) noexcept {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned first = byteAt(at++);
    if (first < 0x80) return first;
    const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC2 || first > 0xF4 || bytes.size() - at < more) return kReplacement;
    char32_t point = first & (0x3Fu >> more);
    for (std::size_t i = 0; i < more; ++i) {
        const unsigned next = byteAt(at + i);
        if ((next & 0xC0) != 0x80) return kReplacement;
        point = (point << 6) | (next & 0x3F);
    }
    const bool tooLong = (more == 2 && point < 0x800) || (more == 3 && point < 0x10000);
    if (tooLong || (point >= 0xD800 && point <= 0xDFFF) || point > 0x10FFFF) return kReplacement;
    at += more;
    return point;
}

// Takes the bytes from the front: eight ASCII bytes by ascii(bytes), the others by point(point).
template <class Ascii, class Point>
void Walk(std::string_view bytes, Ascii&& ascii, Point&& point) {
    for (std::size_t at = 0; at < bytes.size();) {
        if (bytes.size() - at >= kWord && (WordAt(bytes.data() + at) & kNoAscii) == 0) {
            ascii(bytes.data() + at);
            at += kWord;
        } else {
            point(DecodePoint(bytes, at));
        }
    }
}

void AppendUtf8(std::string& out, char32_t point) {
    const auto put = [&](char32_t bits) { out.push_back(static_cast<char>(bits)); };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xC0 | (point >> 6));
        put(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        put(0xE0 | (point >> 12));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    } else {
        put(0xF0 | (point >> 18));
        put(0x80 | ((point >> 12) & 0x3F));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    }
}

}  // namespace

bool IsAscii(std::string_view bytes) noexcept {
    const std::size_t length = bytes.size();
    std::uint64_t seen = 0;
    if (length >= kFewestInSteps && length <= kMostInSteps) {
        for (std::size_t step = 0; step < kSteps; ++step) {
            seen |= WordAt(bytes.data() + StepAt(step, length));
        }
    } else {
        std::size_t at = 0;
        for (; length - at >= 4 * kWord; at += 4 * kWord) {
            const char* const four = bytes.data() + at;
            seen |= WordAt(four) | WordAt(four + kWord) | WordAt(four + 2 * kWord) |
                    WordAt(four + 3 * kWord);
        }
        for (; at < length; ++at) seen |= static_cast<unsigned char>(bytes[at]);
    }
    return (seen & kNoAscii) == 0;
}

void WidenAscii(std::string_view ascii, char16_t* units) noexcept {
    const std::size_t length = ascii.size();
    if (length < kFewestInSteps) {
        for (const char byte : ascii) *units++ = static_cast<unsigned char>(byte);
        return;
    }
    if (length <= kMostInSteps) {
        for (std::size_t step = 0; step < kSteps; ++step) {
            const std::size_t at = StepAt(step, length);
            WidenEight(ascii.data() + at, units + at);
        }
        return;
    }
    std::size_t at = 0;
    for (; length - at >= 16; at += 16) {
        WidenEight(ascii.data() + at, units + at);
        WidenEight(ascii.data() + at + 8, units + at + 8);
    }
    WidenAscii(ascii.substr(at), units + at);
}

std::size_t UnitsInUtf8(std::string_view bytes) noexcept {
    std::size_t count = 0;
    Walk(
        bytes, [&](const char*) { count += 8; },
        [&](char32_t point) { count += point >= 0x10000 ? 2 : 1; });
    return count;
}

void DecodeUtf8(std::string_view bytes, char16_t* units) noexcept {
    const auto put = [&](char32_t unit) { *units++ = static_cast<char16_t>(unit); };
    Walk(
        bytes,
        [&](const char* eight) {
            WidenEight(eight, units);
            units += 8;
        },
        [&](char32_t point) {
            if (point < 0x10000) return put(point);
            put(0xD7C0 + (point >> 10));
            put(0xDC00 | (point & 0x3FF));
        });
}

std::string EncodeUtf8(std::u16string_view units) {
    char16_t seen = 0;
    for (const char16_t unit : units) seen |= unit;
    std::string out;
    if (seen < 0x80) {
        out.resize(units.size());
        std::ranges::transform(units, out.begin(),
                               [](char16_t unit) { return static_cast<char>(unit); });
        return out;
    }
    out.reserve(units.size());
    for (std::size_t at = 0; at < units.size();) {
        const char32_t point = CodePointAt(units, at);
        AppendUtf8(out, IsSurrogate(point) ? kReplacement : point);
    }
    return out;
}

}  // namespace zorvane
