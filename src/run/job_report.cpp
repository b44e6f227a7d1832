#include "run/job_report.hpp"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "core/text/text.hpp"
#include "run/interrupt.hpp"
#include "run/json_text.hpp"

namespace velmora {
namespace {

// One letter for the kind, then JSON, which has no line end of its own.
constexpr char kStep = 'S';
constexpr char kTranscript = 'T';
constexpr char kEnd = 'E';
constexpr char kClaim = 'C';

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
  Json json = {{"warnings", Json::array()}, {"done", Json::array()}};
  for (const StepDone& done : outcome.done) {
    json["done"].push_back({{"at", ToJson(done.at)}, {"what", done.what}});
  }
  for (const StepProblem& warning : outcome.warnings) {
    json["warnings"].push_back(ToJson(warning));
  }
  if (outcome.interrupted) {
    json["interrupted"] = ToJson(*outcome.interrupted);
  }
  if (outcome.failure) {
    json["failure"] = ToJson(*outcome.failure);
  }
  return json;
}

Outcome OutcomeOf(const Json& json) {
  Outcome outcome;
  for (const Json& done : json.at("done")) {
    outcome.done.push_back({PlaceOf(done.at("at")), done.at("what").get<std::string>()});
  }
  for (const Json& warning : json.at("warnings")) {
    outcome.warnings.push_back(ProblemOf(warning));
  }
  if (json.contains("interrupted")) {
    outcome.interrupted = PlaceOf(json.at("interrupted"));
  }
  if (json.contains("failure")) {
    outcome.failure = ProblemOf(json.at("failure"));
  }
  return outcome;
}

// A path is bytes and no text: as a list of numbers it comes through whole.
Json BytesOf(const std::string& path) {
  return std::vector<unsigned char>(path.begin(), path.end());
}

std::string PathOf(const Json& json) {
  const auto bytes = json.get<std::vector<unsigned char>>();
  return {bytes.begin(), bytes.end()};
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

std::string JobReport::Claim(const std::string& path) const {
  Send(kClaim, JsonText(BytesOf(path), -1));
  std::string answer;
  char next = 0;
  while (true) {
    const ssize_t got = read(descriptor_, &next, 1);
    if (got == 1 && next == '\n') {
      return answer;
    }
    if (got == 1) {
      answer.append(1, next);
    } else if (got == 0 || errno != EINTR || InterruptSignal() != 0) {
      return "interrupted";
    }
  }
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
    case kClaim:
      return OutputClaim{PathOf(Json::parse(body))};
    default:
      return OutcomeOf(Json::parse(body));
  }
}

void AnswerClaim(int descriptor, const std::string& refusal) {
  const std::string line = OneLine(refusal) + "\n";
  // So short a line finds room; a job that is gone wants no answer.
  static_cast<void>(send(descriptor, line.data(), line.size(), MSG_NOSIGNAL));
}

}  // namespace velmora
