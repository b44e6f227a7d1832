#pragma once

#include <ctime>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "commands/choices.hpp"
#include "commands/own_place.hpp"
#include "commands/random_answers.hpp"
#include "core/command.hpp"
#include "core/workbench.hpp"
#include "run/history/history.hpp"

namespace velmora::fuzz {

/// Somebody at work with the program, as the choices have it; everything that is promised is looked at after
/// each step.
class Session {
 public:
  explicit Session(Choices& choices);

  /// Works until the choices are used up.
  void Run();

 private:
  void Step();
  void RunSome(const Command& command);
  [[nodiscard]] const Command& SomeCommand();
  template <typename Action>
  void Act(const std::string& name, const Action& action);
  void LeaveOldTrial();
  void Gesture();
  void PressSomeKey(OpenView& view);
  void DragSomething(OpenView& view, int graph);
  [[nodiscard]] double SomePlace();
  [[nodiscard]] int SomeGraph();
  void CheckUndo();
  [[nodiscard]] bool IsTooLarge() const;

  Choices& choices_;
  OwnPlace place_{"work"};
  RandomAnswers answers_{choices_, place_};
  History history_{answers_};
  Workbench workbench_{history_.Recording()};
  std::clock_t begin_ = std::clock();
  std::string input_;        // with which the history begins
  bool tellsAll_ = false;    // nothing was done that a recipe does not say
  bool repeatable_ = false;  // nothing was done that the history does not know
};

}  // namespace velmora::fuzz
