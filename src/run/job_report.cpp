#include "run/job_report.hpp"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "run/json_text.hpp"

namespace velmora {
namespace {

// One letter for the kind, then JSON, which has no line end of its own.
constexpr char kStep = 'S';
constexpr char kTranscript = 'T';
constexpr char kEnd = 'E';

Json ToJson(const StepPlace& place) {
  return Json::array({place.step, place.line, place.action});
}

StepPlace PlaceOf(const Json& json) {
  return {json.at(0).get<int>(), json.at(1).get<int>(), json.at(2).get<std::string>()};
}

Json ToJson(const StepProblem& problem) {
  return {{"at", ToJson(problem.at)}, {"why", problem.why}};
}

StepProblem ProblemOf(const Json& json) {
  return {PlaceOf(json.at("at")), json.at("why").get<std::string>()};
}

Json ToJson(const Outcome& outcome) {
  Json json = {{"interrupted", outcome.interrupted}, {"warnings", Json::array()}};
  for (const StepProblem& warning : outcome.warnings) {
    json["warnings"].push_back(ToJson(warning));
  }
  if (outcome.failure) {
    json["failure"] = ToJson(*outcome.failure);
  }
  return json;
}

Outcome OutcomeOf(const Json& json) {
  Outcome outcome;
  outcome.interrupted = json.at("interrupted").get<bool>();
  for (const Json& warning : json.at("warnings")) {
    outcome.warnings.push_back(ProblemOf(warning));
  }
  if (json.contains("failure")) {
    outcome.failure = ProblemOf(json.at("failure"));
  }
  return outcome;
}

}  // namespace

void JobReport::Step(const StepPlace& place) const {
  Send(kStep, JsonText(ToJson(place), -1));
}

void JobReport::TranscriptLine(std::string_view line) const {
  Send(kTranscript, line);
}

void JobReport::End(const Outcome& outcome) const {
  Send(kEnd, JsonText(ToJson(outcome), -1));
}

void JobReport::Send(char kind, std::string_view line) const {
  std::string message;
  message.append(1, kind).append(line).append(1, '\n');
  std::size_t done = 0;
  while (done < message.size()) {
    const ssize_t put = write(descriptor_, message.data() + done, message.size() - done);
    if (put < 0 && errno != EINTR) {
      return;  // the parent is gone, and this process will follow
    }
    done += static_cast<std::size_t>(std::max<ssize_t>(put, 0));
  }
}

JobMessage ReadJobMessage(std::string_view line) {
  const std::string_view body = line.substr(1);
  switch (line.front()) {
    case kStep:
      return PlaceOf(Json::parse(body));
    case kTranscript:
      return TranscriptLine{std::string(body)};
    default:
      return OutcomeOf(Json::parse(body));
  }
}

}  // namespace velmora
