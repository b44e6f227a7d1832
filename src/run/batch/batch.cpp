#include "run/batch/batch.hpp"

#include <algorithm>
#include <filesystem>
#include <map>
#include <utility>

#include "core/files/files.hpp"
#include "run/batch/jobs.hpp"
#include "run/batch/progress_bar.hpp"
#include "run/batch/progress_lines.hpp"
#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/recipe_run.hpp"

namespace velmora {
namespace {

namespace fs = std::filesystem;

// Below the directory of results the path is told as that directory was, so that it is no machine's own.
std::string AsGiven(const std::string& absolute, const std::string& out) {
  std::error_code error;
  const fs::path base = fs::absolute(out, error).lexically_normal();
  const fs::path below = fs::path(absolute).lexically_normal().lexically_relative(base);
  const bool inside = !error && !below.empty() && *below.begin() != "..";
  return inside ? (fs::path(out) / below).lexically_normal().string() : absolute;
}

void AddDigests(Outcome& outcome, const std::string& input, const std::vector<std::string>& written,
                const std::string& out) {
  const auto digest = [](const std::string& path) -> std::optional<FileDigest> {
    try {
      return DigestOf(path);
    } catch (const FileError&) {  // a later step did away with it
      return std::nullopt;
    }
  };
  if (!input.empty()) {
    outcome.read = digest(input);
  }
  for (auto path = written.begin(); path != written.end(); ++path) {
    if (std::find(written.begin(), path, *path) != path) {
      continue;  // written again
    }
    if (std::optional<FileDigest> file = digest(*path)) {
      file->path = AsGiven(*path, out);
      outcome.files.push_back(std::move(*file));
    }
  }
}

class Batch {
 public:
  Batch(const BatchOrder& order, std::vector<RunResult>& results)
      : order_(order), results_(results), bar_(results.size(), order.first.steps.size()) {}

  void Run();

 private:
  void RunHere(std::size_t run);
  void RunInProcesses(const std::vector<std::size_t>& runs);
  [[nodiscard]] Outcome RunOne(std::size_t run, const Recipe& recipe, RunOptions options) const;
  void BeginStep(std::size_t run, const StepPlace& place);
  void AddLine(std::size_t run, std::string_view line) { order_.transcript->Add(run, line); }
  std::string Collect(std::size_t run, TableRows rows);
  void End(std::size_t run, Outcome outcome);
  void CloseTranscript(std::size_t run);

  const BatchOrder& order_;
  std::vector<RunResult>& results_;
  std::map<std::size_t, std::vector<std::string>> written_;  // by runs that are at work in other processes
  ProgressBar bar_;
};

void Batch::Run() {
  std::vector<std::size_t> runs;
  for (std::size_t run = 0; run < results_.size(); ++run) {
    if (results_[run].fromBefore) {
      CloseTranscript(run);
      bar_.End(run, false);
    } else {
      runs.push_back(run);
    }
  }
  if (results_.size() == 1 && order_.arguments.jobs == 1 && runs.size() == 1) {
    RunHere(0);
  } else {
    RunInProcesses(runs);
  }
}

// What a run does and where it tells of it are apart: `options` comes with the latter.
Outcome Batch::RunOne(std::size_t run, const Recipe& recipe, RunOptions options) const {
  options.input = results_[run].input;
  options.strict = order_.arguments.strict;
  std::vector<std::string> written;
  if (order_.digests) {
    options.written = [&written, tell = std::move(options.written)](const std::string& path) {
      written.push_back(path);
      if (tell) {
        tell(path);
      }
    };
  }
  Outcome outcome = RecipeRun(options).Run(recipe);
  if (results_.size() > 1) {
    outcome.done.clear();  // of many, only what wants a look is told
  }
  if (order_.digests) {
    AddDigests(outcome, results_[run].input, written, order_.arguments.out);
  }
  return outcome;
}

void Batch::RunHere(std::size_t run) {
  RunOptions options;
  options.onStep = [this, run](const StepPlace& place) { BeginStep(run, place); };
  options.claim = [this, run](const std::string& path) { return order_.claims.Claim(run, path); };
  options.collect = [this, run](const TableRows& rows) { return Collect(run, rows); };
  if (order_.transcript != nullptr) {
    options.transcript = [this, run](std::string_view line) { AddLine(run, line); };
  }
  End(run, RunOne(run, order_.first, std::move(options)));
}

void Batch::RunInProcesses(const std::vector<std::size_t>& runs) {
  const Job job = [this](std::size_t run, const JobReport& report) {
    RunOptions options;
    options.onStep = [&report](const StepPlace& place) { report.Step(place); };
    options.claim = [&report](const std::string& path) { return report.Claim(path); };
    options.collect = [&report](const TableRows& rows) { return report.Collect(rows); };
    if (order_.digests) {
      options.written = [&report](const std::string& path) { report.Written(path); };
    }
    if (order_.transcript != nullptr) {
      options.transcript = [&report](std::string_view line) { report.TranscriptLine(line); };
    }
    return RunOne(run, RecipeFor(order_.arguments, order_.text, run), std::move(options));
  };
  std::function<void(std::size_t, const StepPlace&)> onStep;
  if (bar_.IsShown() || order_.arguments.progress) {
    onStep = [this](std::size_t run, const StepPlace& place) { BeginStep(run, place); };
  }
  RunJobs(
      runs, order_.arguments.jobs, job,
      {.onStep = std::move(onStep),
       .onTranscript = [this](std::size_t run, std::string_view line) { AddLine(run, line); },
       .onEnd = [this](std::size_t run, const Outcome& outcome) { End(run, outcome); },
       .onClaim = [this](std::size_t run, const std::string& path) { return order_.claims.Claim(run, path); },
       .onWritten = [this](std::size_t run, const std::string& path) { written_[run].push_back(path); },
       .onCollect = [this](std::size_t run, TableRows rows) { return Collect(run, std::move(rows)); }});
}

void Batch::BeginStep(std::size_t run, const StepPlace& place) {
  bar_.Step(run, place.step);
  if (order_.arguments.progress) {
    ProgressLines::Step(run, place);
  }
}

std::string Batch::Collect(std::size_t run, TableRows rows) {
  std::string refusal = order_.claims.ClaimTable(rows.file);
  if (refusal.empty()) {
    results_[run].collected.push_back(std::move(rows));
  }
  return refusal;
}

void Batch::End(std::size_t run, Outcome outcome) {
  RunResult& result = results_[run];
  result.state = outcome.failure       ? RunResult::State::Failed
                 : outcome.interrupted ? RunResult::State::Interrupted
                                       : RunResult::State::Done;
  if (order_.digests && !outcome.read && outcome.files.empty()) {  // its process crashed before it could tell
    AddDigests(outcome, result.input, written_[run], order_.arguments.out);
  }
  result.outcome = std::move(outcome);
  written_.erase(run);
  CloseTranscript(run);
  bar_.End(run, result.outcome.failure.has_value());
  if (order_.arguments.progress) {
    ProgressLines::End(run, result);
  }
}

void Batch::CloseTranscript(std::size_t run) {
  if (order_.transcript != nullptr) {
    order_.transcript->EndRun(run);
  }
}

}  // namespace

std::vector<RunResult> ResultsToCome(const Arguments& arguments) {
  std::vector<RunResult> results(std::max<std::size_t>(arguments.inputs.size(), 1));
  for (std::size_t run = 0; run < arguments.inputs.size(); ++run) {
    results[run].input = arguments.inputs[run];
  }
  return results;
}

Recipe RecipeFor(const Arguments& arguments, const std::string& text, std::size_t run) {
  Variables variables = arguments.set;
  variables["out"] = arguments.out;
  if (run < arguments.inputs.size()) {
    SetInputVariables(variables, arguments.inputs[run]);
  }
  return ReadRecipe(text, arguments.recipe, variables);
}

void RunBatch(const BatchOrder& order, std::vector<RunResult>& results) {
  Batch(order, results).Run();
}

}  // namespace velmora
