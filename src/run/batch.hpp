#pragma once

#include <string>
#include <vector>

#include "run/arguments.hpp"
#include "run/outcome.hpp"
#include "run/output_claims.hpp"
#include "run/recipe.hpp"
#include "run/study/study_table.hpp"
#include "run/transcript_file.hpp"

namespace velmora {

/// What came of the recipe for one input.
struct RunResult {
  enum class State { NotRun, Done, Failed, Interrupted };

  std::string input;  // empty when the recipe ran without one
  State state = State::NotRun;
  Outcome outcome;
  std::vector<TableRows> collected;
};

/// The recipe as it reads for one of the inputs (from 0; any number when there is none).
/// Throws RecipeError.
Recipe RecipeFor(const Arguments& arguments, const std::string& text, std::size_t run);

/// Runs the recipe once for each input of `arguments`, or once when there is none. A single run stays
/// in this process; several have processes of their own, so that a crash costs one input.
/// `text` is the recipe as it stands in its file, `first` as it reads for the first input.
/// `claims` tells who may write what; `transcript` may be null.
std::vector<RunResult> RunBatch(const Arguments& arguments, const std::string& text, const Recipe& first,
                                OutputClaims& claims, TranscriptFile* transcript);

/// A line for each warning, failure and interruption, then the counts. Line ends are '\n'.
std::string ClosingTable(const std::vector<RunResult>& results);

}  // namespace velmora
