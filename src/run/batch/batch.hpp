#pragma once

#include <string>
#include <vector>

#include "run/batch/arguments.hpp"
#include "run/batch/output_claims.hpp"
#include "run/batch/run_result.hpp"
#include "run/recipe/recipe.hpp"
#include "run/report/transcript_file.hpp"

namespace velmora {

/// A recipe to be run for each input.
struct BatchOrder {
  const Arguments& arguments;
  const std::string& text;  // the recipe as it stands in its file
  const Recipe& first;      // and as it reads for the first input
  OutputClaims& claims;     // who may write what
  TranscriptFile* transcript = nullptr;
  bool digests = false;  // the results tell size and SHA-256 of what was read and written
};

/// What is to come of each input, or of the one run when there is none: nothing yet.
std::vector<RunResult> ResultsToCome(const Arguments& arguments);

/// The recipe as it reads for one of the inputs (from 0; any number when there is none).
/// Throws RecipeError.
Recipe RecipeFor(const Arguments& arguments, const std::string& text, std::size_t run);

/// Runs the recipe once for each of `results` that is not from before, and fills it in. A single run stays in
/// this process; several are done in other processes, so that a crash costs one input.
void RunBatch(const BatchOrder& order, std::vector<RunResult>& results);

}  // namespace velmora
