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

std::string TextOf(const ResultTable::Cell& cell) {
  const std::string* text = std::get_if<std::string>(&cell);
  return text != nullptr ? *text : std::string();
}

// nullptr: there is none that could be shown.
const double* NumberIn(const ResultTable::Cell& cell) {
  const double* number = std::get_if<double>(&cell);
  return number != nullptr && std::isfinite(*number) ? number : nullptr;
}

void AppendCell(std::string& text, std::string cell) {
  std::replace_if(
      cell.begin(), cell.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
  text += cell;
}

template <typename CellText>
std::string Lines(const ResultTable& table, const CellText& cellText) {
  std::string text;
  for (std::size_t k = 0; k < table.columns.size(); ++k) {
    text += k == 0 ? "" : "\t";
    AppendCell(text, table.columns[k]);
  }
  text += '\n';
  for (std::size_t row = 0; row < table.rows.size(); ++row) {
    for (std::size_t k = 0; k < table.columns.size(); ++k) {
      text += k == 0 ? "" : "\t";
      AppendCell(text, cellText(row, k));
    }
    text += '\n';
  }
  return text;
}

}  // namespace

ResultTable::Format ThroughPattern(std::string pattern) {
  return [pattern = std::move(pattern)](double value) { return FormatNumber(value, pattern); };
}

ResultTable::Format AsPercentage() {
  return [](double value) { return FormatNumber(value * 100, "0.0") + "%"; };
}

ResultTable::Format AsProbability() {
  constexpr double kLeastShown = 0.0001;
  return [](double value) { return value < kLeastShown ? "<0.0001" : FormatNumber(value, "0.0000"); };
}

ResultTable::Cell CellOf(double value) {
  return std::isfinite(value) ? ResultTable::Cell(value) : ResultTable::Cell(std::monostate());
}

ResultTable::Cell CellOf(const std::optional<double>& value) {
  return value ? CellOf(*value) : ResultTable::Cell(std::monostate());
}

std::string ShownCell(const ResultTable& table, std::size_t row, std::size_t column) {
  const std::vector<ResultTable::Cell>& cells = table.rows[row];
  if (column >= cells.size()) {
    return {};
  }
  const double* number = NumberIn(cells[column]);
  if (number == nullptr) {
    return TextOf(cells[column]);
  }
  const bool formatted = column < table.formats.size() && table.formats[column] != nullptr;
  return formatted ? table.formats[column](*number) : SevenDigits(*number);
}

std::string TableText(const ResultTable& table) {
  return Lines(table, [&](std::size_t row, std::size_t column) { return ShownCell(table, row, column); });
}

std::string TableTextInFull(const ResultTable& table) {
  return Lines(table, [&](std::size_t row, std::size_t column) {
    const double* number = column < table.rows[row].size() ? NumberIn(table.rows[row][column]) : nullptr;
    return number != nullptr ? PlainNumber(*number) : ShownCell(table, row, column);
  });
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
