#include "commands/undo.hpp"

#include <filesystem>
#include <initializer_list>
#include <vector>

#include "commands/breach.hpp"
#include "commands/invariants.hpp"
#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/recipe_run.hpp"

namespace velmora::fuzz {

void WantWayBack(History& history, const Workbench& workbench, const OwnPlace& place, std::size_t line) {
  const TrialState before(workbench.trial);
  const std::vector<std::string> files = place.Contents();
  for (const std::size_t to : {line, static_cast<std::size_t>(history.Place())}) {
    Trail("go to line " + std::to_string(to) + " from " + std::to_string(history.Place()));
    if (const std::string why = history.GoTo(to); !why.empty()) {
      if (why.find("is not what it was") != std::string::npos) {
        return;  // a file that a step reads was saved over
      }
      Breach("the history cannot go there: " + why + "\n" + history.Recipe());
    }
    WantWhole(workbench);
  }
  if (files != place.Contents()) {
    Breach("going back changed a file");
  }
  WantSame(before, TrialState(workbench.trial), "back and on\n" + history.Recipe());
}

void WantSameByRecipe(const History& history, const Workbench& workbench, const OwnPlace& place,
                      const std::string& input) {
  const std::string text = history.Recipe();
  Trail("repeat");
  Variables variables = {{"out", place.Path("again")}};
  std::filesystem::create_directory(variables["out"]);
  SetInputVariables(variables, input);
  RecipeRun run({.input = input, .claim = [&place](const std::string& path) {
                   place.WantInside(path);
                   return std::string();
                 }});
  run.State().desktop.draw = workbench.desktop.draw;
  run.State().desktop.drawDocument = workbench.desktop.drawDocument;
  const Outcome outcome = run.Run(ReadRecipe(text, "history", variables));
  if (outcome.failure) {
    Breach("the recipe of the history fails at step " + std::to_string(outcome.failure->at.step) + ": " +
           outcome.failure->why + "\n" + text);
  }
  WantSame(TrialState(workbench.trial), TrialState(run.State().trial), "repeated\n" + text);
  std::filesystem::remove_all(variables["out"]);
}

}  // namespace velmora::fuzz
