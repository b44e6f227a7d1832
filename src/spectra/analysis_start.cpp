#include "spectra/analysis_start.hpp"

#include "core/trial/helpers.hpp"

namespace velmora {

bool AskCursorWindow(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (trial.CursorLo <= 1 && trial.CursorHi >= trial.NData) {
    return true;
  }
  const Button answer = workbench.questions.AskBox(
      {.title = "Process within Window?",
       .text = "Press Yes to process data between the cursors, No to process all the data or Cancel.",
       .icon = Icon::Question,
       .buttons = {Button::Yes, Button::No, Button::Cancel}});
  if (answer == Button::No) {
    trial.CursorLo = 1;
    trial.CursorHi = trial.NData;
  }
  return answer != Button::Cancel;
}

KeepsChanged::KeepsChanged(Workbench& workbench)
    : workbench_(workbench), before_(workbench.trial.FileChanged) {}

KeepsChanged::~KeepsChanged() {
  MarkChanged(workbench_, before_);
}

}  // namespace velmora
