#include "core/text/number_text.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

constexpr std::array<std::uint64_t, 17> kPowersOf10 = [] {
  std::array<std::uint64_t, 17> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) {
    powers[i] = 10 * powers[i - 1];
  }
  return powers;
}();

char* PutLibrary(char* to, float value) {
  return std::to_chars(to, to + kLongestNumber, value).ptr;
}

// Eight decimal digits, one a byte, the first in the lowest byte: halves, quarters and single digits
// split off side by side in one word.
std::uint64_t EightDigits(std::uint64_t value) {
  const std::uint64_t fours = value / 10000 | (value % 10000) << 32U;
  const std::uint64_t hundreds = (fours * 10486 >> 20U) & 0x7F0000007FU;
  const std::uint64_t twos = hundreds | (fours - 100 * hundreds) << 16U;
  const std::uint64_t tens = (twos * 103 >> 10U) & 0x000F000F000F000FU;
  return tens | (twos - 10 * tens) << 8U;
}

int DigitCount(std::uint64_t value) {
  const int count = static_cast<int>(std::bit_width(value | 1U)) * 1233 >> 12;  // log10(2) as a fraction
  return count + (value >= kPowersOf10[static_cast<std::size_t>(count)] ? 1 : 0);
}

// Sixteen characters in one word, the first in the lowest byte.
__extension__ using Text16 = unsigned __int128;

// digits / 10^decimals for digits below 10^16, without the zeros at the end when `drop`. Stores a whole
// block where a few bytes are meant: quicker than asking how many.
char* PutDecimal(char* to, std::uint64_t digits, int decimals, bool drop) {
  constexpr std::uint64_t kZeros = 0x3030303030303030U;
  const std::uint64_t rest = digits / 100000000;
  const std::uint64_t first = rest < 10 ? rest << 56U : EightDigits(rest);
  const std::uint64_t last = EightDigits(digits - 100000000 * rest);
  const Text16 text = Text16{last | kZeros} << 64U | (first | kZeros);
  const auto putLast = [text](char* at, int count) {
    const Text16 tail = text >> static_cast<unsigned>(8 * (16 - count));
    std::memcpy(at, &tail, sizeof tail);
  };
  const int zeros = drop ? std::min(std::countl_zero(last) / 8, decimals) : 0;
  const int whole = std::max(DigitCount(digits) - decimals, 1);
  putLast(to, whole + decimals);
  to += whole;
  if (decimals > zeros) {
    *to++ = '.';
    putLast(to, decimals);
    to += decimals - zeros;
  }
  return to;
}

// A decimal number: digits / 10^decimals.
struct Decimal {
  std::uint64_t digits;
  int decimals;
};

// A choice that no branch predictor could learn; `condition` is 0 or 1.
std::uint64_t Select(std::uint64_t condition, std::uint64_t yes, std::uint64_t no) {
  return no ^ ((no ^ yes) & (0 - condition));
}

// The shortest decimal that rounds to c / 2^p, and the closest of those; for 1 <= p <= 36 and c of 24
// bits, where every product below is exact in 64 bits. One step of the decimal grid is at most the
// distance of neighbouring floats and ten steps are more, so the rounding interval holds one or more
// numbers of the grid and at most one multiple of ten: that one is shorter. See R. Giulietti, "The
// Schubfach way to render doubles" (2020), section 8.
Decimal ShortestDecimal(std::uint64_t c, int p) {
  const int decimals = (p * 1233 >> 12) + 1;  // log10(2^p), rounded up
  const std::uint64_t unit = kPowersOf10[static_cast<std::size_t>(decimals)];
  const int shift = p + 2;  // all in quarters of the distance between neighbours
  const std::uint64_t value = 4 * c * unit;
  const std::uint64_t below = value - (c == 1U << 23U ? 1 : 2) * unit;  // a power of two has a closer one
  const std::uint64_t above = value + 2 * unit;
  const std::uint64_t open = c & 1U;  // an even significand owns the ends of its interval
  const auto inside = [=](std::uint64_t digits) {
    const std::uint64_t scaled = digits << static_cast<unsigned>(shift);
    return std::uint64_t{scaled >= below + open} & std::uint64_t{scaled + open <= above};
  };
  const std::uint64_t low = value >> static_cast<unsigned>(shift);
  const std::uint64_t ten = low / 10 * 10;
  const std::uint64_t middle = (2 * low + 1) << static_cast<unsigned>(shift - 1);
  const std::uint64_t closer = value + (low & 1U) > middle;
  const std::uint64_t digits = low + ((inside(low + 1) & closer) | (inside(low) ^ 1U));
  return {Select(inside(ten), ten, Select(inside(ten + 10), ten + 10, digits)), decimals};
}

// For a number below 0.001 and not below 0.0001.
bool HasOneDigit(const Decimal& number) {
  return number.digits % kPowersOf10[static_cast<std::size_t>(number.decimals - 4)] == 0;
}

}  // namespace

char* PutShortest(char* to, float value) {
  const auto bits = std::bit_cast<std::uint32_t>(value);
  const float magnitude = std::abs(value);
  constexpr float kLowest = 0x1p-13F;
  constexpr float kHighest = 0x1p24F;
  if (!(magnitude >= kLowest && magnitude < kHighest)) {
    return PutLibrary(to, value);
  }
  const int p = 150 - static_cast<int>((bits >> 23U) & 0xFFU);
  const std::uint64_t c = (bits & 0x7FFFFFU) | 0x800000U;
  Decimal number{c, 0};
  if (p > 23 || (c & ((1U << static_cast<unsigned>(p)) - 1)) != 0) {
    number = ShortestDecimal(c, p);
    if (magnitude < 0.001F && HasOneDigit(number)) {
      return PutLibrary(to, value);  // 2e-04 is shorter
    }
  } else {
    number.digits = c >> static_cast<unsigned>(p);
    if (number.digits % 100000 == 0) {
      return PutLibrary(to, value);  // 1e+05 is shorter
    }
  }
  *to = '-';
  to += bits >> 31U;
  return PutDecimal(to, number.digits, number.decimals, true);
}

char* PutFixed(char* to, float value, int decimals, int width) {
  std::array<char, kLongestNumber> text;  // NOLINT: filled below
  char* end = text.data();
  // A 24-bit number times a power of ten up to 10^6 is exact in 64-bit arithmetic.
  const double scaled =
      std::abs(double{value}) * static_cast<double>(kPowersOf10[static_cast<std::size_t>(decimals)]);
  if (scaled < 0x1p52) {
    if (std::signbit(value)) {
      *end++ = '-';
    }
    end = PutDecimal(end, static_cast<std::uint64_t>(RoundHalfEven(scaled)), decimals, false);
  } else {
    const std::string pattern = "0." + std::string(static_cast<std::size_t>(decimals), '0');
    const std::string number = FormatNumber(value, decimals > 0 ? pattern : "0");
    end = std::copy(number.begin(), number.end(), end);
  }
  const std::ptrdiff_t blanks = std::max<std::ptrdiff_t>(width - (end - text.data()), 0);
  to = std::fill_n(to, blanks, ' ');
  return std::copy(text.data(), end, to);
}

}  // namespace velmora
