#include "dsp/interval_questions.hpp"

namespace velmora {

bool HasInterval(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (trial.CursorLo > 1 && trial.CursorHi != 0 && trial.CursorHi != trial.NData) {
    return true;
  }
  const Button answer = workbench.questions.AskBox(
      {.title = "No Interval Was Set",
       .text = "You must set two cursors to identify the interval that is to be interpolated/fitted.\n"
               "    Press Yes to use the entire duration.\n    Press No to select an interval.",
       .icon = Icon::Exclamation,
       .buttons = {Button::Yes, Button::No, Button::Cancel}});
  if (answer == Button::No) {
    workbench.NextCommand = "graph.all";  // where the cursors are set
  }
  if (answer != Button::Yes) {
    return false;
  }
  trial.CursorLo = 1;
  trial.CursorHi = trial.NData;
  return true;
}

bool ConfirmReplacement(Workbench& workbench, const char* title) {
  return workbench.questions.AskBox({.title = title,
                                     .text = "Press Yes to confirm replacement of data.",
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

}  // namespace velmora
