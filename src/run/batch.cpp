#include "run/batch.hpp"

#include <algorithm>

#include "core/text/text.hpp"
#include "run/jobs.hpp"
#include "run/progress_bar.hpp"
#include "run/recipe_reader.hpp"
#include "run/recipe_run.hpp"

namespace velmora {
namespace {

class Batch {
 public:
  Batch(const Arguments& arguments, const std::string& text, const Recipe& first, OutputClaims& claims,
        TranscriptFile* transcript)
      : arguments_(arguments),
        text_(text),
        first_(first),
        claims_(claims),
        transcript_(transcript),
        results_(RunCount()),
        bar_(RunCount(), first.steps.size()) {
    for (std::size_t run = 0; run < arguments.inputs.size(); ++run) {
      results_[run].input = arguments.inputs[run];
    }
  }

  std::vector<RunResult> Run() {
    if (RunCount() == 1 && arguments_.jobs == 1) {
      RunHere();
    } else {
      RunInProcesses();
    }
    return std::move(results_);
  }

 private:
  [[nodiscard]] std::size_t RunCount() const { return std::max<std::size_t>(arguments_.inputs.size(), 1); }
  [[nodiscard]] RunOptions OptionsFor(std::size_t run) const;
  void RunHere();
  void RunInProcesses();
  void AddLine(std::size_t run, std::string_view line) { transcript_->Add(run, line); }
  std::string Collect(std::size_t run, TableRows rows);
  void End(std::size_t run, const Outcome& outcome);

  const Arguments& arguments_;
  const std::string& text_;
  const Recipe& first_;
  OutputClaims& claims_;
  TranscriptFile* transcript_;
  std::vector<RunResult> results_;
  ProgressBar bar_;
};

RunOptions Batch::OptionsFor(std::size_t run) const {
  return {.input = results_[run].input,
          .strict = arguments_.strict,
          .onStep = {},
          .claim = {},
          .transcript = {},
          .collect = {}};
}

void Batch::RunHere() {
  RunOptions options = OptionsFor(0);
  options.onStep = [this](const StepPlace& place) { bar_.Step(0, place.step); };
  options.claim = [this](const std::string& path) { return claims_.Claim(0, path); };
  options.collect = [this](const TableRows& rows) { return Collect(0, rows); };
  if (transcript_ != nullptr) {
    options.transcript = [this](std::string_view line) { AddLine(0, line); };
  }
  End(0, RecipeRun(options).Run(first_));
}

void Batch::RunInProcesses() {
  const Job job = [this](std::size_t run, const JobReport& report) {
    RunOptions options = OptionsFor(run);
    options.onStep = [&report](const StepPlace& place) { report.Step(place); };
    options.claim = [&report](const std::string& path) { return report.Claim(path); };
    options.collect = [&report](const TableRows& rows) { return report.Collect(rows); };
    if (transcript_ != nullptr) {
      options.transcript = [&report](std::string_view line) { report.TranscriptLine(line); };
    }
    return RecipeRun(options).Run(RecipeFor(arguments_, text_, run));
  };
  RunJobs(RunCount(), arguments_.jobs, job,
          {.onStep = [this](std::size_t run, const StepPlace& place) { bar_.Step(run, place.step); },
           .onTranscript = [this](std::size_t run, std::string_view line) { AddLine(run, line); },
           .onEnd = [this](std::size_t run, const Outcome& outcome) { End(run, outcome); },
           .onClaim = [this](std::size_t run, const std::string& path) { return claims_.Claim(run, path); },
           .onCollect = [this](std::size_t run, TableRows rows) { return Collect(run, std::move(rows)); }});
}

std::string Batch::Collect(std::size_t run, TableRows rows) {
  std::string refusal = claims_.ClaimTable(rows.file);
  if (refusal.empty()) {
    results_[run].collected.push_back(std::move(rows));
  }
  return refusal;
}

void Batch::End(std::size_t run, const Outcome& outcome) {
  RunResult& result = results_[run];
  result.outcome = outcome;
  result.state = outcome.failure       ? RunResult::State::Failed
                 : outcome.interrupted ? RunResult::State::Interrupted
                                       : RunResult::State::Done;
  if (transcript_ != nullptr) {
    transcript_->EndRun(run);
  }
  bar_.End(run, outcome.failure.has_value());
}

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
    for (const StepDone& done : result.outcome.done) {
      if (one) {
        rows.push_back({"done", result.input, PlaceText(done.at), done.what});
      }
    }
    for (const StepProblem& warning : result.outcome.warnings) {
      rows.push_back({"warning", result.input, PlaceText(warning.at), warning.why});
    }
    if (result.state == RunResult::State::Interrupted) {
      rows.push_back({"interrupted", result.input, PlaceText(*result.outcome.interrupted), ""});
    }
    if (result.outcome.failure) {
      rows.push_back(
          {"FAILED", result.input, PlaceText(result.outcome.failure->at), result.outcome.failure->why});
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
  std::string text = std::to_string(count(RunResult::State::Done)) + " done, " +
                     std::to_string(count(RunResult::State::Failed)) + " failed";
  if (const auto interrupted = count(RunResult::State::Interrupted); interrupted > 0) {
    text += ", " + std::to_string(interrupted) + " interrupted";
  }
  if (const auto left = count(RunResult::State::NotRun); left > 0) {
    text += ", " + std::to_string(left) + " not run";
  }
  return text + "\n";
}

}  // namespace

Recipe RecipeFor(const Arguments& arguments, const std::string& text, std::size_t run) {
  Variables variables = arguments.set;
  variables["out"] = arguments.out;
  if (run < arguments.inputs.size()) {
    SetInputVariables(variables, arguments.inputs[run]);
  }
  return ReadRecipe(text, arguments.recipe, variables);
}

std::vector<RunResult> RunBatch(const Arguments& arguments, const std::string& text, const Recipe& first,
                                OutputClaims& claims, TranscriptFile* transcript) {
  return Batch(arguments, text, first, claims, transcript).Run();
}

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
