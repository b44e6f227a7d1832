#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmora {

/// The file type code of text in nobody's dialect.
inline constexpr std::int16_t kPlainTextCode = 15;

/// How the numbers of a line are told apart. Tabs always separate, and so do commas unless they are
/// decimal commas; blanks separate where no separator stands between two numbers.
struct NumberLayout {
  bool semicolons = false;    // ';' separates as well
  bool decimalComma = false;  // ',' is the decimal sign

  friend bool operator==(const NumberLayout&, const NumberLayout&) = default;
};

/// What the dialogue settles before the numbers are read.
struct ParseSettings {
  std::int32_t columns = 0;          // to be read, the time column included
  std::int32_t columnsFound = 0;     // in the data line; 0: unknown
  std::int32_t ParseSkip = 0;        // lines before the data
  std::int32_t ParseMaxRecords = 0;  // 0: all
  bool ParseHasTime = false;
  std::int32_t ParseTimeColumn = 1;  // from 1; 0: none
  bool ParseSkipToEndOfLine = false;
  NumberLayout layout;
  std::int32_t labelsLine = 0;  // number of the line that holds them; 0: none
  std::int32_t unitsLine = 0;
  std::string ParseLeaveOut;  // columns that are no channels, as ReadColumnList takes them

  [[nodiscard]] bool HasTime() const { return ParseHasTime && ParseTimeColumn > 0; }
  [[nodiscard]] bool IsTime(int column) const { return HasTime() && column == ParseTimeColumn; }
  /// The columns that become channels, in order; none behind the 64th, since more are not read.
  [[nodiscard]] std::vector<int> ChannelColumns() const;
  [[nodiscard]] int Channels() const { return static_cast<int>(ChannelColumns().size()); }
};

/// What the first lines of a text file say. Lines count from 1; 0: there is no such line.
struct TextHeader {
  static constexpr std::size_t kLines = 50;

  std::vector<std::string> lines;
  bool fileEnded = false;   // within these lines
  double rate = 0.0;        // Hz; 0: not given
  double statedRate = 0.0;  // in words, or with a comma, that may mean another rate: told when it differs
  double announcedRecords = 0.0;
  double announcedColumns = 0.0;
  double resolutionBits = 0.0;  // bioPlux
  std::string title;
  std::string timeLabel;
  bool hasTime = false;
  int labelsLine = 0;
  bool keywordNamesTime = false;  // the labels line's keyword stands over the time column
  int unitsLine = 0;
  int markerLabelsLine = 0;
  int markerUnitsLine = 0;
  int platesLine = 0;
  int lastLine = 0;  // the dialect's header ends here
  /// Of a table that this program saved: what separates its names, one for every column.
  std::string savedSeparator;

  [[nodiscard]] std::string Line(int number) const {
    const auto n = static_cast<std::size_t>(number);
    return n >= 1 && n <= lines.size() ? lines[n - 1] : std::string();
  }
};

}  // namespace velmora
