#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Rows for a table of a study, as one step of one input adds them.
struct TableRows {
  std::string file;
  std::vector<std::string> columns;
  std::vector<std::vector<std::string>> rows;
};

/// What separates the cells of such a file: ',' of a .csv, a tab of a .tab; nothing for any other.
std::optional<char> SeparatorOf(std::string_view path);

/// A table that grows by rows. Rows with other columns than those before add theirs at the right; a cell that
/// a row has no column for stays empty. Of columns with one name the first goes with the first, the second
/// with the second.
class StudyTable {
 public:
  void Add(const TableRows& rows);

  /// A line for the names of the columns and one a row, each ended by '\n'. Cells with the separator, a quote
  /// or a line break in them are quoted as RFC 4180 says.
  [[nodiscard]] std::string Text(char separator) const;

 private:
  std::size_t ColumnOf(const std::string& name, std::size_t occurrence);

  std::vector<std::string> columns_;
  std::vector<std::vector<std::string>> rows_;
};

/// Reads what Text writes, with '\n' or "\r\n" behind its lines, the last of which may have none.
/// Throws std::invalid_argument where a quote is not closed or a row is longer than the names of the columns.
TableRows ReadTableText(std::string_view text, char separator);

}  // namespace velmora
