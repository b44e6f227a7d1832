#pragma once

#include <cstddef>

#include "run/batch/run_result.hpp"

namespace velmora {

/// How far the inputs are, for a program that started this one: a JSON object a line on standard output, at
/// once.
/// `{"input": 0, "step": 2, "action": "math.add"}` when an input (from 0) begins a step, and at its end
/// `{"input": 0, "outcome": "done|failed|interrupted", "place": ..., "why": ..., "warnings": [...]}`.
class ProgressLines {
 public:
  static void Step(std::size_t run, const StepPlace& place);
  static void End(std::size_t run, const RunResult& result);
};

}  // namespace velmora
