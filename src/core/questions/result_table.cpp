#include "core/questions/result_table.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

std::string SevenDigits(double value) {
  constexpr int kDigits = 7;
  std::array<char, 32> text{};
  const auto [end, error] =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, kDigits);
  return {text.data(), end};
}

void AppendCell(std::string& text, std::string cell) {
  std::replace_if(
      cell.begin(), cell.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
  text += cell;
}

}  // namespace

ResultTable::Format ThroughPattern(std::string pattern) {
  return [pattern = std::move(pattern)](double value) { return FormatNumber(value, pattern); };
}

std::string ShownCell(const ResultTable& table, std::size_t row, std::size_t column) {
  const std::vector<ResultTable::Cell>& cells = table.rows[row];
  if (column >= cells.size()) {
    return {};
  }
  const double* number = std::get_if<double>(&cells[column]);
  if (number == nullptr) {
    return std::get<std::string>(cells[column]);
  }
  const bool formatted = column < table.formats.size() && table.formats[column] != nullptr;
  return formatted ? table.formats[column](*number) : SevenDigits(*number);
}

std::string TableText(const ResultTable& table) {
  std::string text;
  for (std::size_t k = 0; k < table.columns.size(); ++k) {
    text += k == 0 ? "" : "\t";
    AppendCell(text, table.columns[k]);
  }
  text += '\n';
  for (std::size_t row = 0; row < table.rows.size(); ++row) {
    for (std::size_t k = 0; k < table.columns.size(); ++k) {
      text += k == 0 ? "" : "\t";
      AppendCell(text, ShownCell(table, row, k));
    }
    text += '\n';
  }
  return text;
}

void KeepTable(std::vector<ResultTable>& tables, ResultTable table) {
  const auto same = std::find_if(tables.begin(), tables.end(),
                                 [&](const ResultTable& kept) { return kept.name == table.name; });
  if (same != tables.end()) {
    *same = std::move(table);
  } else {
    tables.push_back(std::move(table));
  }
}

}  // namespace velmora
