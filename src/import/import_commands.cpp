#include "import/import_commands.hpp"

#include <array>

#include "core/files/paths.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "events/event_tracking.hpp"
#include "formats/units_file/units_file_reader.hpp"
#include "import/load_file.hpp"
#include "import/merge_form.hpp"

namespace velmora {
namespace {

constexpr std::int16_t kNotIdentified = -1;

// Events of the trial at hand are saved under its own name, while the path of the next one stands in the
// trial already. Staying, the trial has its own name again.
bool MayLeaveTrial(Workbench& workbench) {
  Trial& trial = workbench.trial;
  const std::string next = trial.FileName;
  if (workbench.events.EventsUnsaved && !workbench.LoadedFile.empty()) {
    trial.FileName = workbench.LoadedFile;
    trial.TrialName = BaseName(trial.FileName);
    trial.FileExt = ToUpper(FileExtension(trial.FileName));
  }
  if (!MayLeaveEvents(workbench)) {
    return false;
  }
  trial.FileName = next;
  return true;
}

// The path is set before the command runs: by the browser, by the command line, or by a recipe.
// A trial opened by hand gets a rate and a duration that fit each other, whatever its file says.
void LoadCommand(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (!MayLeaveTrial(workbench)) {
    return;
  }
  trial.FileTypeCode = kNotIdentified;
  LoadFile(workbench);
  if (trial.NData > 0) {
    trial.Duration = trial.Rate > 0 ? (trial.NData - 1) / trial.Rate : trial.NData;
    if (!(trial.Rate > 0)) {
      trial.Rate = 1.0;
      AddNotice(workbench,
                "The file tells no sampling rate; 1 Hz is taken for it.  Sampling Rate in the Edit menu "
                "corrects that.");
    }
  } else {
    workbench.report.failures.push_back("no trial was loaded from " + trial.FileName);
  }
}

constexpr std::array kImportCommands = {
    Command{"file.load", "&Load selected file", "&File", Needs::Nothing, LoadCommand},
    Command{"file.merge", "&Merge file with existing data", "&File", Needs::Data, ShowMergeDialogue},
    Command{"file.read-units", "Read Sa&ved units, labels && factors", "&File", Needs::Data, ReadUnitsFile},
};

}  // namespace

std::span<const Command> ImportCommands() {
  return kImportCommands;
}

}  // namespace velmora
