#include "run/batch/job_report.hpp"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "core/text/text.hpp"
#include "run/batch/interrupt.hpp"
#include "run/report/json_text.hpp"

namespace velmora {
namespace {

// One letter for the kind, then JSON, which has no line end of its own.
constexpr char kStep = 'S';
constexpr char kTranscript = 'T';
constexpr char kEnd = 'E';
constexpr char kClaim = 'C';
constexpr char kRows = 'R';
constexpr char kWritten = 'W';

// A path is bytes and no text, and so may be what was made of one. Each byte becomes a character, which comes
// through whole.
std::string ByteText(std::string_view bytes) {
  return FromWindows1252(bytes);
}

std::string BytesOf(const Json& json) {
  return ToWindows1252(json.get<std::string>());
}

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

Json ToJson(const FileDigest& digest) {
  return Json::array({ByteText(digest.path), digest.size, digest.sha256});
}

FileDigest DigestIn(const Json& json) {
  return {BytesOf(json.at(0)), json.at(1).get<std::int64_t>(), json.at(2).get<std::string>()};
}

// Most runs have nothing to tell.
bool IsEmpty(const Outcome& outcome) {
  return outcome.done.empty() && outcome.warnings.empty() && outcome.files.empty() && !outcome.failure &&
         !outcome.interrupted && !outcome.read;
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
  if (outcome.read) {
    json["read"] = ToJson(*outcome.read);
  }
  for (const FileDigest& file : outcome.files) {
    json["files"].push_back(ToJson(file));
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
  if (json.contains("read")) {
    outcome.read = DigestIn(json.at("read"));
  }
  if (json.contains("files")) {
    std::transform(json.at("files").begin(), json.at("files").end(), std::back_inserter(outcome.files),
                   DigestIn);
  }
  return outcome;
}

Json ToJson(const std::vector<std::string>& texts) {
  Json json = Json::array();
  for (const std::string& text : texts) {
    json.push_back(ByteText(text));
  }
  return json;
}

std::vector<std::string> TextsOf(const Json& json) {
  std::vector<std::string> texts;
  for (const Json& text : json) {
    texts.push_back(BytesOf(text));
  }
  return texts;
}

TableRows RowsOf(const Json& json) {
  TableRows rows{.file = BytesOf(json.at(0)), .columns = TextsOf(json.at(1))};
  for (const Json& row : json.at(2)) {
    rows.rows.push_back(TextsOf(row));
  }
  return rows;
}

// So short a line finds room; a process that is gone wants none.
void PutLine(int descriptor, const std::string& line) {
  const std::string whole = line + "\n";
  static_cast<void>(send(descriptor, whole.data(), whole.size(), MSG_NOSIGNAL));
}

}  // namespace

void JobReport::Step(const StepPlace& place) const {
  mark_.Set(place);
  if (tellsSteps_) {
    Send(kStep, JsonText(ToJson(place), -1));
  }
}

void JobReport::TranscriptLine(std::string_view line) const {
  Send(kTranscript, line);
}

void JobReport::End(const Outcome& outcome) const {
  Send(kEnd, IsEmpty(outcome) ? std::string() : JsonText(ToJson(outcome), -1));
}

std::string JobReport::Claim(const std::string& path) const {
  Send(kClaim, JsonText(ByteText(path), -1));
  return Answer();
}

std::string JobReport::Collect(const TableRows& rows) const {
  Json cells = Json::array();
  for (const std::vector<std::string>& row : rows.rows) {
    cells.push_back(ToJson(row));
  }
  Send(kRows, JsonText(Json::array({ByteText(rows.file), ToJson(rows.columns), std::move(cells)}), -1));
  return Answer();
}

void JobReport::Written(const std::string& path) const {
  Send(kWritten, JsonText(ByteText(path), -1));
}

std::optional<std::size_t> JobReport::NextJob() const {
  const std::optional<std::string> line = InterruptSignal() == 0 ? ReadLine() : std::nullopt;
  return line ? std::optional(static_cast<std::size_t>(std::stoull(*line))) : std::nullopt;
}

std::optional<std::string> JobReport::ReadLine() const {
  std::string line;
  char next = 0;
  while (true) {
    const ssize_t got = read(descriptor_, &next, 1);
    if (got == 1 && next == '\n') {
      return line;
    }
    if (got == 1) {
      line.append(1, next);
    } else if (got == 0 || errno != EINTR || InterruptSignal() != 0) {
      return std::nullopt;
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
      return OutputClaim{BytesOf(Json::parse(body))};
    case kWritten:
      return WrittenFile{BytesOf(Json::parse(body))};
    case kRows:
      return RowsOf(Json::parse(body));
    default:
      return body.empty() ? Outcome() : OutcomeOf(Json::parse(body));
  }
}

void GiveJob(int descriptor, std::size_t job) {
  PutLine(descriptor, std::to_string(job));
}

void AnswerJob(int descriptor, const std::string& refusal) {
  PutLine(descriptor, OneLine(refusal));
}

}  // namespace velmora
