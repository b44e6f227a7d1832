#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/workbench.hpp"
#include "run/batch/outcome.hpp"
#include "run/recipe/recipe.hpp"
#include "run/recipe/recipe_questions.hpp"
#include "run/report/transcript.hpp"
#include "run/study/study_table.hpp"

namespace velmora {

/// What is said of an id that no command has.
std::string NoSuchCommand(const std::string& id);

/// How to run a recipe, and who wants to hear of it.
struct RunOptions {
  std::string input;    // the data file, for the transcript; empty for none
  bool strict = false;  // a warning fails its step
  std::function<void(const StepPlace&)> onStep;
  /// Asked before a file is written: why it must not be, empty when it may. May be missing.
  std::function<std::string(const std::string& path)> claim;
  /// Hears of every file that was written, by its absolute path. May be missing.
  std::function<void(const std::string& path)> written;
  TranscriptQuestions::Sink transcript;
  /// Takes rows for a table of the study: why it must not be written, empty when it may. May be missing.
  std::function<std::string(const TableRows& rows)> collect;
};

/// One workbench and the answers of a recipe in place of a person.
class RecipeRun {
 public:
  explicit RecipeRun(RunOptions options);

  /// Runs the steps in order until one fails or the run is interrupted. Never throws for what a
  /// command does; the outcome tells it.
  Outcome Run(const Recipe& recipe);

  [[nodiscard]] Workbench& State() { return workbench_; }

 private:
  Questions& Answerer();
  void CheckOutput(const std::string& path) const;
  /// Empty when the step went well, else why it failed.
  std::string RunStep(const Step& step);
  std::string RunCommandStep(const CommandStep& step);
  std::string RunViewStep(const ViewStep& step);
  /// Runs `action` on these answers and tells what went wrong.
  template <typename Action>
  std::string RunAnswered(const std::vector<Answer>& answers, const Action& action);
  void NoteStep(const Step& step, bool loads);
  /// Keeps what the step did and tells it to those who want to hear.
  void NoteDeeds(const StepPlace& place, bool loads, Outcome& outcome);
  std::string WriteInfo(const InfoStep& step);
  std::string Collect(const CollectStep& step);

  RunOptions options_;
  RecipeQuestions answers_;
  std::optional<TranscriptQuestions> transcript_;
  Workbench workbench_;
  std::vector<std::string> words_;
  RunStart start_;           // that the trial was loaded with
  std::vector<Step> steps_;  // since the trial was loaded
  std::vector<Deed> done_;   // since the trial was loaded
};

}  // namespace velmora
