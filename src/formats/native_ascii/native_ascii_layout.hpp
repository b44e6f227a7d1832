#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace velmora::native_ascii {

/// The native ASCII file (.VMA, and .VME with ensemble averages): eight header lines that begin with
/// kMark, then one line a sample; Windows-1252. Everything stands in fields of ten columns: field 0
/// belongs to the time column, field c to channel c.
inline constexpr std::string_view kMark = "* ";
inline constexpr std::size_t kFieldWidth = 10;

enum HeaderLine : std::size_t {
  kNameLine = 1,      // the file itself
  kSourceLine = 2,    // the file that the data came from
  kTitleLine = 3,     // columns 3 to 72
  kRateLine = 4,      // rate and duration in fields 0 and 1
  kSamplesLine = 5,   // first and last sample in fields 0 and 1
  kChannelsLine = 6,  // a number per channel; its length tells how many there are
  kLabelsLine = 7,
  kRatesLine = 8,
  kHeaderLineCount = 8,
};

inline constexpr std::size_t kTitleColumn = 3;
inline constexpr std::size_t kTitleLength = 70;

/// Columns count from 1; shorter lines give what they have.
inline std::string_view Columns(std::string_view line, std::size_t first, std::size_t count) {
  return line.substr(std::min(first - 1, line.size()), count);
}

inline std::string_view Field(std::string_view line, std::size_t field) {
  return Columns(line, kFieldWidth * field + 1, kFieldWidth);
}

/// Field 0 of a header line without the asterisk before it.
inline std::string_view MarkedField(std::string_view line) {
  return Columns(line, 2, kFieldWidth - 1);
}

}  // namespace velmora::native_ascii
