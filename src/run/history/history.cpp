#include "run/history/history.hpp"

#include <algorithm>
#include <optional>
#include <utility>

#include "app/command_table.hpp"
#include "core/files/files.hpp"
#include "core/files/output_elsewhere.hpp"
#include "core/files/own_directory.hpp"
#include "core/files/paths.hpp"
#include "core/questions/progress.hpp"
#include "core/trial/helpers.hpp"
#include "core/version.hpp"
#include "run/history/staying_view.hpp"
#include "run/history/trial_aside.hpp"
#include "run/recipe/gesture.hpp"
#include "run/recipe/recipe_writer.hpp"

namespace velmora {
namespace {

/// Steps repeated from their answers, under one panel for all of them: those of the steps only keep it
/// alive.
class RepeatedAnswers : public RecipeQuestions {
 public:
  RepeatedAnswers(Questions& person, ProgressPanel& panel) : person_(person), panel_(panel) {}
  void ShowProgress(ProgressPanel& /*panel*/) override { person_.ShowProgress(panel_); }
  void EndProgress(ProgressPanel& /*panel*/) override {}

 private:
  Questions& person_;
  ProgressPanel& panel_;
};

/// While it lives, what is done again stays in the program: files of results are left as they are, which may
/// have been worked on since, and nothing is copied, opened or printed a second time.
class Indoors {
 public:
  /// Throws FileError.
  explicit Indoors(DesktopServices& desktop) : desktop_(desktop), before_(desktop) {
    desktop_.copy = nullptr;
    desktop_.open = nullptr;
    desktop_.printPicture = nullptr;
    desktop_.printTable = nullptr;
  }
  Indoors(const Indoors&) = delete;
  Indoors& operator=(const Indoors&) = delete;
  ~Indoors() { desktop_ = std::move(before_); }

 private:
  DesktopServices& desktop_;
  DesktopServices before_;
  OwnDirectory directory_;
  OutputElsewhere elsewhere_{directory_.Path(), {}};
};

/// While it lives, steps of the past are repeated from these answers and not written down.
class Repeating {
 public:
  Repeating(Recorder& recorder, Questions& answers) : recorder_(recorder) {
    recorder_.BeginRepeating(answers);
  }
  Repeating(const Repeating&) = delete;
  Repeating& operator=(const Repeating&) = delete;
  ~Repeating() { recorder_.EndRepeating(); }

 private:
  Recorder& recorder_;
};

// What would be long to write and is nothing that a later step goes by.
bool IsSave(const Step& step) {
  if (const auto* command = std::get_if<CommandStep>(&step.what)) {
    return command->id.starts_with("save.") || command->id.find(".save") != std::string::npos;
  }
  const auto* view = std::get_if<ViewStep>(&step.what);
  const auto* key = view != nullptr ? std::get_if<KeyPress>(&view->what) : nullptr;
  return key != nullptr && (key->name == "F5" || key->name == "F10");
}

std::filesystem::file_time_type TimeOf(const std::string& path) {
  std::error_code error;
  return std::filesystem::last_write_time(path, error);
}

// That a step loads; empty for all others.
std::string FileOf(const Step& step) {
  const auto* command = std::get_if<CommandStep>(&step.what);
  return command != nullptr ? command->file : std::string();
}

const std::vector<Answer>& AnswersOf(const Step& step) {
  static const std::vector<Answer> none;
  if (const auto* command = std::get_if<CommandStep>(&step.what)) {
    return command->answers;
  }
  const auto* view = std::get_if<ViewStep>(&step.what);
  return view != nullptr ? view->answers : none;
}

void CloseAll(Workbench& workbench) {
  workbench.AfterView = nullptr;
  CloseView(workbench);
}

/// A report with the picture of the graph that was opened last: what a report tells must lead to it.
RecordedStep ReportOfView(const std::vector<RecordedStep>& steps) {
  RecordedStep report{.steps = {{.what = CommandStep{.id = "report.save", .file = {}, .answers = {}}}},
                      .deeds = {{.what = "Report", .channels = {}, .refused = {}}},
                      .needsView = true};
  for (const RecordedStep& step : steps) {
    report.view = std::max(report.view, step.view);
  }
  return report;
}

}  // namespace

void History::Attach(Workbench& workbench) {
  workbench_ = &workbench;
  recorder_.Attach(workbench);
  workbench.stepsDone = [this] { return StepsDone{.words = Sentences(false), .recipe = RecipeOf(false)}; };
  recorder_.onDone = [this](const Action& action) { ActionDone(action); };
}

void History::SetOnDone(std::function<void(const Action&)> onDone) {
  onDone_ = std::move(onDone);
}

void History::ActionDone(const Action& action) {
  const auto* command = std::get_if<const Command*>(&action);
  const std::vector<RecordedStep>& steps = recorder_.Steps();
  if (!recorder_.Repeats() && command != nullptr && (*command)->id == "file.load" && !steps.empty()) {
    file_ = FileOf(steps.front().steps.front());
    if (const std::string loaded = FileOf(steps.back().steps.front()); !loaded.empty()) {
      fileTimes_[loaded] = TimeOf(loaded);
    }
  }
  if (!recorder_.CanGoOn() && !recorder_.Repeats()) {
    newest_.reset();
  }
  if (onDone_) {
    onDone_(action);
  }
}

std::vector<HistoryLine> History::Lines() const {
  return HistoryLines(recorder_.AllSteps(), recorder_.Place());
}

int History::Place() const {
  const std::vector<HistoryLine> lines = Lines();
  return static_cast<int>(std::count_if(lines.begin(), lines.end(),
                                        [](const HistoryLine& line) { return !line.undone; })) -
         1;
}

std::string History::RecipeOf(bool withReports) const {
  std::vector<RecordedStep> recorded = recorder_.Steps();
  if (!withReports) {
    std::erase_if(recorded, [](const RecordedStep& step) { return SavesReport(step.steps.front()); });
    if (workbench_->view != nullptr) {
      recorded.push_back(ReportOfView(recorded));
    }
  }
  const std::vector<bool> needed = NeededSteps(recorded);
  std::vector<Step> steps;
  for (std::size_t k = 0; k < recorded.size(); ++k) {
    if (needed[k] && (withReports || !SavesReport(recorded[k].steps.front()))) {
      steps.insert(steps.end(), recorded[k].steps.begin(), recorded[k].steps.end());
    }
  }
  return RecipeText({.start = recorder_.Start(), .steps = ForAnyInput(std::move(steps))});
}

std::string History::Recipe() const {
  const std::string input = file_.empty() ? "" : " " + FileNamePart(file_);
  std::string head =
      (input.empty() ? "# Steps done." : "# Steps done to" + input + ".") + " To repeat them:\n";
  head += "#   velmora2-run THIS-FILE.yaml" + input + " --out DIRECTORY\n";
  return head + RecipeOf(true);
}

std::vector<std::string> History::Sentences(bool withReports) const {
  const std::vector<RecordedStep> all = recorder_.AllSteps();
  std::vector<std::string> sentences;
  for (const HistoryLine& line : Lines()) {
    if (!line.undone && (withReports || !SavesReport(all[line.last].steps.front()))) {
      sentences.push_back(line.inFull);
    }
  }
  return sentences;
}

std::string History::Text() const {
  std::string text = "Processed with Velmora2, version " + std::string(VersionText) + ":\n";
  int number = 0;
  for (const std::string& sentence : Sentences(true)) {
    text += std::to_string(++number) + ". " + sentence + ".\n";
  }
  return text;
}

std::string History::GoTo(std::size_t line) {
  const std::vector<HistoryLine> lines = Lines();
  if (line >= lines.size() || static_cast<int>(line) == Place()) {
    return {};
  }
  const std::vector<RecordedStep> all = recorder_.AllSteps();
  const std::size_t last = lines[line].last;
  const bool onward = last >= recorder_.Place() && !recorder_.LookedSince();
  const std::size_t first = onward ? recorder_.Place() : 0;
  const bool toNewest = line + 1 == lines.size();
  std::string why = WhyNotReadable(all, first, last);
  if (!why.empty() && !(newest_ && toNewest)) {
    return why;
  }
  std::optional<Indoors> indoors;
  try {
    indoors.emplace(workbench_->desktop);
  } catch (const FileError& error) {
    return std::string("There is no room for temporary files: ") + error.what();
  }
  std::optional<StayingView> graph;
  if (first == 0) {
    graph.emplace(*workbench_, recorder_);
  }
  if (why.empty()) {
    why = RepeatAll(all, first, last);
  }
  if (!why.empty() && newest_) {
    CloseAll(*workbench_);
    std::exchange(newest_, {})->PutBack(*workbench_);
    recorder_.Resume(all, all.size());
    why = toNewest ? "" : why + "\nThe trial is as it was after the last step.";
  }
  if (graph) {
    graph->ComeBack();
  }
  return why;
}

std::string History::WhyNotReadable(const std::vector<RecordedStep>& steps, std::size_t first,
                                    std::size_t last) const {
  for (std::size_t k = first; k <= last; ++k) {
    if (const std::string file = FileOf(steps[k].steps.front()); !IsAsOpened(file)) {
      return "The file " + file + " is not what it was when it was opened: it was saved to or removed since.";
    }
  }
  return {};
}

bool History::IsAsOpened(const std::string& file) const {
  const auto opened = fileTimes_.find(file);
  return opened == fileTimes_.end() || TimeOf(file) == opened->second;
}

std::string History::RepeatAll(const std::vector<RecordedStep>& steps, std::size_t first, std::size_t last) {
  if (first == 0) {
    if (!newest_ && TrialAside::CanHold(workbench_->trial)) {
      newest_.emplace(*workbench_);
    }
    workbench_->merge = {};
    workbench_->events = {};
    TakeUp(*workbench_, recorder_.Start());
  }
  ProgressPanel panel(*workbench_, ProgressPanel::Kind::Processing);
  RepeatedAnswers answers(recorder_.Answerer(), panel);
  const Repeating repeating(recorder_, answers);
  std::string why;
  std::size_t done = first;
  for (; done <= last && why.empty(); ++done) {
    panel.SetStatus("Step " + std::to_string(done + 1) + " of " + std::to_string(last + 1) +
                    " is repeated. Please wait.");
    why = Repeat(steps[done], answers);
  }
  if (!why.empty() && newest_) {
    return why;
  }
  const bool lost = workbench_->trial.NData < 1;
  recorder_.Resume(lost ? std::vector<RecordedStep>() : steps, lost ? 0 : why.empty() ? done : done - 1);
  return why;
}

std::string History::Repeat(const RecordedStep& recorded, RecipeQuestions& answers) {
  if (IsSave(recorded.steps.front()) && !recorded.cutTrial) {
    return {};
  }
  Trial& trial = workbench_->trial;
  // Reading the file again must not pass for another file that was read before it.
  const auto savedLabels = trial.SavedLabels;
  const auto savedUnits = trial.SavedUnits;
  if (recorded.before) {
    PutBack(*recorded.before, *workbench_);
  }
  std::string why;
  for (const Step& step : recorded.steps) {
    why += why.empty() ? Repeat(step, answers) : "";
  }
  if (!recorded.before) {
    trial.SavedLabels = savedLabels;
    trial.SavedUnits = savedUnits;
  }
  return recorded.deeds.empty() ? "" : why;  // what looks left behind is put back where it matters
}

std::string History::Repeat(const Step& step, RecipeQuestions& answers) {
  answers.BeginStep(AnswersOf(step), workbench_->trial);
  workbench_->report = {};
  std::string why;
  try {
    if (const auto* command = std::get_if<CommandStep>(&step.what)) {
      if (!command->file.empty()) {
        workbench_->trial.FileName = command->file;
      }
      RunCommand(*workbench_, *FindCommand(command->id));
    } else if (const auto* view = std::get_if<ViewStep>(&step.what);
               view != nullptr && workbench_->view != nullptr) {
      DoGesture(*workbench_, *view);
    }
  } catch (const std::exception& error) {
    why = error.what();
  }
  for (const std::string& failure : workbench_->report.failures) {
    why += (why.empty() ? "" : "\n") + failure;
  }
  return why;
}

}  // namespace velmora
