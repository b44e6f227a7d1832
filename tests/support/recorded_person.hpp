#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "run/history/history.hpp"
#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/recipe_run.hpp"
#include "support/command_test.hpp"

namespace velmora::test {

/// A person at work: what they do is heard by a history, whose recipe a program just started repeats.
struct RecordedPerson : testing::Test {
  TemporaryDirectory directory;
  ScriptedQuestions person;
  History history{person};
  Workbench workbench{history.Recording()};
  std::string input = directory.Path("walk.vmb");

  void SetUp() override { history.Attach(workbench); }

  void Do(const char* id) { RunCommand(workbench, *FindCommand(id)); }
  /// The next form is filled in so and left by this button, which may ask for a file.
  void Press(const std::string& button, const Edits& edits = {}, const std::string& file = "") {
    person.FillForm(edits, button);
    if (!file.empty()) {
      person.fileAnswers.push_back({directory.Path(file)});
    }
  }
  void Load() {
    workbench.trial.FileName = input;
    Do("file.load");
  }
  /// Runs the recipe on the same input, with results in `out`. What it says of itself is looked at.
  std::unique_ptr<RecipeRun> Replay(const std::string& out = "again") const {
    return ReplayOn(input, out, true);
  }
  std::unique_ptr<RecipeRun> ReplayOn(const std::string& file, const std::string& out, bool strict) const {
    Variables variables = {{"out", directory.Path(out)}};
    std::filesystem::create_directories(directory.Path(out));
    SetInputVariables(variables, file);
    auto run = std::make_unique<RecipeRun>(RunOptions{.input = file, .strict = strict});
    const Outcome outcome = run->Run(ReadRecipe(history.Recipe(), "history", variables));
    EXPECT_FALSE(outcome.failure) << PlaceText(outcome.failure->at) << ": " << outcome.failure->why << "\n"
                                  << history.Recipe();
    return run;
  }
};

}  // namespace velmora::test
