#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/files/file_digest.hpp"

namespace velmora {

/// Which step of a recipe. Steps count from 1; 0 is before the first.
struct StepPlace {
  int step = 0;
  int line = 0;
  std::string action;  // "math.add", "info"
};

struct StepProblem {
  StepPlace at;
  std::string why;
};

/// What a step did, in words.
struct StepDone {
  StepPlace at;
  std::string what;
};

/// What came of one run of a recipe. A failure ends it.
struct Outcome {
  std::vector<StepDone> done;
  std::optional<StepProblem> failure;
  std::vector<StepProblem> warnings;
  std::optional<StepPlace> interrupted;  // where the run was when it was
  // For a manifest: the input, and every file written for it, as they were at the end of the run.
  std::optional<FileDigest> read;
  std::vector<FileDigest> files;
};

/// "step 3 (math.add, line 12)", empty before the first step.
std::string PlaceText(const StepPlace& place);

}  // namespace velmora
