#include "import/text_parser/full_lines.hpp"

#include <emmintrin.h>

#include <bit>

namespace velmora {
namespace {

struct Masks {
  std::uint64_t lf = 0;
  std::uint64_t cr = 0;
  std::uint64_t blank = 0;
};

Masks Find(const char* text) {
  const auto bits = [](__m128i bytes) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(_mm_movemask_epi8(bytes)));
  };
  Masks masks;
  for (std::ptrdiff_t quarter = 3; quarter >= 0; --quarter) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + 16 * quarter));
    const __m128i blank =
        _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(' ')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\t')));
    masks.lf = masks.lf << 16 | bits(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')));
    masks.cr = masks.cr << 16 | bits(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')));
    masks.blank = masks.blank << 16 | bits(blank);
  }
  return masks;
}

}  // namespace

FullLines CountFullLines(std::string_view text) {
  FullLines full;
  std::uint64_t afterCr = 0;
  std::uint64_t afterWhite = 1;  // a line end as the first character ends a blank line
  for (std::size_t base = 0; base + 64 <= text.size(); base += 64) {
    const Masks masks = Find(text.data() + base);
    const std::uint64_t pairs = masks.lf & (masks.cr << 1 | afterCr);
    const std::uint64_t ends = (masks.lf & ~pairs) | masks.cr;
    const std::uint64_t white = masks.blank | masks.lf | masks.cr;
    if ((ends & (white << 1 | afterWhite)) != 0) {
      return {};
    }
    afterCr = masks.cr >> 63;
    afterWhite = white >> 63;
    full.lines += std::popcount(ends);
    if (const std::uint64_t last = ends | pairs; last != 0) {
      full.bytes = base + 64 - static_cast<std::size_t>(std::countl_zero(last));
    }
  }
  return full;
}

}  // namespace velmora
