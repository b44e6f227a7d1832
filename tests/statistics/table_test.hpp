#pragma once

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>

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

/// Commands that end with tables.
struct TableTest : CommandTest {
  const ResultTable& Table(std::string_view name) {
    for (const ResultTable& table : workbench.results.ResultTables) {
      if (table.name == name) {
        return table;
      }
    }
    throw std::runtime_error("no table " + std::string(name));
  }
};

}  // namespace velmora::test
