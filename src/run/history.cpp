#include "run/history.hpp"

#include <utility>

#include "app/command_table.hpp"
#include "core/files/paths.hpp"
#include "graph/single_view.hpp"
#include "run/gesture.hpp"
#include "run/recipe_questions.hpp"
#include "run/recipe_writer.hpp"

namespace velmora {
namespace {

bool IsSave(const Step& step) {
  if (const auto* command = std::get_if<CommandStep>(&step.what)) {
    return command->id.starts_with("save.") || command->id.ends_with(".save") ||
           command->id == "cursor.save-events";
  }
  const auto* view = std::get_if<ViewStep>(&step.what);
  const auto* key = view != nullptr ? std::get_if<KeyPress>(&view->what) : nullptr;
  return key != nullptr && (key->name == "F5" || key->name == "F10");
}

std::filesystem::file_time_type TimeOf(const std::string& path) {
  std::error_code error;
  return std::filesystem::last_write_time(path, error);
}

const std::vector<Answer>& AnswersOf(const Step& step) {
  static const std::vector<Answer> none;
  if (const auto* command = std::get_if<CommandStep>(&step.what)) {
    return command->answers;
  }
  const auto* view = std::get_if<ViewStep>(&step.what);
  return view != nullptr ? view->answers : none;
}

}  // namespace

void History::Attach(Workbench& workbench) {
  workbench_ = &workbench;
  recorder_.Attach(workbench);
  recorder_.onDone = [this](const Action& action) { ActionDone(action); };
}

void History::SetOnDone(std::function<void(const Action&)> onDone) {
  onDone_ = std::move(onDone);
}

void History::ActionDone(const Action& action) {
  const auto* command = std::get_if<const Command*>(&action);
  if (command != nullptr && (*command)->id == "file.load" && Steps().size() == 1) {
    file_ = std::get<CommandStep>(Steps().front().step.what).file;
    fileTime_ = TimeOf(file_);
  }
  if (onDone_) {
    onDone_(action);
  }
}

std::string History::Recipe() const {
  std::vector<Step> steps;
  for (const RecordedStep& recorded : Steps()) {
    steps.push_back(recorded.step);
  }
  std::string head = "# Steps done to " + FileNamePart(file_) + ". To repeat them:\n";
  head += "#   velmora2-run THIS-FILE.yaml " + FileNamePart(file_) + " --out DIRECTORY\n";
  return head + RecipeText(ForAnyInput(std::move(steps)));
}

std::string History::GoBack(std::size_t last) {
  if (TimeOf(file_) != fileTime_) {
    return "The file " + file_ + " is not what it was when it was opened: it was saved to or removed since.";
  }
  std::vector<Step> steps;
  for (std::size_t k = 0; k <= last && k < Steps().size(); ++k) {
    if (!IsSave(Steps()[k].step)) {
      steps.push_back(Steps()[k].step);
    }
  }
  CloseView(*workbench_);
  workbench_->merge = {};
  for (const Step& step : steps) {
    if (std::string why = Repeat(step); !why.empty()) {
      return why;
    }
  }
  return {};
}

std::string History::Repeat(const Step& step) {
  RecipeQuestions answers;
  answers.BeginStep(AnswersOf(step), workbench_->trial);
  Questions& person = recorder_.SetAnswerer(answers);
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
  recorder_.SetAnswerer(person);
  for (const std::string& failure : workbench_->report.failures) {
    why += (why.empty() ? "" : "\n") + failure;
  }
  return why;
}

}  // namespace velmora
