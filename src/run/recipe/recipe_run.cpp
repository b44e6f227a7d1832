#include "run/recipe/recipe_run.hpp"

#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include "app/command_table.hpp"
#include "core/files/files.hpp"
#include "core/files/output_guard.hpp"
#include "core/files/paths.hpp"
#include "core/trial/helpers.hpp"
#include "run/batch/interrupt.hpp"
#include "run/recipe/closest_name.hpp"
#include "run/recipe/gesture.hpp"
#include "run/recipe/recipe_writer.hpp"
#include "run/report/drawing.hpp"
#include "run/report/info.hpp"
#include "run/study/collect.hpp"

namespace velmora {
namespace {

void AppendFailure(std::string& list, const std::string& item) {
  list += (list.empty() || item.empty() ? "" : "; ") + item;
}

/// A step may open another directory. The next input, and tables and manifest at the end, are where the
/// program was started.
class DirectoryOfStart {
 public:
  DirectoryOfStart() : directory_(std::filesystem::current_path(error_)) {}
  DirectoryOfStart(const DirectoryOfStart&) = delete;
  DirectoryOfStart& operator=(const DirectoryOfStart&) = delete;
  ~DirectoryOfStart() { std::filesystem::current_path(directory_, error_); }

 private:
  std::error_code error_;
  std::filesystem::path directory_;
};

}  // namespace

std::string NoSuchCommand(const std::string& id) {
  std::vector<std::string> ids;
  for (const Command& known : AllCommands()) {
    ids.emplace_back(known.id);
  }
  return "there is no command \"" + id + "\"" + DidYouMean(id, ids) + " (velmora2-run --commands lists them)";
}

RecipeRun::RecipeRun(RunOptions options) : options_(std::move(options)), workbench_(Answerer()) {
  workbench_.desktop.draw = LoadAndDraw;
  workbench_.desktop.drawDocument = LoadAndDrawDocument;
  workbench_.stepsDone = [this] {
    return StepsDone{.words = words_, .recipe = RecipeText({.start = start_, .steps = ForAnyInput(steps_)})};
  };
}

Questions& RecipeRun::Answerer() {
  if (!options_.transcript) {
    return answers_;
  }
  return transcript_.emplace(answers_, options_.input, options_.transcript);
}

void RecipeRun::CheckOutput(const std::string& path) const {
  const std::string refusal = options_.claim ? options_.claim(path) : std::string();
  if (!refusal.empty()) {
    throw FileError(refusal);
  }
}

Outcome RecipeRun::Run(const Recipe& recipe) {
  const OutputGuard guard([this](const std::string& path) { CheckOutput(path); }, options_.written);
  const DirectoryOfStart whereStarted;
  TakeUp(workbench_, recipe.start);
  start_ = recipe.start;
  Outcome outcome;
  StepPlace place;
  for (const Step& step : recipe.steps) {
    place = {.step = place.step + 1, .line = step.line, .action = ActionOf(step)};
    if (options_.onStep) {
      options_.onStep(place);
    }
    if (transcript_) {
      transcript_->BeginStep(place.step, workbench_.trial);
    }
    workbench_.report = {};
    const bool loads = ActionOf(step) == "file.load" && !workbench_.merge.MergePending;
    std::string failure = RunStep(step);
    NoteStep(step, loads);
    NoteDeeds(place, loads, outcome);
    if (InterruptSignal() != 0) {
      outcome.interrupted = place;
    }
    for (const std::string& warning : workbench_.report.warnings) {
      if (options_.strict) {
        AppendFailure(failure, warning);
      } else {
        outcome.warnings.push_back({place, warning});
      }
    }
    if (!failure.empty() && !outcome.interrupted) {
      outcome.failure = StepProblem{place, failure};
    }
    if (outcome.interrupted || outcome.failure) {
      break;
    }
  }
  return outcome;
}

// Pictures and reports that are made on the way lead nowhere.
void RecipeRun::NoteStep(const Step& step, bool loads) {
  if (loads) {
    start_ = StartOf(workbench_);
    steps_.clear();
    words_.clear();
  }
  const auto* view = std::get_if<ViewStep>(&step.what);
  const bool image = view != nullptr && std::holds_alternative<ImageGesture>(view->what);
  if (SavesReport(step)) {
    return;
  }
  if (!image && (view != nullptr || std::holds_alternative<CommandStep>(step.what))) {
    steps_.push_back(step);
  }
  if (std::string words = WordsOf(workbench_.report.deeds, Telling::InFull); !words.empty()) {
    words_.push_back(std::move(words));
  }
}

void RecipeRun::NoteDeeds(const StepPlace& place, bool loads, Outcome& outcome) {
  CommandReport& report = workbench_.report;
  if (loads) {
    done_.clear();
  }
  done_.insert(done_.end(), report.deeds.begin(), report.deeds.end());
  if (transcript_) {
    transcript_->EndStep(report.deeds);
  }
  if (const std::string words = WordsOf(report.deeds); !words.empty()) {
    outcome.done.push_back({place, words});
  }
  const bool told = !report.warnings.empty() || !report.failures.empty();
  for (const Deed& deed : report.deeds) {
    if (!told && !deed.refused.empty()) {  // by no box
      report.warnings.push_back(SentenceOf(deed));
    }
  }
}

std::string RecipeRun::RunStep(const Step& step) {
  try {
    if (const auto* command = std::get_if<CommandStep>(&step.what)) {
      return RunCommandStep(*command);
    }
    if (const auto* info = std::get_if<InfoStep>(&step.what)) {
      return WriteInfo(*info);
    }
    if (const auto* collect = std::get_if<CollectStep>(&step.what)) {
      return Collect(*collect);
    }
    return RunViewStep(std::get<ViewStep>(step.what));
  } catch (const std::bad_alloc&) {
    return "there is not enough memory";
  } catch (const std::exception& error) {
    return error.what();
  }
}

template <typename Action>
std::string RecipeRun::RunAnswered(const std::vector<Answer>& answers, const Action& action) {
  answers_.BeginStep(answers, workbench_.trial);
  std::string abandoned;
  try {
    action();
  } catch (const CommandAbandoned& error) {
    abandoned = error.what();
  }
  std::string failure;
  for (const std::string& reported : workbench_.report.failures) {
    AppendFailure(failure, reported);
  }
  AppendFailure(failure, abandoned);
  if (failure.empty()) {
    failure = answers_.UnusedAnswers();
  }
  return failure;
}

std::string RecipeRun::RunCommandStep(const CommandStep& step) {
  const Command* command = FindCommand(step.id);
  if (command == nullptr) {
    return NoSuchCommand(step.id);
  }
  if (!step.file.empty()) {
    workbench_.trial.FileName = FullPath(step.file);
  }
  return RunAnswered(step.answers, [&] { RunCommand(workbench_, *command); });
}

std::string RecipeRun::RunViewStep(const ViewStep& step) {
  if (workbench_.view == nullptr) {
    return "no graph is open";
  }
  return RunAnswered(step.answers, [&] { DoGesture(workbench_, step); });
}

std::string RecipeRun::WriteInfo(const InfoStep& step) {
  try {
    OutputFile file(step.file);
    file.Write(InfoText(workbench_, done_));
    CommitSave(workbench_, file);
  } catch (const FileError& error) {
    return "cannot write " + step.file + ": " + error.what();
  }
  return {};
}

std::string RecipeRun::Collect(const CollectStep& step) {
  const TableRows rows =
      CollectRows(step, {.workbench = workbench_, .done = done_, .input = options_.input},
                  [this](const std::string& why) { workbench_.report.warnings.push_back(why); });
  const std::string refusal = options_.collect ? options_.collect(rows) : std::string();
  return refusal.empty() ? std::string() : "cannot write " + step.file + ": " + refusal;
}

}  // namespace velmora
