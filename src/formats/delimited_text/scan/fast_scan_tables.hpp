#pragma once

#include <cstdint>
#include <limits>

#include "formats/delimited_text/scan/fast_scan_stages.hpp"

namespace velmora::scan_tables {

// Plain arrays: nothing of the standard library may be compiled for the wide targets that use them.

struct ByteRows {
  alignas(64) std::uint8_t row[17][16] = {};
};

/// Row n selects the last n of 16 bytes.
inline constexpr ByteRows kLastBytes = [] {
  ByteRows rows;
  for (int n = 0; n <= 16; ++n) {
    for (int i = 16 - n; i < 16; ++i) {
      rows.row[n][i] = 0xFF;
    }
  }
  return rows;
}();

/// Row p selects the bytes up to a point at p; p 16, no point, selects none.
inline constexpr ByteRows kUpToPoint = [] {
  ByteRows rows;
  for (int p = 0; p < 16; ++p) {
    for (int i = 0; i <= p; ++i) {
      rows.row[p][i] = 0xFF;
    }
  }
  return rows;
}();

/// What the whole number of a text is divided by: 10 to the number of digits behind its point, by the
/// length of the text (sign apart) and the place of the point in the 16 bytes that end with it. A
/// quotient that must not be used is marked: a point alone is no number, and sixteen digits may not
/// fit the 53 bits of a double. The mark is a NaN that looks half-way between two 32-bit numbers.
struct Scales {
  double of[17][32] = {};
};

inline constexpr std::uint64_t kHalfWay = 0x10000000;
inline constexpr std::uint64_t kBelow32Bits = 0x1FFFFFFF;

inline constexpr Scales kScales = [] {
  const double refused = __builtin_bit_cast(double, std::uint64_t{0x7FF8000000000000} | kHalfWay);
  Scales scales;
  for (int length = 0; length <= 16; ++length) {
    double scale = 1.0;
    scales.of[length][16] = length == 0 || length == 16 ? refused : 1.0;
    for (int place = 15; place >= 0; --place) {
      scales.of[length][place] = length <= 1 ? refused : scale;
      scale *= 10.0;
    }
  }
  return scales;
}();

/// 10 to the number of digits behind the point, by the point's place from the end, counted from 1; 0 is no
/// point.
struct PlaceScales {
  double of[32] = {};
};

inline constexpr PlaceScales kPlaceScales = [] {
  PlaceScales scales;
  double scale = 1.0;
  scales.of[0] = 1.0;
  for (int place = 1; place < 32; ++place) {
    scales.of[place] = scale;
    scale *= place < 16 ? 10.0 : 1.0;
  }
  return scales;
}();

/// All the characters that end a number differ in their low four bits: by these, the only one that a byte
/// could be.
struct EndTable {
  constexpr explicit EndTable(const ScanCharacters& characters) {
    for (int k = 0; k < 16; ++k) {
      of[k] = static_cast<char>(~k);
    }
    for (const char c : characters.separators) {
      of[c & 15] = c;
    }
    for (const char c : {' ', '\r', '\n'}) {
      of[c & 15] = c;
    }
  }

  char of[16] = {};
};

/// By the first character of a number: bit 0 for a sign, bit 31 for a minus.
struct Signs {
  std::uint32_t of[256] = {};
};

inline constexpr Signs kSigns = [] {
  Signs signs;
  signs.of[static_cast<unsigned char>('+')] = 1;
  signs.of[static_cast<unsigned char>('-')] = 0x80000001;
  return signs;
}();

}  // namespace velmora::scan_tables

/// What the wide scans know of a number, summed over its bytes: the place of its point from the end,
/// counted from 1, a minus, and above these bits the count of its digits.
namespace velmora::scan_marks {

inline constexpr int kPlaceBits = 31;
inline constexpr int kPointFirst = 16;  // sixteen characters, the first a point
inline constexpr int kMinus = 32;
inline constexpr int kDigit = 64;

/// Fifteen digits fit the 53 bits of a double.
inline constexpr std::int64_t kMostWhole = 999'999'999'999'999;

}  // namespace velmora::scan_marks
