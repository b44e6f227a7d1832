#include <emmintrin.h>

#include "formats/delimited_text/scan/fast_scan_stages.hpp"
#include "formats/delimited_text/scan/fast_scan_tables.hpp"

namespace velmora {
namespace sse2 {
namespace {

using scan_tables::kLastBytes;
using scan_tables::kScales;
using scan_tables::kUpToPoint;

struct Masks {
  std::uint64_t ends;
  std::uint64_t lf;
  std::uint64_t cr;
};

// The instruction that counts bits is not on every machine of this width.
__attribute__((always_inline)) inline std::uint32_t CountBits(std::uint64_t bits) {
  bits -= bits >> 1 & 0x5555555555555555U;
  bits = (bits & 0x3333333333333333U) + (bits >> 2 & 0x3333333333333333U);
  bits = (bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0FU;
  return static_cast<std::uint32_t>(bits * 0x0101010101010101U >> 56);
}

#include "formats/delimited_text/scan/fast_scan_positions.inc"

__attribute__((always_inline)) inline __m128i Load16(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

class Finder {
 public:
  explicit Finder(const ScanCharacters& characters) {
    for (int k = 0; k < 3; ++k) {
      separators_[k] = _mm_set1_epi8(characters.separators[k]);
    }
  }

  __attribute__((always_inline)) Masks Find(const char* text) const {
    Masks masks{0, 0, 0};
    for (std::ptrdiff_t quarter = 3; quarter >= 0; --quarter) {
      const __m128i bytes = Load16(text + 16 * quarter);
      const __m128i lf = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n'));
      const __m128i cr = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r'));
      __m128i ends = _mm_or_si128(_mm_or_si128(lf, cr), _mm_cmpeq_epi8(bytes, _mm_set1_epi8(' ')));
      for (const __m128i& separator : separators_) {
        ends = _mm_or_si128(ends, _mm_cmpeq_epi8(bytes, separator));
      }
      masks.ends = masks.ends << 16 | Bits(ends);
      masks.lf = masks.lf << 16 | Bits(lf);
      masks.cr = masks.cr << 16 | Bits(cr);
    }
    return masks;
  }

  __attribute__((always_inline)) static Masks FindWhite(const char* text) {
    Masks masks{0, 0, 0};
    for (std::ptrdiff_t quarter = 3; quarter >= 0; --quarter) {
      const __m128i bytes = Load16(text + 16 * quarter);
      masks.ends = masks.ends << 16 | Bits(_mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(' ')), bytes));
      masks.lf = masks.lf << 16 | Bits(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')));
      masks.cr = masks.cr << 16 | Bits(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')));
    }
    return masks;
  }

 private:
  static std::uint64_t Bits(__m128i bytes) { return static_cast<std::uint32_t>(_mm_movemask_epi8(bytes)); }

  __m128i separators_[3];
};

#include "formats/delimited_text/scan/fast_scan_index.inc"

// The numbers of a row, as many as make whole groups: the last one is repeated.
struct Cells {
  static constexpr int kGroup = 4;

  std::uint32_t end[kMostCells + kGroup];
  std::uint32_t length[kMostCells + kGroup];  // without the sign
  std::uint32_t sign[kMostCells + kGroup];    // bit 31
};

// False when one is empty or longer than 16 characters. By table and without a branch: signs come at
// random, and a branch on them would cost more than all the rest of a number.
__attribute__((always_inline)) inline bool MeasureCells(const char* text, std::uint32_t start,
                                                        const std::uint32_t* ends, int columns,
                                                        Cells& cells) {
  std::uint32_t outside = 0;
  for (int k = 0; k < columns; ++k) {
    const std::uint32_t sign = scan_tables::kSigns.of[static_cast<unsigned char>(text[start])];
    const std::uint32_t length = ends[k] - start - (sign & 1U);
    outside |= (length - 1) & ~15U;
    cells.end[k] = ends[k];
    cells.length[k] = length;
    cells.sign[k] = sign;
    start = ends[k] + 1;
  }
  for (int k = columns; k % Cells::kGroup != 0; ++k) {
    cells.end[k] = cells.end[columns - 1];
    cells.length[k] = cells.length[columns - 1];
    cells.sign[k] = cells.sign[columns - 1];
  }
  return outside == 0;
}

// The values 0..9 of a number's digits, right-aligned in 16 bytes with the point taken out.
struct Digits {
  __m128i values;
  const double* scale;
};

__attribute__((always_inline)) inline Digits TakeDigits(const char* end, std::uint32_t length,
                                                        __m128i points) {
  const __m128i bytes = Load16(end - 16);
  const __m128i inside = Load16(kLastBytes.row[length]);
  const __m128i atPoint = _mm_and_si128(_mm_cmpeq_epi8(bytes, points), inside);
  const auto place = __builtin_ctz(static_cast<std::uint32_t>(_mm_movemask_epi8(atPoint)) | 1U << 16);
  const __m128i values = _mm_and_si128(_mm_sub_epi8(bytes, _mm_set1_epi8('0')), inside);
  const __m128i before = Load16(kUpToPoint.row[place]);
  return {_mm_or_si128(_mm_and_si128(before, _mm_slli_si128(values, 1)), _mm_andnot_si128(before, values)),
          &kScales.of[length][place]};
}

// Four numbers of four digits each. a + 256 b times 10 * 256 + 1 has 10 a + b in its upper byte.
__attribute__((always_inline)) inline __m128i Fours(__m128i digits) {
  const __m128i pairs = _mm_srli_epi16(_mm_mullo_epi16(digits, _mm_set1_epi16(2561)), 8);
  return _mm_madd_epi16(pairs, _mm_set1_epi32(1 << 16 | 100));
}

// The whole numbers of two cells: upper eight digits times 10^8 plus lower eight, exact in a double
// since there are no more than fifteen in all.
__attribute__((always_inline)) inline __m128d WholeNumbers(__m128i a, __m128i b) {
  const __m128i eights = _mm_madd_epi16(_mm_packs_epi32(Fours(a), Fours(b)), _mm_set1_epi32(1 << 16 | 10000));
  const __m128d first = _mm_cvtepi32_pd(eights);
  const __m128d second = _mm_cvtepi32_pd(_mm_unpackhi_epi64(eights, eights));
  return _mm_add_pd(_mm_mul_pd(_mm_unpacklo_pd(first, second), _mm_set1_pd(1e8)),
                    _mm_unpackhi_pd(first, second));
}

bool ReadRow(const char* text, std::uint32_t start, const std::uint32_t* ends, int columns, char point,
             float* row) {
  Cells cells;
  if (!MeasureCells(text, start, ends, columns, cells)) {
    return false;
  }
  const __m128i points = _mm_set1_epi8(point);
  const __m128i belowMask = _mm_set_epi32(0, static_cast<int>(scan_tables::kBelow32Bits), 0,
                                          static_cast<int>(scan_tables::kBelow32Bits));
  const __m128i halfWay =
      _mm_set_epi32(-1, static_cast<int>(scan_tables::kHalfWay), -1, static_cast<int>(scan_tables::kHalfWay));
  __m128i refused = _mm_setzero_si128();
  __m128i noDigits = _mm_setzero_si128();
  for (int k = 0; k < columns; k += 2) {
    const Digits a = TakeDigits(text + cells.end[k], cells.length[k], points);
    const Digits b = TakeDigits(text + cells.end[k + 1], cells.length[k + 1], points);
    noDigits = _mm_or_si128(noDigits, _mm_subs_epu8(_mm_max_epu8(a.values, b.values), _mm_set1_epi8(9)));
    const __m128d scale = _mm_loadh_pd(_mm_load_sd(a.scale), b.scale);
    const __m128d value = _mm_div_pd(WholeNumbers(a.values, b.values), scale);
    const __m128i below = _mm_and_si128(_mm_castpd_si128(value), belowMask);
    refused = _mm_or_si128(refused, _mm_cmpeq_epi32(below, halfWay));
    const __m128i signs = _mm_and_si128(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(cells.sign + k)),
                                        _mm_set1_epi32(static_cast<int>(0x80000000U)));
    const __m128i rounded = _mm_or_si128(_mm_castps_si128(_mm_cvtpd_ps(value)), signs);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(row + k), rounded);
  }
  const __m128i wrong = _mm_or_si128(refused, noDigits);
  return _mm_movemask_epi8(_mm_cmpeq_epi8(wrong, _mm_setzero_si128())) == 0xFFFF;
}

}  // namespace
}  // namespace sse2

const ScanStages kSse2ScanStages = {sse2::IndexPiece, sse2::ReadRow, sse2::CountFullLines};

}  // namespace velmora
