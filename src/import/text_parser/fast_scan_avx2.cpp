#include <immintrin.h>

#include "import/text_parser/fast_scan_stages.hpp"
#include "import/text_parser/fast_scan_tables.hpp"

namespace velmora {

#pragma GCC push_options
#pragma GCC target("avx2")
namespace avx2 {
namespace {

using scan_tables::kLastBytes;
using scan_tables::kScales;
using scan_tables::kUpToPoint;

struct Masks {
  std::uint64_t ends;
  std::uint64_t lf;
  std::uint64_t cr;
};

__attribute__((always_inline)) inline __m128i Load16(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}
__attribute__((always_inline)) inline __m256i Load32(const void* from) {
  return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}
__attribute__((always_inline)) inline __m256i LoadPair(const void* low, const void* high) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(Load16(low)), Load16(high), 1);
}

// All the characters looked for differ in their low four bits, so one table look-up tells for every
// byte the only one that it could be.
class Finder {
 public:
  __attribute__((always_inline)) explicit Finder(const ScanCharacters& characters) {
    char table[16];
    for (int k = 0; k < 16; ++k) {
      table[k] = static_cast<char>(~k);
    }
    for (const char c : characters.separators) {
      table[c & 15] = c;
    }
    table[' ' & 15] = ' ';
    table['\r' & 15] = '\r';
    table['\n' & 15] = '\n';
    table_ = _mm256_broadcastsi128_si256(Load16(table));
  }

  __attribute__((always_inline)) Masks Find(const char* text) const {
    const __m256i low = Load32(text);
    const __m256i high = Load32(text + 32);
    const __m256i lf = _mm256_set1_epi8('\n');
    const __m256i cr = _mm256_set1_epi8('\r');
    return {Bits(_mm256_cmpeq_epi8(low, _mm256_shuffle_epi8(table_, low)),
                 _mm256_cmpeq_epi8(high, _mm256_shuffle_epi8(table_, high))),
            Bits(_mm256_cmpeq_epi8(low, lf), _mm256_cmpeq_epi8(high, lf)),
            Bits(_mm256_cmpeq_epi8(low, cr), _mm256_cmpeq_epi8(high, cr))};
  }

 private:
  __attribute__((always_inline)) static std::uint64_t Bits(__m256i low, __m256i high) {
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(low)) |
           static_cast<std::uint64_t>(static_cast<std::uint32_t>(_mm256_movemask_epi8(high))) << 32;
  }

  __m256i table_;
};

#include "import/text_parser/fast_scan_index.inc"

// The values 0..9 of the digits of two numbers, each right-aligned in 16 bytes with the point taken
// out.
struct Digits {
  __m256i values;
  __m128d scales;
};

__attribute__((always_inline)) inline Digits TakeDigits(const char* text, const Cells& cells, int k,
                                                        __m256i points) {
  const __m256i bytes = LoadPair(text + cells.end[k] - 16, text + cells.end[k + 1] - 16);
  const __m256i inside = LoadPair(kLastBytes.row[cells.length[k]], kLastBytes.row[cells.length[k + 1]]);
  const __m256i atPoint = _mm256_and_si256(_mm256_cmpeq_epi8(bytes, points), inside);
  const auto found = static_cast<std::uint32_t>(_mm256_movemask_epi8(atPoint));
  const auto first = __builtin_ctz(found | 1U << 16);
  const auto second = __builtin_ctz(found >> 16 | 1U << 16);
  const __m256i values = _mm256_and_si256(_mm256_sub_epi8(bytes, _mm256_set1_epi8('0')), inside);
  const __m256i before = LoadPair(kUpToPoint.row[first], kUpToPoint.row[second]);
  return {_mm256_blendv_epi8(values, _mm256_slli_si256(values, 1), before),
          _mm_loadh_pd(_mm_load_sd(&kScales.of[cells.length[k]][first]),
                       &kScales.of[cells.length[k + 1]][second])};
}

// Four numbers of four digits each for every cell.
__attribute__((always_inline)) inline __m256i Fours(__m256i digits) {
  const __m256i pairs = _mm256_maddubs_epi16(digits, _mm256_set1_epi16(1 << 8 | 10));
  return _mm256_madd_epi16(pairs, _mm256_set1_epi32(1 << 16 | 100));
}

// The whole numbers of four cells: upper eight digits times 10^8 plus lower eight, exact in a double
// since there are no more than fifteen in all.
__attribute__((always_inline)) inline __m256d WholeNumbers(__m256i a, __m256i b) {
  const __m256i eights =
      _mm256_madd_epi16(_mm256_packs_epi32(Fours(a), Fours(b)), _mm256_set1_epi32(1 << 16 | 10000));
  const __m256d weights = _mm256_set_pd(1, 1e8, 1, 1e8);
  const __m256d evens = _mm256_cvtepi32_pd(_mm256_castsi256_si128(eights));
  const __m256d odds = _mm256_cvtepi32_pd(_mm256_extracti128_si256(eights, 1));
  return _mm256_hadd_pd(_mm256_mul_pd(evens, weights), _mm256_mul_pd(odds, weights));
}

bool ReadRow(const char* text, std::uint32_t start, const std::uint32_t* ends, int columns, char point,
             float* row) {
  Cells cells;
  if (!MeasureCells(text, start, ends, columns, cells)) {
    return false;
  }
  const __m256i points = _mm256_set1_epi8(point);
  const __m256i belowMask = _mm256_set1_epi64x(static_cast<std::int64_t>(scan_tables::kBelow32Bits));
  const __m256i halfWay = _mm256_set1_epi64x(static_cast<std::int64_t>(scan_tables::kHalfWay));
  __m256i refused = _mm256_setzero_si256();
  __m256i noDigits = _mm256_setzero_si256();
  for (int k = 0; k < columns; k += 4) {
    const Digits a = TakeDigits(text, cells, k, points);
    const Digits b = TakeDigits(text, cells, k + 2, points);
    noDigits =
        _mm256_or_si256(noDigits, _mm256_subs_epu8(_mm256_max_epu8(a.values, b.values), _mm256_set1_epi8(9)));
    const __m256d scales = _mm256_insertf128_pd(_mm256_castpd128_pd256(a.scales), b.scales, 1);
    const __m256d value = _mm256_div_pd(WholeNumbers(a.values, b.values), scales);
    const __m256i below = _mm256_and_si256(_mm256_castpd_si256(value), belowMask);
    refused = _mm256_or_si256(refused, _mm256_cmpeq_epi64(below, halfWay));
    const __m128i signs =
        _mm_and_si128(Load16(cells.sign + k), _mm_set1_epi32(static_cast<int>(0x80000000U)));
    const __m128i rounded = _mm_or_si128(_mm_castps_si128(_mm256_cvtpd_ps(value)), signs);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(row + k), rounded);
  }
  const __m256i wrong = _mm256_or_si256(refused, noDigits);
  return _mm256_testz_si256(wrong, wrong) != 0;
}

}  // namespace
}  // namespace avx2
#pragma GCC pop_options

const ScanStages kAvx2ScanStages = {avx2::IndexPiece, avx2::ReadRow};

}  // namespace velmora
