#pragma once

#include <cstddef>

namespace velmora {

/// Room that one number may need below, its alignment included.
inline constexpr std::size_t kLongestNumber = 64;

/// Writes the shortest text that reads back as the same 32-bit number and returns its end: the bytes
/// of std::to_chars, faster in the range of ordinary samples.
char* PutShortest(char* to, float value);

/// Writes `value` with 0 to 6 decimals, right-aligned in at least `width` (at most 20) columns, and
/// returns the end: the bytes of FormatNumber with the pattern "0.000...", padded on the left.
char* PutFixed(char* to, float value, int decimals, int width);

}  // namespace velmora
