#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velmora {

/// A table as a result view shows it and as a recipe's info lists it: one cell a column in every row.
struct ResultTable {
  /// A number, a text, or nothing: what cannot be told is empty, and so is shown what is no finite number.
  using Cell = std::variant<double, std::string, std::monostate>;
  /// How a column shows its numbers.
  using Format = std::function<std::string(double)>;

  std::string name;   // of the view: "frmCoeff"
  std::string title;  // what it is of
  std::vector<std::string> columns;
  std::vector<std::vector<Cell>> rows;
  /// By column; a column without one shows seven digits.
  std::vector<Format> formats{};
  /// Not shown for now: the view shows its graph instead.
  bool hidden = false;
};

/// Numbers through a pattern of FormatNumber ("0.000").
ResultTable::Format ThroughPattern(std::string pattern);
/// Fractions as percentages: 0.125 is "12.5%".
ResultTable::Format AsPercentage();
/// Probabilities: "0.0312", and "<0.0001" below that.
ResultTable::Format AsProbability();

/// An empty cell where there is no finite number.
ResultTable::Cell CellOf(double value);
ResultTable::Cell CellOf(const std::optional<double>& value);

/// A cell, of row and column from 0, as the grid shows it. A row may end early: what it lacks is empty.
std::string ShownCell(const ResultTable& table, std::size_t row, std::size_t column);

/// The columns' heads and all cells as the grid shows them: cells apart by tabs, each row ended by a line
/// break. Tabs and line breaks inside a text become blanks.
std::string TableText(const ResultTable& table);

/// The same with numbers in all their digits, as files have them.
std::string TableTextInFull(const ResultTable& table);

/// Puts the table in place of the one of its name, or behind the others.
void KeepTable(std::vector<ResultTable>& tables, ResultTable table);

}  // namespace velmora
