#include "run/study/check.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>

#include "app/command_table.hpp"
#include "core/files/files.hpp"
#include "core/questions/questions.hpp"
#include "core/text/text.hpp"
#include "run/recipe/closest_name.hpp"
#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/recipe_run.hpp"
#include "run/study/rehearsal.hpp"

namespace velmora {
namespace {

/// Names in the steps that the program does not have, whatever the trial.
class UnknownNames {
 public:
  explicit UnknownNames(const Recipe& recipe) {
    bool graph = false;  // may be open
    for (const Step& step : recipe.steps) {
      bool needsGraph = false;
      if (const auto* command = std::get_if<CommandStep>(&step.what)) {
        const Command* known = FindCommand(command->id);
        if (known == nullptr) {
          faults_.push_back({step.line, NoSuchCommand(command->id)});
        }
        graph = graph || known == nullptr || OpensGraph(command->id);
        needsGraph = known != nullptr && known->needs == Needs::View;
        CheckAnswers(command->answers);
      } else if (const auto* view = std::get_if<ViewStep>(&step.what)) {
        needsGraph = true;
        CheckAnswers(view->answers);
      }
      if (needsGraph && !graph) {
        faults_.push_back({step.line, "no step before this one opens a graph"});
      }
    }
  }
  [[nodiscard]] const std::vector<RecipeFault>& Faults() const { return faults_; }

 private:
  static bool OpensGraph(std::string_view id) {
    return id.starts_with("graph.") || id.starts_with("ensemble.");
  }
  void CheckAnswers(const std::vector<Answer>& answers) {
    static const std::vector<std::string> boxes = {ButtonCaption(Button::OK), ButtonCaption(Button::Cancel),
                                                   ButtonCaption(Button::Yes), ButtonCaption(Button::No),
                                                   ButtonCaption(Button::Retry)};
    static const std::vector<std::string> pickers = {"OK", "Cancel", "Process", "Save", "Exit"};
    for (const Answer& answer : answers) {
      if (const auto* box = std::get_if<BoxAnswer>(&answer.what)) {
        CheckButton(answer.line, "no box has a button", box->button, boxes);
      } else if (const auto* pick = std::get_if<PickAnswer>(&answer.what)) {
        CheckButton(answer.line, "the channel picker has no button", pick->press, pickers);
      }
    }
  }
  void CheckButton(int line, const std::string& what, const std::string& button,
                   const std::vector<std::string>& known) {
    const auto same = [&button](const std::string& name) { return EqualNoCase(name, button); };
    if (std::none_of(known.begin(), known.end(), same)) {
      faults_.push_back({line, what + " \"" + button + "\"" + DidYouMean(button, known)});
    }
  }

  std::vector<RecipeFault> faults_;
};

// A recipe is checked for any input: what the first is called stands for all.
Variables VariablesOf(const Arguments& arguments) {
  Variables variables = arguments.set;
  variables["out"] = arguments.out;
  SetInputVariables(variables, arguments.inputs.empty() ? "INPUT" : arguments.inputs.front());
  return variables;
}

std::string WhyUnreadable(const std::string& input) {
  try {
    return InputFile(input).Size() > 0 ? std::string() : "the file is empty";
  } catch (const FileError& error) {
    return error.what();
  }
}

}  // namespace

std::vector<std::string> InputsGivenTwice(const std::vector<std::string>& inputs) {
  std::vector<std::string> twice;
  std::set<std::string> seen;
  for (const std::string& input : inputs) {
    std::error_code error;
    const std::string real = std::filesystem::weakly_canonical(input, error).string();
    if (!seen.insert(error ? input : real).second) {
      twice.push_back(input);
    }
  }
  return twice;
}

std::vector<std::string> FaultsOf(const Arguments& arguments, std::string_view text) {
  ReadingOfRecipe reading = TryReadRecipe(text, VariablesOf(arguments));
  const auto add = [&reading](const std::vector<RecipeFault>& more) {
    reading.faults.insert(reading.faults.end(), more.begin(), more.end());
  };
  add(UnknownNames(reading.recipe).Faults());
  add(RehearseForms(reading.recipe));
  std::vector<std::string> lines;
  if (const std::string told = FaultText(arguments.recipe, std::move(reading.faults)); !told.empty()) {
    lines.push_back(told);
  }
  for (const std::string& input : arguments.inputs) {
    if (const std::string why = WhyUnreadable(input); !why.empty()) {
      lines.push_back(OneLine(input) + ": " + why);
    }
  }
  for (const std::string& input : InputsGivenTwice(arguments.inputs)) {
    lines.push_back(OneLine(input) + ": the input is given twice");
  }
  return lines;
}

}  // namespace velmora
