#include "import/load_file.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/read_error.hpp"
#include "import/format_name.hpp"
#include "import/load_questions.hpp"
#include "import/merge_form.hpp"
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

// The file that holds the setup of one recorder has a name of its own and no extension.
std::string_view KindOfFile(const Trial& trial) {
  const bool setup = trial.FileExt.empty() && EqualNoCase(trial.TrialName, "SETUP");
  return setup ? std::string_view("STP") : std::string_view(trial.FileExt);
}

void RunReader(Workbench& workbench, ProgressPanel& panel) {
  const std::string_view kind = KindOfFile(workbench.trial);
  std::string head;
  try {
    head.resize(kHeadBytes);
    head.resize(InputFile(workbench.trial.FileName).ReadAt(0, head.data(), kHeadBytes));
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
    return;
  }
  if (const Format* format = FindFormat(kind, head)) {
    ReadFormat(workbench, panel, *format);
  } else {
    AskParseUnknownExtension(workbench, panel);
  }
}

void FinishTrial(Workbench& workbench) {
  Trial& trial = workbench.trial;
  for (int c = 1; c <= trial.NChan; ++c) {
    std::int16_t& colour = trial.ChanColour[c];
    colour = colour == 0 ? DefaultColour(c) : colour;
  }
  NormaliseCursors(trial);
  ShowFirstChannelPage(workbench);
  trial.TrialTitle = Trim(trial.TrialTitle);
  if (Val(trial.TrialTitle) == 0.0) {
    trial.TrialTitle = trial.FileName;
  }
  trial.OriginalDuration = trial.Duration;
  trial.FormatName = FormatNameOf(trial);  // the code may change while the trial stays what it was read from
  workbench.LoadedFile = trial.FileName;
  workbench.merge.NFilesMerged = workbench.merge.MergePending ? workbench.merge.NFilesMerged : 1;
}

void ReadTrial(Workbench& workbench) {
  ProgressPanel panel(workbench);
  panel.SetStatus("Reading setup");
  ResetTrial(workbench);
  RunReader(workbench, panel);
  MarkChanged(workbench, false);
  if (workbench.trial.NData < 1) {
    workbench.trial.DiscardData();
    panel.SetStatus("Reading cancelled.");
    return;
  }
  FinishTrial(workbench);
  panel.Finish();
}

void TellLoaded(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  std::string words = "Opened " + FileNamePart(trial.FileName) + ", " + CountOf(trial.NChan, "channel") +
                      ", " + CountOf(trial.NData, "sample");
  if (trial.Rate > 0) {
    words += " at " + PlainNumber(trial.Rate) + " Hz";
  }
  Did(workbench, words);
}

}  // namespace

void ResetTrial(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (workbench.graph.ViewDuration == trial.Duration) {
    workbench.graph.ViewDuration = 0.0;  // who saw all of this trial sees all of the next
  }
  if (workbench.view != nullptr) {
    workbench.view->TrialReplaced();
  }
  trial.PreviousRate = trial.Rate;
  trial.Rate = 0.0;
  trial.CursorLo = 0;
  trial.CursorHi = 0;
  trial.FirstSample = 0;
  trial.LastSample = 0;
  trial.NPlates = 0;
  trial.ForcesReduced = false;
  trial.PlatesCombined = false;
  trial.FilePlates.clear();
  trial.PairedGraphs = false;
  workbench.CancelRequested = false;
  workbench.time.Base = TimeBase::Seconds;
  workbench.time.SecondsRate = 0.0;
  workbench.time.SecondsDuration = 0.0;
  workbench.time.TimeReversed = false;
  workbench.events = {};
  workbench.ensemble.Files.clear();  // cut out of the trial that goes
  trial.HeaderLines.fill("");
  trial.HeaderLineCount = 0;
  if (trial.NData > 0) {
    std::copy_n(trial.ChanLabel.begin(), trial.NChan + 1, trial.SavedLabels.begin());
    std::copy_n(trial.ChanUnits.begin(), trial.NChan + 1, trial.SavedUnits.begin());
  }
  trial.FormatName.clear();
  trial.TrialIndex = -1;
  trial.Notices.clear();
  workbench.LoadedFile.clear();
  workbench.results.ResultTables.clear();  // a report of the next trial must not pass them for its own
}

void LoadFile(Workbench& workbench) {
  NameTrial(workbench);
  try {
    ReadTrial(workbench);
  } catch (...) {
    workbench.trial.DiscardData();  // a half-read trial must not pass for one
    MarkChanged(workbench, false);
    throw;
  }
  if (workbench.trial.NData > 0) {
    TellLoaded(workbench);
  }
  if (workbench.merge.MergePending && workbench.trial.NData > 0) {
    ShowMergeDialogue(workbench);
  }
}

}  // namespace velmora
