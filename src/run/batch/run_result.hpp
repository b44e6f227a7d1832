#pragma once

#include <string>
#include <vector>

#include "run/batch/outcome.hpp"
#include "run/study/study_table.hpp"

namespace velmora {

/// What came of the recipe for one input.
struct RunResult {
  enum class State { NotRun, Done, Failed, Interrupted };

  std::string input;  // empty when the recipe ran without one
  State state = State::NotRun;
  Outcome outcome;
  std::vector<TableRows> collected;
  bool fromBefore = false;  // an earlier run did it
};

}  // namespace velmora
