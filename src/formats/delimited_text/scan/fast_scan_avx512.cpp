#include <immintrin.h>

#include "core/simd.hpp"
#include "formats/delimited_text/scan/fast_scan_stages.hpp"
#include "formats/delimited_text/scan/fast_scan_tables.hpp"

namespace velmora {

SIMD_BEGIN_AVX512
namespace avx512 {
namespace {

struct Masks {
  std::uint64_t ends;
  std::uint64_t lf;
  std::uint64_t cr;
};

__attribute__((always_inline)) inline std::uint32_t CountBits(std::uint64_t bits) {
  return static_cast<std::uint32_t>(__builtin_popcountll(bits));
}

// Writes the positions of the set bits (up to 16 places behind them are overwritten) and returns their end.
__attribute__((always_inline)) inline std::uint32_t* PutPositions(std::uint32_t* to, std::uint64_t bits,
                                                                  std::uint32_t base) {
  const __m512i places = _mm512_set_epi32(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0);
#pragma GCC unroll 4
  for (std::uint32_t quarter = 0; quarter < 64; quarter += 16) {
    const auto mask = static_cast<__mmask16>(bits >> quarter);
    const __m512i here = _mm512_add_epi32(places, _mm512_set1_epi32(static_cast<int>(base + quarter)));
    _mm512_storeu_si512(to, _mm512_maskz_compress_epi32(mask, here));
    to += CountBits(mask);
  }
  return to;
}

class Finder {
 public:
  __attribute__((always_inline)) explicit Finder(const ScanCharacters& characters) {
    const scan_tables::EndTable table(characters);
    table_ = _mm512_broadcast_i32x4(_mm_loadu_si128(reinterpret_cast<const __m128i*>(table.of)));
  }

  __attribute__((always_inline)) Masks Find(const char* text) const {
    const __m512i bytes = _mm512_loadu_si512(text);
    return {_mm512_cmpeq_epi8_mask(bytes, _mm512_shuffle_epi8(table_, bytes)),
            _mm512_cmpeq_epi8_mask(bytes, _mm512_set1_epi8('\n')),
            _mm512_cmpeq_epi8_mask(bytes, _mm512_set1_epi8('\r'))};
  }

  __attribute__((always_inline)) static Masks FindWhite(const char* text) {
    const __m512i bytes = _mm512_loadu_si512(text);
    return {_mm512_cmple_epu8_mask(bytes, _mm512_set1_epi8(' ')),
            _mm512_cmpeq_epi8_mask(bytes, _mm512_set1_epi8('\n')),
            _mm512_cmpeq_epi8_mask(bytes, _mm512_set1_epi8('\r'))};
  }

 private:
  __m512i table_;
};

#include "formats/delimited_text/scan/fast_scan_index.inc"

// Four numbers side by side, each right-aligned in 16 bytes.
struct FourCells {
  __m512i values;  // of the digits, 0 in the place of the sign and in front of it
  __m512i marks;   // in either half of each number
};

// Distance of each byte of a number to its last one.
__attribute__((always_inline)) inline __m512i FromEnd() {
  return _mm512_broadcast_i32x4(_mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
}

__attribute__((always_inline)) inline __m512i LoadFour(const char* text, const std::uint32_t* ends) {
  const auto load = [ text, ends ](int k) __attribute__((always_inline)) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + ends[k] - 16));
  };
  __m512i bytes = _mm512_castsi128_si512(load(0));
  bytes = _mm512_inserti32x4(bytes, load(2), 1);
  bytes = _mm512_inserti32x4(bytes, load(4), 2);
  return _mm512_inserti32x4(bytes, load(6), 3);
}

__attribute__((always_inline)) inline FourCells TakeCells(__m512i bytes, __m512i lengths, __m512i points) {
  const __m512i fromEnd = FromEnd();
  const __m512i fromBehind = _mm512_add_epi8(fromEnd, _mm512_set1_epi8(1));
  const __mmask64 inside = _mm512_cmplt_epu8_mask(fromEnd, lengths);
  const __mmask64 first = _mm512_cmpeq_epi8_mask(fromBehind, lengths);
  const __mmask64 minus = _mm512_mask_cmpeq_epi8_mask(first, bytes, _mm512_set1_epi8('-'));
  const __mmask64 plus = _mm512_mask_cmpeq_epi8_mask(first, bytes, _mm512_set1_epi8('+'));
  const __mmask64 point = _mm512_mask_cmpeq_epi8_mask(inside, bytes, points);
  const __mmask64 unsignedPart = inside & ~(minus | plus);
  __m512i marks = _mm512_maskz_mov_epi8(unsignedPart, _mm512_set1_epi8(scan_marks::kDigit));
  marks = _mm512_mask_mov_epi8(marks, point, fromBehind);
  marks = _mm512_mask_mov_epi8(marks, minus, _mm512_set1_epi8(scan_marks::kMinus));
  return {_mm512_maskz_sub_epi8(unsignedPart, bytes, _mm512_set1_epi8('0')),
          _mm512_sad_epu8(marks, _mm512_setzero_si512())};
}

// Moves the digits in front of the point one byte towards the end, over the point. `places` has the
// place of each number's point less one in the byte that `pick` selects.
__attribute__((always_inline)) inline __m512i DropPoints(__m512i values, __m512i places, __m128i pick) {
  const __m512i place = _mm512_shuffle_epi8(places, _mm512_broadcast_i32x4(pick));
  const __mmask64 upToPoint = _mm512_cmple_epu8_mask(place, FromEnd());
  const __m512i oneUp =
      _mm512_broadcast_i32x4(_mm_set_epi8(14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0, -1));
  return _mm512_mask_shuffle_epi8(values, upToPoint, values, oneUp);
}

// Four numbers of four digits each for every cell.
__attribute__((always_inline)) inline __m512i Fours(__m512i digits) {
  const __m512i pairs = _mm512_maddubs_epi16(digits, _mm512_set1_epi16(1 << 8 | 10));
  return _mm512_madd_epi16(pairs, _mm512_set1_epi32(1 << 16 | 100));
}

// The whole numbers of eight cells, the even ones in `evens`: upper eight digits times 10^8 plus lower
// eight.
__attribute__((always_inline)) inline __m512i WholeNumbers(__m512i evens, __m512i odds) {
  const __m512i eights =
      _mm512_madd_epi16(_mm512_packs_epi32(Fours(evens), Fours(odds)), _mm512_set1_epi32(1 << 16 | 10000));
  return _mm512_add_epi64(_mm512_mul_epu32(eights, _mm512_set1_epi64(100000000)),
                          _mm512_srli_epi64(eights, 32));
}

__attribute__((always_inline)) inline __m512d Scales(__m512i places) {
  return _mm512_permutex2var_pd(_mm512_loadu_pd(scan_tables::kPlaceScales.of), places,
                                _mm512_loadu_pd(scan_tables::kPlaceScales.of + 8));
}

struct Text {
  const char* bytes;
  __m512i points;  // the decimal sign in every byte
};

// Reads up to eight numbers, those that `wanted` has bits for; false when one is not of the plain sort.
__attribute__((always_inline)) inline bool ReadEight(const Text& text, const std::uint32_t* ends,
                                                     __m512i evenLengths, __m512i oddLengths, __mmask8 wanted,
                                                     float* row) {
  const FourCells even = TakeCells(LoadFour(text.bytes, ends), evenLengths, text.points);
  const FourCells odd = TakeCells(LoadFour(text.bytes, ends + 1), oddLengths, text.points);
  const __m512i marks = _mm512_or_si512(_mm512_unpacklo_epi64(even.marks, odd.marks),
                                        _mm512_unpackhi_epi64(even.marks, odd.marks));
  const __m512i places = _mm512_and_si512(marks, _mm512_set1_epi64(scan_marks::kPlaceBits));
  const __m512i lessOne = _mm512_sub_epi64(places, _mm512_set1_epi64(1));
  const __m512i evenDigits = DropPoints(even.values, lessOne, _mm_setzero_si128());
  const __m512i oddDigits = DropPoints(odd.values, lessOne, _mm_set1_epi8(8));
  const __m512i whole = WholeNumbers(evenDigits, oddDigits);
  const __m512d value = _mm512_div_pd(_mm512_cvtepu64_pd(whole), Scales(places));

  const __mmask64 noDigits =
      _mm512_cmpgt_epu8_mask(_mm512_max_epu8(evenDigits, oddDigits), _mm512_set1_epi8(9));
  const __m512i below =
      _mm512_and_si512(_mm512_castpd_si512(value), _mm512_set1_epi64(scan_tables::kBelow32Bits));
  const __mmask8 halfWay = _mm512_cmpeq_epi64_mask(below, _mm512_set1_epi64(scan_tables::kHalfWay));
  const __mmask8 empty = _mm512_testn_epi64_mask(marks, _mm512_set1_epi64(~(scan_marks::kDigit - 1)));
  const __mmask8 tooLong = _mm512_cmpgt_epu64_mask(whole, _mm512_set1_epi64(scan_marks::kMostWhole));
  const __mmask8 pointFirst = _mm512_test_epi64_mask(marks, _mm512_set1_epi64(scan_marks::kPointFirst));

  const __m512i minus = _mm512_set1_epi64(scan_marks::kMinus);
  const __m512i signs = _mm512_slli_epi64(_mm512_and_si512(marks, minus), 63 - 5);
  const __m512d signedValue = _mm512_castsi512_pd(_mm512_or_si512(_mm512_castpd_si512(value), signs));
  _mm256_mask_storeu_ps(row, wanted, _mm512_cvtpd_ps(signedValue));
  return noDigits == 0 && ((halfWay | empty | tooLong | pointFirst) & wanted) == 0;
}

// The lengths of the `wanted` among sixteen numbers, which end at `behind`; the end in front of the first is
// the last of `before`. The others get the length 0.
__attribute__((always_inline)) inline __m512i Lengths(__m512i behind, __m512i before, __mmask16 wanted) {
  const __m512i starts = _mm512_sub_epi32(_mm512_alignr_epi32(behind, before, 15), _mm512_set1_epi32(-1));
  return _mm512_maskz_sub_epi32(wanted, behind, starts);
}

// Reads up to sixteen numbers, as ReadEight does.
__attribute__((always_inline)) inline bool ReadSixteen(const Text& text, const std::uint32_t* ends,
                                                       __m512i length, __mmask16 wanted, float* row) {
  const __m512i lessOne = _mm512_sub_epi32(length, _mm512_set1_epi32(1));
  if (_mm512_mask_cmpgt_epu32_mask(wanted, lessOne, _mm512_set1_epi32(15)) != 0) {
    return false;
  }
  const __m512i lengths = _mm512_broadcast_i32x4(_mm512_cvtepi32_epi8(length));
  const __m512i everyOther =
      _mm512_set_epi32(0x06060606, 0x06060606, 0x06060606, 0x06060606, 0x04040404, 0x04040404, 0x04040404,
                       0x04040404, 0x02020202, 0x02020202, 0x02020202, 0x02020202, 0, 0, 0, 0);
  const auto pick = [ lengths, everyOther ](char from) __attribute__((always_inline)) {
    return _mm512_shuffle_epi8(lengths, _mm512_add_epi8(everyOther, _mm512_set1_epi8(from)));
  };
  if (!ReadEight(text, ends, pick(0), pick(1), static_cast<__mmask8>(wanted), row)) {
    return false;
  }
  const auto others = static_cast<__mmask8>(wanted >> 8);
  return others == 0 || ReadEight(text, ends + 8, pick(8), pick(9), others, row + 8);
}

bool ReadRow(const char* bytes, std::uint32_t start, const std::uint32_t* ends, int columns, char point,
             float* row) {
  const Text text{bytes, _mm512_set1_epi8(point)};
  __m512i before = _mm512_set1_epi32(static_cast<int>(start - 1));
  int k = 0;
  for (; k + 16 <= columns; k += 16) {
    const __m512i behind = _mm512_loadu_si512(ends + k);
    if (!ReadSixteen(text, ends + k, Lengths(behind, before, 0xFFFF), 0xFFFF, row + k)) {
      return false;
    }
    before = behind;
  }
  if (k == columns) {
    return true;
  }
  const auto wanted = static_cast<__mmask16>((1U << (columns - k)) - 1);
  const __m512i last = _mm512_set1_epi32(static_cast<int>(ends[columns - 1]));
  const __m512i behind = _mm512_mask_loadu_epi32(last, wanted, ends + k);
  alignas(64) std::uint32_t end[16];
  _mm512_store_si512(end, behind);
  return ReadSixteen(text, end, Lengths(behind, before, wanted), wanted, row + k);
}

}  // namespace
}  // namespace avx512
SIMD_END

const ScanStages kAvx512ScanStages = {avx512::IndexPiece, avx512::ReadRow, avx512::CountFullLines};

}  // namespace velmora
