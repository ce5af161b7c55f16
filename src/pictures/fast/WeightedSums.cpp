#include "pictures/fast/WeightedSums.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace vardenix {
namespace {

using Rows = std::array<const int16_t*, RowsAtOnce>;
using Sums = std::array<int32_t, RowsAtOnce>;

#if defined(__x86_64__)

// The sums of the four lanes of each of four vectors.
Sums AcrossLanes(__m128i a, __m128i b, __m128i c, __m128i d) {
    const __m128i ab = _mm_add_epi32(_mm_unpacklo_epi32(a, b), _mm_unpackhi_epi32(a, b));
    const __m128i cd = _mm_add_epi32(_mm_unpacklo_epi32(c, d), _mm_unpackhi_epi32(c, d));
    const __m128i all =
        _mm_add_epi32(_mm_unpacklo_epi64(ab, cd), _mm_unpackhi_epi64(ab, cd));
    Sums sums;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(sums.data()), all);
    return sums;
}

__m128i At8(const int16_t* from) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

Sums SumsOf8(const Rows& rows, size_t left, const int16_t* weights, size_t count) {
    __m128i a = _mm_setzero_si128();
    __m128i b = a;
    __m128i c = a;
    __m128i d = a;
    for (size_t i = 0; i < count; i += 8) {
        const __m128i weight = At8(weights + i);
        a = _mm_add_epi32(a, _mm_madd_epi16(weight, At8(rows[0] + left + i)));
        b = _mm_add_epi32(b, _mm_madd_epi16(weight, At8(rows[1] + left + i)));
        c = _mm_add_epi32(c, _mm_madd_epi16(weight, At8(rows[2] + left + i)));
        d = _mm_add_epi32(d, _mm_madd_epi16(weight, At8(rows[3] + left + i)));
    }
    return AcrossLanes(a, b, c, d);
}

#define VARDENIX_AVX2 __attribute__((target("avx2"))) inline

VARDENIX_AVX2 __m256i At16(const int16_t* from) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}

VARDENIX_AVX2 __m128i HalvesAdded(__m256i wide) {
    return _mm_add_epi32(_mm256_castsi256_si128(wide), _mm256_extracti128_si256(wide, 1));
}

VARDENIX_AVX2 Sums SumsOf16(const Rows& rows, size_t left, const int16_t* weights,
                            size_t count) {
    __m256i a = _mm256_setzero_si256();
    __m256i b = a;
    __m256i c = a;
    __m256i d = a;
    for (size_t i = 0; i < count; i += 16) {
        const __m256i weight = At16(weights + i);
        a = _mm256_add_epi32(a, _mm256_madd_epi16(weight, At16(rows[0] + left + i)));
        b = _mm256_add_epi32(b, _mm256_madd_epi16(weight, At16(rows[1] + left + i)));
        c = _mm256_add_epi32(c, _mm256_madd_epi16(weight, At16(rows[2] + left + i)));
        d = _mm256_add_epi32(d, _mm256_madd_epi16(weight, At16(rows[3] + left + i)));
    }
    return AcrossLanes(HalvesAdded(a), HalvesAdded(b), HalvesAdded(c), HalvesAdded(d));
}

using SumsRoutine = Sums (*)(const Rows&, size_t, const int16_t*, size_t);
const SumsRoutine BestSums = __builtin_cpu_supports("avx2") ? SumsOf16 : SumsOf8;

#else

Sums SumsOf8(const Rows& rows, size_t left, const int16_t* weights, size_t count) {
    Sums sums{};
    for (size_t row = 0; row < RowsAtOnce; ++row)
        for (size_t i = 0; i < count; ++i)
            sums[row] += weights[i] * rows[row][left + i];
    return sums;
}

constexpr auto BestSums = SumsOf8;

#endif

} // namespace

Sums WeightedSums(const Rows& rows, size_t left, const int16_t* weights, size_t count) {
    return BestSums(rows, left, weights, count);
}

Sums NarrowWeightedSums(const Rows& rows, size_t left, const int16_t* weights,
                        size_t count) {
    return SumsOf8(rows, left, weights, count);
}

} // namespace vardenix
