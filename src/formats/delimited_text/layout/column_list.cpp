#include "formats/delimited_text/layout/column_list.hpp"

#include <algorithm>
#include <charconv>

namespace velmora {
namespace {

// Takes a column's number off the text; 0 when none stands there.
int TakeColumn(std::string_view& text, int most) {
  int column = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), column);
  text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
  return result.ec == std::errc() && column <= most ? std::max(column, 0) : 0;
}

void SkipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
}

}  // namespace

std::optional<std::vector<int>> ReadColumnList(std::string_view text, int most) {
  std::vector<int> columns;
  for (SkipBlanks(text); !text.empty(); SkipBlanks(text)) {
    const int first = TakeColumn(text, most);
    int last = first;
    if (text.starts_with('-')) {
      text.remove_prefix(1);
      last = TakeColumn(text, most);
    }
    if (first < 1 || last < first) {
      return std::nullopt;
    }
    for (int k = first; k <= last; ++k) {
      columns.push_back(k);
    }
    SkipBlanks(text);
    text.remove_prefix(text.starts_with(',') ? 1 : 0);
  }
  std::sort(columns.begin(), columns.end());
  columns.erase(std::unique(columns.begin(), columns.end()), columns.end());
  return columns;
}

std::string ColumnListText(const std::vector<int>& columns) {
  std::string text;
  for (const int column : columns) {
    text += (text.empty() ? "" : ", ") + std::to_string(column);
  }
  return text;
}

}  // namespace velmora
