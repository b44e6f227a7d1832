#include "run/study/collect.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <stdexcept>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "run/recipe/closest_name.hpp"
#include "run/recipe/text_pattern.hpp"
#include "run/report/info_json.hpp"

namespace velmora {
namespace {

/// Why a cell stays empty.
class NoValue : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

// Counted from 1; a number with a zero before it is a name, as the channels of a table are.
std::optional<std::size_t> CountedFrom1(std::string_view text) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = error == std::errc() && end == text.data() + text.size() && !text.starts_with('0');
  return whole && number > 0 ? std::optional(number - 1) : std::nullopt;
}

[[noreturn]] void FailToFind(const std::string& what, const std::string& name,
                             const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& known : names) {
    list += (list.empty() ? "" : ", ") + known;
  }
  throw NoValue("there is no " + what + " \"" + name + "\"" + DidYouMean(name, names) + ", but " +
                (list.empty() ? "none" : list));
}

bool IsCalled(const std::string& text, const std::string& name) {
  return IsPattern(name) ? FitsPattern(text, name) : EqualNoCase(Trim(text), Trim(name));
}

const ResultTable& FindTable(const Workbench& workbench, const std::string& name) {
  const std::vector<ResultTable>& tables = workbench.results.ResultTables;
  const std::optional<std::size_t> number = CountedFrom1(name);
  if (number && *number < tables.size()) {
    return tables[*number];
  }
  std::vector<std::string> titles;
  for (const ResultTable& table : tables) {
    if (IsCalled(table.title, name) || IsCalled(table.name, name)) {
      return table;
    }
    titles.push_back(table.title);
    titles.push_back(table.name);
  }
  FailToFind("result table", name, titles);
}

std::string CellText(const ResultTable::Cell& cell) {
  if (const auto* text = std::get_if<std::string>(&cell)) {
    return *text;
  }
  const auto* number = std::get_if<double>(&cell);
  return number != nullptr && std::isfinite(*number) ? PlainNumber(*number) : std::string();
}

// A row by what stands first in it, or in its column of labels.
std::size_t FindRow(const ResultTable& table, const std::string& name) {
  const std::optional<std::size_t> number = CountedFrom1(name);
  if (number && *number < table.rows.size()) {
    return *number;
  }
  const auto labels = std::find(table.columns.begin(), table.columns.end(), "Label") - table.columns.begin();
  std::vector<std::string> names;
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    const std::vector<ResultTable::Cell>& row = table.rows[i];
    for (const std::size_t k : {std::size_t{0}, static_cast<std::size_t>(labels)}) {
      const std::string text = k < row.size() ? CellText(row[k]) : std::string();
      if (!text.empty() && IsCalled(text, name)) {
        return i;
      }
      if (!text.empty()) {
        names.push_back(text);
      }
    }
  }
  FailToFind("row", name, names);
}

std::size_t FindColumn(const ResultTable& table, const std::string& name) {
  const auto found = std::find_if(table.columns.begin(), table.columns.end(),
                                  [&name](const std::string& head) { return IsCalled(head, name); });
  if (found != table.columns.end()) {
    return static_cast<std::size_t>(found - table.columns.begin());
  }
  const std::optional<std::size_t> number = CountedFrom1(name);
  if (number && *number < table.columns.size()) {
    return *number;
  }
  FailToFind("column", name, table.columns);
}

/// The text of one cell. Throws std::invalid_argument where there is none.
class CellMaker {
 public:
  explicit CellMaker(const CollectSource& source) : source_(source) {}

  std::string operator()(const TextValue& value) { return value.text; }
  std::string operator()(const StatisticValue& value) {
    Trial& trial = source_.workbench.trial;
    return StatisticText(trial, OneChannelOf(value.channel, trial), value.statistic);
  }
  std::string operator()(const TableValue& value) {
    const ResultTable& table = FindTable(source_.workbench, value.table);
    const std::vector<ResultTable::Cell>& row = table.rows[FindRow(table, value.row)];
    const std::size_t column = FindColumn(table, value.column);
    std::string text = column < row.size() ? CellText(row[column]) : std::string();
    if (text.empty()) {
      throw NoValue("the cell is empty");
    }
    return text;
  }
  std::string operator()(const InfoValue& value) {
    if (!info_) {
      info_ = InfoJson(source_.workbench, source_.done);
    }
    const Json::json_pointer pointer(value.pointer);
    if (!Holds(pointer)) {
      throw NoValue("the info has no " + value.pointer);
    }
    const Json& found = info_->at(pointer);
    if (found.is_string()) {
      return found.get<std::string>();
    }
    if (found.is_number_float()) {
      return PlainNumber(found.get<double>());
    }
    if (found.is_null() || found.is_structured()) {
      throw NoValue(value.pointer + (found.is_null() ? " is not finite" : " of the info is no single value"));
    }
    return found.dump();
  }

 private:
  [[nodiscard]] bool Holds(const Json::json_pointer& pointer) const {
    try {
      return info_->contains(pointer);
    } catch (const Json::exception&) {  // "-" or "01" for a place in a list
      return false;
    }
  }

  const CollectSource& source_;
  std::optional<Json> info_;
};

TableRows WholeTable(const ResultTable& table, const std::string& input) {
  TableRows rows{.columns = {"input"}};
  rows.columns.insert(rows.columns.end(), table.columns.begin(), table.columns.end());
  for (const std::vector<ResultTable::Cell>& cells : table.rows) {
    std::vector<std::string>& row = rows.rows.emplace_back();
    row.push_back(input);
    for (const ResultTable::Cell& cell : cells) {
      row.push_back(CellText(cell));
    }
  }
  return rows;
}

}  // namespace

TableRows CollectRows(const CollectStep& step, const CollectSource& source,
                      const std::function<void(const std::string&)>& warn) {
  TableRows rows;
  if (!step.table.empty()) {
    try {
      rows = WholeTable(FindTable(source.workbench, step.table), source.input);
    } catch (const NoValue& error) {
      warn(error.what());
    }
    rows.file = step.file;
    return rows;
  }
  rows.file = step.file;
  std::vector<std::string>& row = rows.rows.emplace_back();
  CellMaker cellOf(source);
  for (const CollectColumn& column : step.columns) {
    rows.columns.push_back(column.name);
    row.emplace_back();
    try {
      row.back() = std::visit(cellOf, column.value);
    } catch (const std::invalid_argument& error) {
      warn("column " + column.name + " is empty: " + error.what());
    }
  }
  return rows;
}

}  // namespace velmora
