#include "formats/units_file/units_file_writer.hpp"

#include <string>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/fixed_names.hpp"
#include "formats/units_file/units_file_layout.hpp"

namespace velmora {
namespace {

std::string Names(const Trial& trial, std::size_t c) {
  return "\t" + PadRight(OneLine(trial.ChanLabel[c].Text()), units_file::kLabelWidth) + "\t" +
         PadRight(OneLine(trial.ChanUnits[c].Text()), units_file::kUnitsWidth);
}

std::string Contents(const Workbench& workbench) {
  const Trial& trial = workbench.trial;
  std::string text = std::string(units_file::kFirstLine) + OneLine(trial.FileName) + "\n" +
                     std::string(units_file::kCountLine) + FormatNumber(trial.NChan, "00") + "\n" +
                     std::string(units_file::kHeads) + "\n" + std::string(units_file::kAbscissa) + ":" +
                     Names(trial, 0) + "\n";
  for (int channel = 1; channel <= trial.NChan; ++channel) {
    const auto c = static_cast<std::size_t>(channel);
    text += ChannelNumber(channel) + ":" + Names(trial, c) + "\t" +
            PlainNumber(workbench.scaling.ScaleMemory[c]) + "\t" +
            PlainNumber(workbench.filters.LastHighPassCutoffs[c]) + "\t" +
            PlainNumber(workbench.filters.LastLowPassCutoffs[c]) + "\t" +
            PlainNumber(workbench.thresholds.ChanThreshold[c]) + "\n";
  }
  return text;
}

}  // namespace

void WriteUnitsFile(Workbench& workbench, ProgressPanel& /*panel*/) {
  if (!AskSaveName(workbench, {.title = "Save Velmora Units, scaling and labels (.bsu)",
                               .defaultName = workbench.trial.TrialName + ".vmu",
                               .extension = ".vmu",
                               .filter = std::string(units_file::kFilter)})) {
    return;
  }
  OutputFile file(workbench.OutputFileName);
  file.Write(ToWindows1252(Contents(workbench)));
  CommitSave(workbench, file);
  DidSave(workbench, "Saved units, labels and factors as");
  SavedNames names;
  for (int c = 0; c <= workbench.trial.NChan; ++c) {
    names.Add(workbench.trial.ChanLabel[c].Text());
    names.Add(workbench.trial.ChanUnits[c].Text());
  }
  names.Tell(workbench);
}

}  // namespace velmora
