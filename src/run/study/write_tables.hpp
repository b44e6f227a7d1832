#pragma once

#include <string>
#include <vector>

#include "run/run_result.hpp"

namespace velmora {

/// What became of a table of the study.
struct WrittenTable {
  std::string file;
  std::string fault;  // why it could not be written; empty when it was
};

/// Writes the tables that the runs collected, rows in the order of the inputs, each file in one step.
std::vector<WrittenTable> WriteTables(const std::vector<RunResult>& results);

}  // namespace velmora
