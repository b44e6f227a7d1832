#include <immintrin.h>

#include "core/simd.hpp"
#include "formats/delimited_text/scan/fast_scan_stages.hpp"
#include "formats/delimited_text/scan/fast_scan_tables.hpp"

namespace velmora {

SIMD_BEGIN_AVX2
namespace avx2 {
namespace {

using scan_tables::kPlaceScales;

struct Masks {
  std::uint64_t ends;
  std::uint64_t lf;
  std::uint64_t cr;
};

__attribute__((always_inline)) inline std::uint32_t CountBits(std::uint64_t bits) {
  return static_cast<std::uint32_t>(__builtin_popcountll(bits));
}

#include "formats/delimited_text/scan/fast_scan_positions.inc"

__attribute__((always_inline)) inline __m128i Load16(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}
__attribute__((always_inline)) inline __m256i Load32(const void* from) {
  return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}
__attribute__((always_inline)) inline __m256i LoadPair(const void* low, const void* high) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(Load16(low)), Load16(high), 1);
}

class Finder {
 public:
  __attribute__((always_inline)) explicit Finder(const ScanCharacters& characters) {
    const scan_tables::EndTable table(characters);
    table_ = _mm256_broadcastsi128_si256(Load16(table.of));
  }

  __attribute__((always_inline)) Masks Find(const char* text) const {
    const __m256i low = Load32(text);
    const __m256i high = Load32(text + 32);
    return WithLineEnds(low, high, _mm256_shuffle_epi8(table_, low), _mm256_shuffle_epi8(table_, high));
  }

  __attribute__((always_inline)) static Masks FindWhite(const char* text) {
    const __m256i low = Load32(text);
    const __m256i high = Load32(text + 32);
    const __m256i blank = _mm256_set1_epi8(' ');
    return WithLineEnds(low, high, _mm256_min_epu8(low, blank), _mm256_min_epu8(high, blank));
  }

 private:
  // `lowEnds` and `highEnds` equal the bytes where a number ends.
  __attribute__((always_inline)) static Masks WithLineEnds(__m256i low, __m256i high, __m256i lowEnds,
                                                           __m256i highEnds) {
    const __m256i lf = _mm256_set1_epi8('\n');
    const __m256i cr = _mm256_set1_epi8('\r');
    return {Bits(_mm256_cmpeq_epi8(low, lowEnds), _mm256_cmpeq_epi8(high, highEnds)),
            Bits(_mm256_cmpeq_epi8(low, lf), _mm256_cmpeq_epi8(high, lf)),
            Bits(_mm256_cmpeq_epi8(low, cr), _mm256_cmpeq_epi8(high, cr))};
  }

  __attribute__((always_inline)) static std::uint64_t Bits(__m256i low, __m256i high) {
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(low)) |
           static_cast<std::uint64_t>(static_cast<std::uint32_t>(_mm256_movemask_epi8(high))) << 32;
  }

  __m256i table_;
};

#include "formats/delimited_text/scan/fast_scan_index.inc"

// Two numbers side by side, each right-aligned in 16 bytes.
struct TwoCells {
  __m256i values;  // of the digits, 0 in the place of the sign and in front of it
  __m256i marks;   // in either half of each number
};

// Distance of each byte of a number to its last one.
__attribute__((always_inline)) inline __m256i FromEnd() {
  return _mm256_broadcastsi128_si256(_mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
}

__attribute__((always_inline)) inline TwoCells TakeCells(__m256i bytes, __m256i lengths, __m256i points) {
  const __m256i fromEnd = FromEnd();
  const __m256i fromBehind = _mm256_add_epi8(fromEnd, _mm256_set1_epi8(1));
  const __m256i inside = _mm256_cmpgt_epi8(lengths, fromEnd);
  const __m256i first = _mm256_cmpeq_epi8(fromBehind, lengths);
  const __m256i minus = _mm256_and_si256(_mm256_cmpeq_epi8(bytes, _mm256_set1_epi8('-')), first);
  const __m256i plus = _mm256_and_si256(_mm256_cmpeq_epi8(bytes, _mm256_set1_epi8('+')), first);
  const __m256i point = _mm256_and_si256(_mm256_cmpeq_epi8(bytes, points), inside);
  const __m256i unsignedPart = _mm256_andnot_si256(_mm256_or_si256(minus, plus), inside);
  const __m256i digit = _mm256_andnot_si256(point, unsignedPart);
  const __m256i marks =
      _mm256_or_si256(_mm256_or_si256(_mm256_and_si256(digit, _mm256_set1_epi8(scan_marks::kDigit)),
                                      _mm256_and_si256(minus, _mm256_set1_epi8(scan_marks::kMinus))),
                      _mm256_and_si256(point, fromBehind));
  return {_mm256_and_si256(_mm256_sub_epi8(bytes, _mm256_set1_epi8('0')), unsignedPart),
          _mm256_sad_epu8(marks, _mm256_setzero_si256())};
}

// Moves the digits in front of the point one byte towards the end, over the point. `places` has the
// place of each number's point less one in the byte that `pick` selects.
__attribute__((always_inline)) inline __m256i DropPoints(__m256i values, __m256i places, __m256i pick) {
  const __m256i place = _mm256_shuffle_epi8(places, pick);
  const __m256i upToPoint = _mm256_cmpeq_epi8(_mm256_min_epu8(place, FromEnd()), place);
  return _mm256_blendv_epi8(values, _mm256_slli_si256(values, 1), upToPoint);
}

// Four numbers of four digits each for every cell.
__attribute__((always_inline)) inline __m256i Fours(__m256i digits) {
  const __m256i pairs = _mm256_maddubs_epi16(digits, _mm256_set1_epi16(1 << 8 | 10));
  return _mm256_madd_epi16(pairs, _mm256_set1_epi32(1 << 16 | 100));
}

// The whole numbers of four cells, the even ones in `evens`: upper eight digits times 10^8 plus lower
// eight.
__attribute__((always_inline)) inline __m256i WholeNumbers(__m256i evens, __m256i odds) {
  const __m256i eights =
      _mm256_madd_epi16(_mm256_packs_epi32(Fours(evens), Fours(odds)), _mm256_set1_epi32(1 << 16 | 10000));
  return _mm256_add_epi64(_mm256_mul_epu32(eights, _mm256_set1_epi64x(100000000)),
                          _mm256_srli_epi64(eights, 32));
}

// Exact below 2^52: the number becomes the low bits of 2^52 + number.
__attribute__((always_inline)) inline __m256d ToDouble(__m256i whole) {
  const __m256d base = _mm256_set1_pd(0x1p52);
  return _mm256_sub_pd(_mm256_castsi256_pd(_mm256_or_si256(whole, _mm256_castpd_si256(base))), base);
}

__attribute__((always_inline)) inline __m256d Scales(__m256i places) {
  alignas(32) std::uint64_t place[4];
  _mm256_store_si256(reinterpret_cast<__m256i*>(place), places);
  const __m128d low = _mm_loadh_pd(_mm_load_sd(kPlaceScales.of + place[0]), kPlaceScales.of + place[1]);
  const __m128d high = _mm_loadh_pd(_mm_load_sd(kPlaceScales.of + place[2]), kPlaceScales.of + place[3]);
  return _mm256_insertf128_pd(_mm256_castpd128_pd256(low), high, 1);
}

// Reads four numbers; not all bits of what it returns are 0 when one of them is not of the plain sort.
__attribute__((always_inline)) inline __m256i ReadFour(const char* text, const std::uint32_t* ends,
                                                       __m256i evenLengths, __m256i oddLengths,
                                                       __m256i points, float* row) {
  const TwoCells even = TakeCells(LoadPair(text + ends[0] - 16, text + ends[2] - 16), evenLengths, points);
  const TwoCells odd = TakeCells(LoadPair(text + ends[1] - 16, text + ends[3] - 16), oddLengths, points);
  const __m256i marks = _mm256_or_si256(_mm256_unpacklo_epi64(even.marks, odd.marks),
                                        _mm256_unpackhi_epi64(even.marks, odd.marks));
  const __m256i places = _mm256_and_si256(marks, _mm256_set1_epi64x(scan_marks::kPlaceBits));
  const __m256i lessOne = _mm256_sub_epi64(places, _mm256_set1_epi64x(1));
  const __m256i evenDigits = DropPoints(even.values, lessOne, _mm256_setzero_si256());
  const __m256i oddDigits = DropPoints(odd.values, lessOne, _mm256_set1_epi8(8));
  const __m256i whole = WholeNumbers(evenDigits, oddDigits);
  const __m256i value = _mm256_castpd_si256(_mm256_div_pd(ToDouble(whole), Scales(places)));
  const __m256i minus = _mm256_set1_epi64x(scan_marks::kMinus);
  const __m256i signs = _mm256_slli_epi64(_mm256_and_si256(marks, minus), 63 - 5);
  _mm_storeu_ps(row, _mm256_cvtpd_ps(_mm256_castsi256_pd(_mm256_or_si256(value, signs))));

  const __m256i noDigits = _mm256_subs_epu8(_mm256_max_epu8(evenDigits, oddDigits), _mm256_set1_epi8(9));
  const __m256i below = _mm256_and_si256(value, _mm256_set1_epi64x(scan_tables::kBelow32Bits));
  const __m256i halfWay = _mm256_cmpeq_epi64(below, _mm256_set1_epi64x(scan_tables::kHalfWay));
  const __m256i digits = _mm256_srli_epi64(marks, 6);
  const __m256i empty = _mm256_cmpeq_epi64(digits, _mm256_setzero_si256());
  const __m256i tooLong = _mm256_cmpgt_epi64(whole, _mm256_set1_epi64x(scan_marks::kMostWhole));
  const __m256i pointFirst = _mm256_and_si256(marks, _mm256_set1_epi64x(scan_marks::kPointFirst));
  return _mm256_or_si256(_mm256_or_si256(_mm256_or_si256(noDigits, halfWay), _mm256_or_si256(empty, tooLong)),
                         pointFirst);
}

// Reads eight numbers with the given lengths, or their first four.
__attribute__((always_inline)) inline __m256i ReadEight(const char* text, const std::uint32_t* ends,
                                                        __m256i lengths, bool all, __m256i points,
                                                        float* row) {
  const __m256i tooLong =
      _mm256_andnot_si256(_mm256_set1_epi32(15), _mm256_sub_epi32(lengths, _mm256_set1_epi32(1)));
  const __m256i evens = _mm256_setr_epi32(0, 0, 0, 0, 0x08080808, 0x08080808, 0x08080808, 0x08080808);
  const __m256i odds = _mm256_add_epi8(evens, _mm256_set1_epi8(4));
  const __m256i low = _mm256_permute2x128_si256(lengths, lengths, 0);
  const __m256i refused = _mm256_or_si256(tooLong, ReadFour(text, ends, _mm256_shuffle_epi8(low, evens),
                                                            _mm256_shuffle_epi8(low, odds), points, row));
  if (!all) {
    return refused;
  }
  const __m256i high = _mm256_permute2x128_si256(lengths, lengths, 0x11);
  return _mm256_or_si256(refused, ReadFour(text, ends + 4, _mm256_shuffle_epi8(high, evens),
                                           _mm256_shuffle_epi8(high, odds), points, row + 4));
}

bool ReadRow(const char* text, std::uint32_t start, const std::uint32_t* ends, int columns, char point,
             float* row) {
  const __m256i points = _mm256_set1_epi8(point);
  const __m256i one = _mm256_set1_epi32(1);
  __m256i before = _mm256_set1_epi32(static_cast<int>(start - 1));  // what ends in front of the first
  __m256i refused = _mm256_setzero_si256();
  int k = 0;
  for (; k + 8 <= columns; k += 8) {
    const __m256i behind = Load32(ends + k);
    const __m256i turned = _mm256_permutevar8x32_epi32(behind, _mm256_setr_epi32(7, 0, 1, 2, 3, 4, 5, 6));
    const __m256i lengths =
        _mm256_sub_epi32(_mm256_sub_epi32(behind, one), _mm256_blend_epi32(turned, before, 1));
    refused = _mm256_or_si256(refused, ReadEight(text, ends + k, lengths, true, points, row + k));
    before = turned;
  }
  if (k < columns) {  // as many as make eight: the last one is repeated
    alignas(32) std::uint32_t end[8];
    alignas(32) std::uint32_t length[8];
    for (int i = 0; i < 8; ++i) {
      const int cell = k + i < columns ? k + i : columns - 1;
      end[i] = ends[cell];
      length[i] = end[i] - (cell > 0 ? ends[cell - 1] + 1 : start);
    }
    refused =
        _mm256_or_si256(refused, ReadEight(text, end, Load32(length), columns - k > 4, points, row + k));
  }
  return _mm256_testz_si256(refused, refused) != 0;
}

}  // namespace
}  // namespace avx2
SIMD_END

const ScanStages kAvx2ScanStages = {avx2::IndexPiece, avx2::ReadRow, avx2::CountFullLines};

}  // namespace velmora
