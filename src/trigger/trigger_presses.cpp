// What the buttons of the trigger form do.
#include <algorithm>
#include <array>
#include <cmath>

#include "core/files/files.hpp"
#include "core/files/temporary_file.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"
#include "core/trial/helpers.hpp"
#include "graph/colours.hpp"
#include "results/result_presses.hpp"
#include "trigger/trigger_form.hpp"

namespace velmora {
namespace {

constexpr const char* kTable = "flxCoeff";

}  // namespace

void TriggerForm::Scan() {
  if (!Kind()) {
    ShowRefusal(workbench_, {.title = "Trigger Characteristics",
                             .text = "Select a type of trigger first.",
                             .icon = Icon::Exclamation});
    return;
  }
  workbench_.preferences.TriggerChannel = channel_ + 1;
  SettleLevels();
  DropResults();
  TriggerResults results{
      .channel = channel_ + 1, .kind = KindText(*Kind()), .range = Range(), .triggers = {}};
  bool tooMany = false;
  results.triggers = Find(&tooMany);
  found_ = std::to_string(results.triggers.size());
  view_.TriggeringOffered = !results.triggers.empty();
  if (results.triggers.empty()) {
    Follow();
    ShowRefusal(workbench_,
                {.text = "No values met threshold conditions.  Select other triggering options or "
                         "another channel.",
                 .icon = Icon::Information});
    return;
  }
  if (tooMany) {
    ShowRefusal(workbench_, {.text = "Too many triggers.  Will show first.", .icon = Icon::Exclamation});
  }
  std::vector<double> places;
  for (const Trigger& trigger : results.triggers) {
    places.push_back(PlaceOf(workbench_.trial, trigger.sample));
  }
  view_.AddCursors(
      places, colour_ == 0 ? std::nullopt : std::optional(ColourTable.at(static_cast<std::size_t>(colour_))));
  view_.ShowNumbers(numbers_);
  results_ = std::move(results);
  Tell();
  View();
  Follow();
  view_.RedrawAll();
}

void TriggerForm::Tell() const {
  const TriggerCondition condition = Condition();
  std::string of(results_->kind);
  const auto level = [](float value) { return PlainNumber(value); };
  if (LevelsOf(condition.kind) > 0) {
    of += " " + level(condition.high);
  }
  if (LevelsOf(condition.kind) > 1) {
    of += " and " + level(condition.low);
  }
  Did(workbench_, CountOf(static_cast<std::int64_t>(results_->triggers.size()), "trigger") + ", " + of,
      std::array{results_->channel});
}

void TriggerForm::DropResults() {
  results_.reset();
  tables_.clear();
  std::erase_if(workbench_.results.ResultTables,
                [](const ResultTable& table) { return table.name == kTable; });
}

bool TriggerForm::IsScanned() {
  if (!results_) {
    ShowRefusal(workbench_, {.title = "Data Not Scanned",
                             .text = "Data need to be scanned first. Press the Scan button.",
                             .icon = Icon::Exclamation});
  }
  return results_.has_value();
}

void TriggerForm::View() {
  if (IsScanned()) {
    tables_ = {TriggerTable(workbench_, *results_)};
    KeepTable(workbench_.results.ResultTables, tables_.front());
  }
}

void TriggerForm::Save() {
  if (!IsScanned()) {
    return;
  }
  const std::string path =
      SaveResults(workbench_,
                  {.title = "Save as .TRG file",
                   .defaultName = workbench_.trial.TrialName + ".trg",
                   .extension = ".evt",
                   .filter = "Velmora2 events (.trg)|*.trg|Text file (*.txt)|*.txt|All files (*.*)|*.*"},
                  [this] { return TriggerFileText(workbench_, *results_); });
  if (!path.empty()) {
    DidSave(workbench_, "Saved triggers as");
  }
}

void TriggerForm::SendToClipboard() {
  if (IsScanned()) {
    velmora::SendToClipboard(workbench_, TriggerClipboardText(workbench_, *results_));
  }
}

void TriggerForm::Print() {
  if (IsScanned()) {
    PrintResults(workbench_, *this);
  }
}

void TriggerForm::SendToNotepad() {
  SendTo("Notepad.exe");
}

void TriggerForm::SendToQuattroPro() {
  SendTo("QPW.exe");
}

void TriggerForm::SendToExcel() {
  SendTo("Excel.exe");
}

void TriggerForm::SendTo(const char* program) {
  if (!IsScanned()) {
    return;
  }
  SendToProgram(workbench_, program, [this]() -> std::string {
    try {
      const std::string name = workbench_.trial.TrialName;
      return WriteTemporaryFile((name.empty() ? "triggers" : name) + ".trg",
                                TriggerFileText(workbench_, *results_));
    } catch (const FileError& error) {
      ShowFailure(workbench_, {.text = error.what(), .icon = Icon::Exclamation});
      return {};
    }
  });
}

// --- The cursors

void TriggerForm::KeepFirstTwo() {
  view_.KeepFirstTwo();
  ShowKept();
}

void TriggerForm::KeepFirstAndLast() {
  view_.KeepFirstAndLast();
  ShowKept();
}

void TriggerForm::ShowKept() {
  const Trial& trial = workbench_.trial;
  time_ =
      FormatNumber((trial.CursorHi - trial.CursorLo) / trial.Rate, workbench_.patterns.TimePattern) + " s";
  view_.RedrawAll();
}

void TriggerForm::Remove() {
  view_.NoCursors();
  DropResults();
  found_.clear();
  view_.RedrawAll();
}

// --- The filters

void TriggerForm::OnlyPositive() {
  filters_.PositiveOnly = true;
  filters_.NegativeOnly = false;
  Follow();
}

void TriggerForm::OnlyNegative() {
  filters_.PositiveOnly = false;
  filters_.NegativeOnly = true;
  Follow();
}

void TriggerForm::BothSigns() {
  filters_.PositiveOnly = false;
  filters_.NegativeOnly = false;
  Follow();
}

void TriggerForm::EnterMinimum() {
  filters_.MinIntegral = std::fabs(Val(workbench_.questions.AskInput(
      {.title = "Minimum Integral",
       .prompt = "Enter minimum (absolute value) integral for reporting. Enter zero or all.",
       .defaultText = FormatNumber(filters_.MinIntegral, "0.000"),
       .isNumber = true})));
  Follow();
}

void TriggerForm::EnterRefractory() {
  const double entered = Val(workbench_.questions.AskInput(
      {.title = "Refractory Period",
       .prompt = "Enter refractory period for triggering (use negative value for number of samples).\n"
                 "Enter zero or none.",
       .defaultText = PlainNumber(filters_.RefractoryPeriod),
       .isNumber = true}));
  filters_.RefractoryPeriod = entered < 0 ? -entered / workbench_.trial.Rate : entered;
  Follow();
}

void TriggerForm::Leave() {
  Preferences& kept = workbench_.preferences;
  kept.TriggerType = type_;
  kept.TriggerHigh = AsKept(level1_);
  kept.TriggerLow = AsKept(level2_);
}

}  // namespace velmora
