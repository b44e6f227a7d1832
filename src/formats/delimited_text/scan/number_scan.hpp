#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/trial/trial.hpp"
#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// The most columns of a line that can be told apart. A trial takes 64 of them at most.
inline constexpr int kMostColumns = 1024;

/// What to read from each line and where to put it.
struct ScanPlan {
  static constexpr std::uint8_t kNoSlot = 255;  // of a column that is left out

  int columns = 0;                                // read from each line, 1..kMostColumns
  std::array<std::uint8_t, kMostColumns> slot{};  // place in the frame of column k, from 0
  std::ptrdiff_t stride = 0;                      // floats from one frame to the next
  NumberLayout layout;
  bool dropRest = false;  // more columns in the line are meant to be left
};

/// What was not as it should be: how often, and where first.
struct ScanFault {
  std::int64_t count = 0;
  std::int64_t line = 0;
  int column = 0;  // from 1

  void Note(std::int64_t atLine, int atColumn) {
    if (count++ == 0) {
      line = atLine;
      column = atColumn;
    }
  }
  /// Adds what was noted further on in the text.
  void Add(const ScanFault& further) {
    if (count == 0) {
      *this = further;
    } else {
      count += further.count;
    }
  }
};

struct ScanFaults {
  ScanFault notNumbers;                              // read as 0
  ScanFault emptyFields;                             // read as 0
  ScanFault shortLines;                              // the columns that are missing are 0
  ScanFault longLines;                               // more columns than are read
  std::array<std::int64_t, kMostColumns> emptyIn{};  // empty fields of column k, from 0

  /// Adds what was noted further on in the text.
  void Add(const ScanFaults& further);
};

/// How far a scan came.
struct ScanProgress {
  std::size_t bytes = 0;
  std::int64_t rows = 0;
  std::int64_t lines = 0;  // rows and blank lines
};

/// The number that `token` is from its first to its last character, correctly rounded to 32 bits:
/// sign, digits, decimal sign, exponent. False when it is none or lies outside the range.
bool ReadNumber(std::string_view token, bool decimalComma, float& value);

/// The text of a column (from 1) of a line; empty when there is none.
std::string_view CellOf(std::string_view line, const NumberLayout& layout, int column);

/// A line of nothing but blanks and tabs.
bool IsBlankLine(std::string_view line);

/// Reads one line, which must not be blank, into one frame.
void ScanLine(std::string_view line, const ScanPlan& plan, float* frame, std::int64_t lineNumber,
              ScanFaults& faults);

/// Consecutive frames, `stride` of the plan apart, that rows are read into.
struct FrameRoom {
  float* first = nullptr;
  std::int64_t rows = 0;
};

/// Reads whole lines into consecutive frames until `room` is full or the text ends. Blank lines give
/// no row. `firstLine` is the number of the first line, for the faults.
ScanProgress ScanRows(std::string_view text, const ScanPlan& plan, FrameRoom room, std::int64_t firstLine,
                      ScanFaults& faults);

}  // namespace velmora
