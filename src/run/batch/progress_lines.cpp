#include "run/batch/progress_lines.hpp"

#include <cstdio>

#include "run/report/json_text.hpp"

namespace velmora {
namespace {

// Who stops reading loses the lines and nothing else.
void Put(const Json& json) {
  std::fputs((JsonText(json, -1) + "\n").c_str(), stdout);
  std::fflush(stdout);
}

}  // namespace

void ProgressLines::Step(std::size_t run, const StepPlace& place) {
  Put({{"input", run}, {"step", place.step}, {"action", place.action}});
}

void ProgressLines::End(std::size_t run, const RunResult& result) {
  const Outcome& outcome = result.outcome;
  Json json = {{"input", run},
               {"outcome", outcome.failure       ? "failed"
                           : outcome.interrupted ? "interrupted"
                                                 : "done"}};
  if (outcome.failure) {
    json["place"] = PlaceText(outcome.failure->at);
    json["why"] = outcome.failure->why;
  } else if (outcome.interrupted) {
    json["place"] = PlaceText(*outcome.interrupted);
  }
  json["warnings"] = Json::array();
  for (const StepProblem& warning : outcome.warnings) {
    json["warnings"].push_back(PlaceText(warning.at) + ": " + warning.why);
  }
  Put(json);
}

}  // namespace velmora
