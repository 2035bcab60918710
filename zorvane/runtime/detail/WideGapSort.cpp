#include "zorvane/runtime/detail/WideGapSort.h"

#include <cstddef>

#include "zorvane/runtime/detail/GapSort.h"

// Not by GCC for Windows: it keeps wide vectors on a stack that is aligned for narrow ones.
#if defined(__x86_64__) && defined(__GNUC__) && (defined(__clang__) || !defined(_WIN32))
#define ZORVANE_WIDE 1
#include <immintrin.h>
#endif

namespace zorvane::modZorvane {

namespace {

constexpr auto kByRank = [](auto a, auto b) {
    const auto left = a >> 32;
    const auto right = b >> 32;
    return (left > right) - (left < right);
};

}  // namespace

void PlainGapSort(std::vector<Ranked>& elements, bool descending) {
    GapSort(elements, descending, kByRank);
}

#if ZORVANE_WIDE
namespace {

// Vectors compare signed integers: the top bit of every element is turned before and after.
constexpr Ranked kTopBit = Ranked{1} << 63;
constexpr std::ptrdiff_t kLanes = 4;

// The greatest element that has the rank of this one.
constexpr std::int64_t Ceiling(std::int64_t element) {
    return element | 0xFFFFFFFF;
}
template <bool kDescending>
bool OutOfPlace(std::int64_t ahead, std::int64_t ceiling) {
    return (ahead > ceiling) != kDescending;
}

// Moves `taken` forward along its chain from the hole at `at`; gives the moves that it took.
template <bool kDescending>
std::ptrdiff_t Sink(std::int64_t* elements, std::ptrdiff_t at, std::ptrdiff_t gap,
                    std::int64_t taken) {
    const std::int64_t ceiling = Ceiling(taken);
    std::ptrdiff_t moves = 0;
    for (; at >= gap && OutOfPlace<kDescending>(elements[at - gap], ceiling); at -= gap, ++moves) {
        elements[at] = elements[at - gap];
    }
    elements[at] = taken;
    return moves;
}

[[gnu::target("avx2")]] inline __m256i Load(const std::int64_t* from) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}
[[gnu::target("avx2")]] inline void Store(std::int64_t* to, __m256i lanes) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), lanes);
}
template <bool kDescending>
[[gnu::target("avx2")]] inline __m256i OutOfPlace(__m256i ahead, __m256i ceilings) {
    const __m256i greater = _mm256_cmpgt_epi64(ahead, ceilings);
    return kDescending ? _mm256_xor_si256(greater, _mm256_set1_epi64x(-1)) : greater;
}
[[gnu::target("avx2")]] inline bool None(__m256i lanes) {
    return _mm256_testz_si256(lanes, lanes) != 0;
}

// Moves the four elements at `at`, of which `moving` are out of place, forward along their chains.
template <bool kDescending>
[[gnu::target("avx2")]] std::ptrdiff_t SinkFour(std::int64_t* elements, std::ptrdiff_t at,
                                                std::ptrdiff_t gap, __m256i ahead, __m256i moving) {
    const __m256i taken = Load(elements + at);
    const __m256i ceilings = _mm256_or_si256(taken, _mm256_set1_epi64x(Ceiling(0)));
    __m256i here = taken;
    std::ptrdiff_t moves = 0;
    for (;; moves += kLanes) {
        Store(elements + at, _mm256_blendv_epi8(here, ahead, moving));
        at -= gap;
        if (at < gap) break;
        here = ahead;
        ahead = Load(elements + at - gap);
        const __m256i going = _mm256_and_si256(OutOfPlace<kDescending>(ahead, ceilings), moving);
        here = _mm256_blendv_epi8(here, taken, _mm256_andnot_si256(going, moving));
        moving = going;
        if (!None(moving)) continue;
        Store(elements + at, here);
        return moves;
    }
    // Some chains begin here: the rest one by one.
    std::int64_t values[kLanes];
    Store(values, taken);
    const int lanes = _mm256_movemask_pd(_mm256_castsi256_pd(moving));
    for (int lane = 0; lane < kLanes; ++lane) {
        if ((lanes >> lane & 1) == 0) continue;
        moves += Sink<kDescending>(elements, at + lane, gap, values[lane]);
    }
    return moves;
}

// Insertions until the end, or until they are too many; gives where it stopped. With a gap of at
// least kLanes four neighbours belong to four chains.
template <bool kDescending>
[[gnu::target("avx2")]] std::ptrdiff_t Pass(std::int64_t* elements, std::ptrdiff_t count,
                                            std::ptrdiff_t gap) {
    std::ptrdiff_t left = static_cast<std::ptrdiff_t>(kPatience) * count;
    std::ptrdiff_t i = gap;
    for (; gap >= kLanes && i + kLanes <= count && left > 0; i += kLanes) {
        const __m256i ceilings =
            _mm256_or_si256(Load(elements + i), _mm256_set1_epi64x(Ceiling(0)));
        const __m256i ahead = Load(elements + i - gap);
        const __m256i moving = OutOfPlace<kDescending>(ahead, ceilings);
        if (!None(moving)) left -= SinkFour<kDescending>(elements, i, gap, ahead, moving);
    }
    for (; i < count && left > 0; ++i) left -= Sink<kDescending>(elements, i, gap, elements[i]);
    return i;
}

template <bool kDescending>
void SortWide(std::int64_t* elements, std::ptrdiff_t count) {
    std::ptrdiff_t gap = 0;
    while (gap <= count) gap = 3 * gap + 1;
    do {
        gap /= 3;
        const std::ptrdiff_t done = Pass<kDescending>(elements, count, gap);
        if (done >= count) continue;
        FinishPass(elements, static_cast<std::size_t>(count), static_cast<std::size_t>(gap),
                   static_cast<std::size_t>(done), kDescending, kByRank);
    } while (gap > 1);
}

}  // namespace

void WideGapSort(std::vector<Ranked>& elements, bool descending) {
    if (!__builtin_cpu_supports("avx2")) return PlainGapSort(elements, descending);
    for (Ranked& element : elements) element ^= kTopBit;
    auto* const first = reinterpret_cast<std::int64_t*>(elements.data());
    const auto count = static_cast<std::ptrdiff_t>(elements.size());
    descending ? SortWide<true>(first, count) : SortWide<false>(first, count);
    for (Ranked& element : elements) element ^= kTopBit;
}
#else
void WideGapSort(std::vector<Ranked>& elements, bool descending) {
    PlainGapSort(elements, descending);
}
#endif

}  // namespace zorvane::modZorvane
