#include "import/load_file.hpp"

#include <filesystem>

#include "core/helpers.hpp"
#include "core/numbers.hpp"
#include "core/paths.hpp"
#include "core/progress.hpp"
#include "core/text.hpp"
#include "import/reader_table.hpp"

namespace velmora {
namespace {

void NameTrial(Workbench& workbench) {
  Trial& trial = workbench.trial;
  std::error_code error;
  workbench.DataDir = (std::filesystem::current_path(error) / "").string();
  trial.FileExt = ToUpper(FileExtension(trial.FileName));
  trial.TrialName = BaseName(trial.FileName);
}

void ResetTrial(Workbench& workbench) {
  Trial& trial = workbench.trial;
  trial.PreviousRate = trial.Rate;
  trial.Rate = 0.0;
  trial.CursorLo = 0;
  trial.CursorHi = 0;
  trial.NPlates = 0;
  trial.ForcesReduced = false;
  trial.PairedGraphs = false;
  workbench.CancelRequested = false;
  workbench.timeBase = TimeBase::Seconds;
  workbench.SecondsRate = 0.0;
  workbench.SecondsDuration = 0.0;
  workbench.TimeReversed = false;
  trial.HeaderLines.fill("");
  trial.HeaderLineCount = 0;
  if (trial.NData > 0) {
    trial.SavedLabels = trial.ChanLabel;
    trial.SavedUnits = trial.ChanUnits;
  }
  trial.TrialIndex = -1;
}

void RunReader(Workbench& workbench, ProgressPanel& panel) {
  if (const Reader* reader = FindReader(workbench.trial.FileExt)) {
    reader->read(workbench, panel);
    return;
  }
  workbench.trial.DiscardData();
  ShowRefusal(workbench, {.title = "Filetype Unrecognized",
                          .text = "File extension, '" + workbench.trial.FileExt + "', was unrecognized.",
                          .icon = Icon::Exclamation});
}

void FinishTrial(Workbench& workbench) {
  Trial& trial = workbench.trial;
  for (int c = 1; c <= trial.NChan; ++c) {
    std::int16_t& colour = trial.ChanColour[static_cast<std::size_t>(c)];
    colour = colour == 0 ? DefaultColour(c) : colour;
  }
  NormaliseCursors(trial);
  ShowFirstChannelPage(workbench);
  trial.TrialTitle = Trim(trial.TrialTitle);
  if (Val(trial.TrialTitle) == 0.0) {
    trial.TrialTitle = trial.FileName;
  }
  trial.OriginalDuration = trial.Duration;
  MarkChanged(workbench, false);
}

}  // namespace

void LoadFile(Workbench& workbench) {
  NameTrial(workbench);
  ProgressPanel panel(workbench);
  panel.SetStatus("Reading setup");
  ResetTrial(workbench);
  RunReader(workbench, panel);
  if (workbench.trial.NData < 1) {
    workbench.trial.DiscardData();
    panel.SetStatus("Reading cancelled.");
    return;
  }
  FinishTrial(workbench);
  panel.Finish();
}

}  // namespace velmora
