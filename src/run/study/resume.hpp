#pragma once

#include <vector>

#include "run/batch/output_claims.hpp"
#include "run/study/manifest.hpp"

namespace velmora {

/// Takes over from an earlier run what need not be done again: inputs that it did, that are what they were,
/// and whose files are what it wrote. Nothing when `now` is of another recipe, other settings or another
/// program, which is told.
void TakeOver(const Manifest& before, const Manifest& now, std::vector<RunResult>& results,
              OutputClaims& claims);

}  // namespace velmora
