#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace velmora::fourier_file {

inline constexpr std::string_view kBias = "Bias";
inline constexpr std::string_view kEndOfHeader = "Harmonic";
inline constexpr int kMostHeaderLines = 20;

/// Lines that hold what people named: "Bias" or "Harmonic" in one of them says nothing.
inline constexpr std::array<std::string_view, 3> kNamingLines = {"Filename:", "Trial code:", "Channel:"};

/// A line of a harmonic has fields in fixed columns, from 0 here.
struct Columns {
  std::size_t first;
  std::size_t count;
};
inline constexpr Columns kHarmonic{0, 10};
inline constexpr Columns kFrequency{10, 10};  // a tab and nine characters: the last digit is dropped
inline constexpr Columns kCosine{22, 10};
inline constexpr Columns kSine{33, 10};

}  // namespace velmora::fourier_file
