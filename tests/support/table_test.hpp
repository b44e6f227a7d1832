#pragma once

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/command_test.hpp"

namespace velmora::test {

inline constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// A cell of a table by its row and head; NaN where it is empty.
inline double Cell(const ResultTable& table, std::size_t row, std::string_view head) {
  for (std::size_t k = 0; k < table.columns.size(); ++k) {
    if (table.columns[k] == head) {
      const double* number =
          k < table.rows.at(row).size() ? std::get_if<double>(&table.rows[row][k]) : nullptr;
      return number != nullptr ? *number : NAN;
    }
  }
  ADD_FAILURE() << "no column " << head;
  return NAN;
}

/// The row that begins with this text; as many as there are rows when none does.
inline std::size_t RowOf(const ResultTable& table, std::string_view first) {
  std::size_t row = 0;
  while (row < table.rows.size() && ShownCell(table, row, 0) != first) {
    ++row;
  }
  return row;
}

using NamedNumbers = std::vector<std::pair<std::string_view, double>>;

inline void ExpectNumber(double found, double expected, double within) {
  if (std::isnan(expected)) {
    EXPECT_TRUE(std::isnan(found)) << found;
  } else {
    EXPECT_NEAR(found, expected, within);
  }
}

/// What stands under these heads in a row, to the bit unless said otherwise; NaN where nothing does.
inline void ExpectCells(const ResultTable& table, std::size_t row, const NamedNumbers& cells,
                        double within = 0) {
  for (const auto& [head, expected] : cells) {
    SCOPED_TRACE("row " + std::to_string(row) + ", " + std::string(head));
    ExpectNumber(Cell(table, row, head), expected, within);
  }
}

/// What stands under a head in the rows that begin with these texts.
inline void ExpectRows(const ResultTable& table, std::string_view head, const NamedNumbers& rows,
                       double within = 0) {
  for (const auto& [first, expected] : rows) {
    SCOPED_TRACE(std::string(first) + ", " + std::string(head));
    ExpectNumber(Cell(table, RowOf(table, first), head), expected, within);
  }
}

/// Commands that end with tables.
struct TableTest : FileTest {
  [[nodiscard]] const ResultTable& Table(std::string_view name) const {
    for (const ResultTable& table : workbench.results.ResultTables) {
      if (table.name == name) {
        return table;
      }
    }
    throw std::runtime_error("no table " + std::string(name));
  }
};

/// A command whose dialogue leads to results.
struct AnalysisTest : TableTest {
  explicit AnalysisTest(const char* command) : command_(command) {}

  /// Fills in the dialogue, and leaves the results.
  void Compute(const Edits& edits) {
    AnswerForm(edits);
    AnswerForm({});
    Run(command_);
  }
  /// What is said of a dialogue that cannot be computed; it is cancelled.
  std::string Refused(const Edits& edits) {
    AnswerForm(edits);
    AnswerForm({}, "Cancel");
    Run(command_);
    return LastBox();
  }
  /// What is said before a dialogue comes up.
  std::string RefusedAtOnce() {
    const std::size_t forms = questions.formNames.size();
    Run(command_);
    EXPECT_EQ(questions.formNames.size(), forms);
    return LastBox();
  }

 private:
  const char* command_;
};

}  // namespace velmora::test
