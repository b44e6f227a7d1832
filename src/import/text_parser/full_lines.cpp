#include "import/text_parser/full_lines.hpp"

#include <emmintrin.h>

#include <bit>

namespace velmora {
namespace {

struct Masks {
  std::uint64_t lf = 0;
  std::uint64_t cr = 0;
};

// Where a character stands among 64 bytes.
std::uint64_t Find(const __m128i* quarters, char character) {
  std::uint64_t mask = 0;
  for (int quarter = 3; quarter >= 0; --quarter) {
    const __m128i here = _mm_cmpeq_epi8(quarters[quarter], _mm_set1_epi8(character));
    mask = mask << 16 | static_cast<std::uint32_t>(_mm_movemask_epi8(here));
  }
  return mask;
}

bool HasCr(const __m128i* quarters) {
  __m128i any = _mm_setzero_si128();
  for (std::ptrdiff_t quarter = 0; quarter < 4; ++quarter) {
    any = _mm_or_si128(any, _mm_cmpeq_epi8(quarters[quarter], _mm_set1_epi8('\r')));
  }
  return _mm_movemask_epi8(any) != 0;
}

Masks Find(const char* text) {
  __m128i quarters[4];
  for (std::ptrdiff_t quarter = 0; quarter < 4; ++quarter) {
    quarters[quarter] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + 16 * quarter));
  }
  return {Find(quarters, '\n'), HasCr(quarters) ? Find(quarters, '\r') : 0};
}

bool IsWhite(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

}  // namespace

FullLines CountFullLines(std::string_view text) {
  FullLines full;
  std::uint64_t afterCr = 0;
  for (std::size_t base = 0; base + 64 <= text.size(); base += 64) {
    const Masks masks = Find(text.data() + base);
    const std::uint64_t pairs = masks.lf & (masks.cr << 1 | afterCr);
    std::uint64_t ends = (masks.lf & ~pairs) | masks.cr;
    if (const std::uint64_t last = ends | pairs; last != 0) {
      full.bytes = base + 64 - static_cast<std::size_t>(std::countl_zero(last));
    }
    for (; ends != 0; ends &= ends - 1) {
      const std::size_t end = base + static_cast<std::size_t>(std::countr_zero(ends));
      if (end == 0 || IsWhite(text[end - 1])) {
        return {};
      }
      ++full.lines;
    }
    afterCr = masks.cr >> 63;
  }
  return full;
}

}  // namespace velmora
