#pragma once

#include <string>
#include <vector>

#include "run/batch/run_result.hpp"

namespace velmora {

/// What became of a table of the study.
struct WrittenTable {
  std::string file;   // as the recipe names it
  std::string where;  // where it was written
  std::string fault;  // why it could not be written; empty when it was
};

/// Writes the tables that the runs collected, rows in the order of the inputs, each file in one step. With a
/// directory in `tables` they go there, under the names that they have below `out`.
std::vector<WrittenTable> WriteTables(const std::vector<RunResult>& results, const std::string& out = {},
                                      const std::string& tables = {});

}  // namespace velmora
