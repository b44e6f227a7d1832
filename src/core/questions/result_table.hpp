#pragma once

#include <string>
#include <variant>
#include <vector>

namespace velmora {

/// A table as a result view shows it and as a recipe's info lists it: one cell a column in every row.
struct ResultTable {
  using Cell = std::variant<double, std::string>;

  std::string name;   // of the view: "frmCoeff"
  std::string title;  // what it is of
  std::vector<std::string> columns;
  std::vector<std::vector<Cell>> rows;
};

}  // namespace velmora
