#pragma once

#include <string>
#include <string_view>

#include "core/workbench.hpp"
#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

inline constexpr std::string_view kDigits = "0123456789";

enum class LineKind {
  Data,
  Other,
  /// Other, and the character that decides it is not ASCII.
  NotAscii,
};

/// Whether a line can be numbers in columns: only characters of numbers and separators, in an order
/// that numbers allow, and at least one digit.
LineKind KindOfLine(std::string_view line, const NumberLayout& layout, int code);

/// The characters that part columns, blanks aside.
std::string_view ColumnSeparators(const NumberLayout& layout);

/// Columns of a data line: the separators count when there are any, else the groups between blanks.
int CountColumns(std::string_view line, const NumberLayout& layout, int code);

/// Whether a trial can hold so many columns.
bool CanBeRead(double columns);

/// Where the numbers start, and what makes it uncertain.
struct DataStart {
  int line = 0;  // 0: not found
  NumberLayout layout;
  std::string remark;  // for the person at the dialogue
};

/// The first data line of the header; behind text that follows a line of numbers of another shape.
/// Files without one are tried with semicolons between the columns.
DataStart FindStart(const TextHeader& header, int code);

/// Finds ParseSkip, the layout and the number of columns, and asks or tells where that fails.
/// `remark` gets what the dialogue should say. Returns false when the read is to be given up.
bool FindDataStart(Workbench& workbench, const TextHeader& header, ParseSettings& settings,
                   std::string& remark);

}  // namespace velmora
