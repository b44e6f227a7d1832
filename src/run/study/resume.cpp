#include "run/study/resume.hpp"

#include <algorithm>
#include <map>

#include "run/batch/tell.hpp"

namespace velmora {
namespace {

bool IsStillThere(const RunResult& result) {
  const Outcome& outcome = result.outcome;
  const bool readSame = result.input.empty() || (outcome.read && IsUnchanged(*outcome.read));
  return result.state == RunResult::State::Done && readSame &&
         std::all_of(outcome.files.begin(), outcome.files.end(), IsUnchanged);
}

}  // namespace

void TakeOver(const Manifest& before, const Manifest& now, std::vector<RunResult>& results,
              OutputClaims& claims) {
  if (!SameStudy(before, now)) {
    Tell("the manifest is of another recipe, other settings or another version: all inputs are run");
    return;
  }
  std::map<std::string, const RunResult*> known;
  for (const RunResult& result : before.results) {
    known[result.input] = &result;
  }
  for (std::size_t run = 0; run < results.size(); ++run) {
    const auto found = known.find(results[run].input);
    if (found == known.end() || !IsStillThere(*found->second)) {
      continue;
    }
    results[run] = *found->second;
    results[run].fromBefore = true;
    for (const FileDigest& file : results[run].outcome.files) {
      claims.Claim(run, file.path);
    }
    for (const TableRows& rows : results[run].collected) {
      claims.ClaimTable(rows.file);
    }
  }
}

}  // namespace velmora
