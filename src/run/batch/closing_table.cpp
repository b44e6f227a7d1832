#include "run/batch/closing_table.hpp"

#include <algorithm>

#include "core/text/text.hpp"

namespace velmora {
namespace {

struct Row {
  std::string verdict;
  std::string input;
  std::string place;
  std::string why;
};

std::vector<Row> RowsToTell(const std::vector<RunResult>& results) {
  std::vector<Row> rows;
  const bool one = results.size() == 1;  // of many, only what wants a look is told
  for (const RunResult& result : results) {
    const std::string input = OneLine(result.input);
    for (const StepDone& done : result.outcome.done) {
      if (one) {
        rows.push_back({"done", input, PlaceText(done.at), done.what});
      }
    }
    for (const StepProblem& warning : result.outcome.warnings) {
      rows.push_back({"warning", input, PlaceText(warning.at), warning.why});
    }
    if (result.outcome.interrupted) {
      rows.push_back({"interrupted", input, PlaceText(*result.outcome.interrupted), ""});
    }
    if (result.outcome.failure) {
      rows.push_back({"FAILED", input, PlaceText(result.outcome.failure->at), result.outcome.failure->why});
    }
  }
  return rows;
}

std::size_t WidestOf(const std::vector<Row>& rows, std::string Row::*column) {
  std::size_t widest = 0;
  for (const Row& row : rows) {
    widest = std::max(widest, (row.*column).size());
  }
  return widest;
}

std::string Padded(std::string text, std::size_t width) {
  if (width == 0) {
    return {};
  }
  text.resize(std::max(width, text.size()), ' ');
  return text + "  ";
}

std::string Counts(const std::vector<RunResult>& results) {
  const auto count = [&results](RunResult::State state) {
    return std::count_if(results.begin(), results.end(),
                         [state](const RunResult& r) { return r.state == state; });
  };
  std::string text = std::to_string(count(RunResult::State::Done)) + " done";
  const auto before =
      std::count_if(results.begin(), results.end(), [](const RunResult& r) { return r.fromBefore; });
  if (before > 0) {
    text += " (" + std::to_string(before) + " before)";
  }
  text += ", " + std::to_string(count(RunResult::State::Failed)) + " failed";
  if (const auto interrupted = count(RunResult::State::Interrupted); interrupted > 0) {
    text += ", " + std::to_string(interrupted) + " interrupted";
  }
  if (const auto left = count(RunResult::State::NotRun); left > 0) {
    text += ", " + std::to_string(left) + " not run";
  }
  return text + "\n";
}

}  // namespace

std::string ClosingTable(const std::vector<RunResult>& results) {
  const std::vector<Row> rows = RowsToTell(results);
  const std::size_t verdict = WidestOf(rows, &Row::verdict);
  const std::size_t input = WidestOf(rows, &Row::input);
  const std::size_t place = WidestOf(rows, &Row::place);
  std::string table;
  for (const Row& row : rows) {
    table += TrimRight(Padded(row.verdict, verdict) + Padded(row.input, input) + Padded(row.place, place) +
                       row.why) +
             "\n";
  }
  return table + Counts(results);
}

}  // namespace velmora
