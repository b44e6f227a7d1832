#include <algorithm>

#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/version.hpp"
#include "dsp/channel_picking.hpp"
#include "ensemble/ensemble_form.hpp"
#include "ensemble/ensemble_trial.hpp"

namespace velmora {

bool EnsembleForm::ChooseFirst() {
  if (!MayDropResults()) {
    return false;
  }
  std::vector<std::string> paths = AskFiles("Select first file to ensemble average", false);
  if (paths.empty()) {
    return false;
  }
  const std::string first = paths.front();
  paths.erase(paths.begin());
  waiting_ = std::move(paths);
  stage_ = Stage::Choosing;
  variation_.clear();
  Load(first);
  return false;
}

bool EnsembleForm::SelectChannels() {
  const Trial& trial = workbench_.trial;
  ChannelList channels = {1};
  if (trial.NChan >= 2) {
    const bool changed = trial.FileChanged;
    channels = PickChannels(workbench_, "Select channel(s) to be ensemble averaged.");
    MarkChanged(workbench_, changed);  // nothing is altered here, whatever the picker marked
    if (workbench_.chooser.ChooserCancelled) {
      return false;
    }
  }
  if (channels.empty()) {
    ShowRefusal(workbench_, {.title = "No Channels Selected",
                             .text = "You must select at least one channel.  Maximum is 32.",
                             .icon = Icon::Exclamation});
    return false;
  }
  if (channels.size() > EnsembleAverage::kMostChannels) {
    ShowRefusal(workbench_, {.title = "Too Many Channels Selected",
                             .text = "Too many channels selected.  Maximum is 32.",
                             .icon = Icon::Exclamation});
    return false;
  }
  average_.Choose(trial, channels);
  stage_ = Stage::Chosen;
  return false;
}

bool EnsembleForm::BeginAverage() {
  const Trial& trial = workbench_.trial;
  average_.Begin(workbench_, txtNumber_);
  txtFilename_ = Trim(txtFilename_).empty() ? "Ensemble.ens" : txtFilename_;
  const std::string from = Value(trial.Data(1, 0)) + " s to " + Value(trial.Data(trial.NData, 0)) + " s";
  workbench_.OutputFileName = FullPath(txtFilename_);
  try {
    log_.Open(workbench_.OutputFileName, "Ensemble average by Velmora2, version " + std::string(VersionText) +
                                             "\nFirst file: " + trial.FileName +
                                             "\nTrial: " + trial.TrialName + ".\n       From " + from + "\n");
  } catch (const FileError& error) {
    ShowSaveFailure(workbench_, error.what());
    return false;
  }
  Request(workbench_, ShellRequest::ShowFiles);
  logTrouble_ = false;
  lstFiles_.clear();
  variation_.clear();
  textFile_.clear();
  stage_ = Stage::Averaging;
  AddLoaded();
  AddFiles(std::exchange(waiting_, {}));
  return false;
}

bool EnsembleForm::OpenNext() {
  const std::vector<std::string> paths =
      AskFiles("Select next file (use Shift or Ctrl to select multiple files)", true);
  if (paths.size() != 1 || !chkPreview_) {
    AddFiles(paths);
    return false;
  }
  if (!Load(paths.front())) {
    return false;
  }
  pending_ = true;
  return ShowGraph();
}

bool EnsembleForm::AddLast() {
  AddLoaded();
  return false;
}

bool EnsembleForm::RemoveLast() {
  const std::string& file = workbench_.trial.FileName;
  const Box box{.title = "Remove Last File",
                .text = "Remove file: " + file,
                .icon = Icon::Question,
                .buttons = {Button::Yes, Button::No}};
  if (workbench_.questions.AskBox(box) != Button::Yes) {
    return false;
  }
  removed_ = average_.RemoveLast(workbench_.trial);
  lastAtHand_ = false;
  pending_ = true;
  Log("Removed file: " + file + "\n");
  List("Removed file: " + file);
  return false;
}

bool EnsembleForm::Calculate() {
  const std::int32_t files = average_.EnsembleFiles();
  if (files < 2) {
    ShowRefusal(workbench_, {.title = "Too Few Files in Average",
                             .text = "Too few files to calculate and average. Calculations cancelled.",
                             .icon = Icon::Exclamation});
    return false;
  }
  bool seconds = chkUseTime_;
  if (seconds && !(average_.MeanTime() > 0)) {
    seconds = false;
    ShowRefusal(workbench_, {.title = "No Mean Time",
                             .text = "The mean duration of the files is not above 0.  The average has a "
                                     "percentage time base.",
                             .icon = Icon::Exclamation});
  }
  for (const AveragedFile& file : average_.Files()) {
    if (const double median = average_.FarFrom(file); median > 0) {
      workbench_.report.warnings.push_back(FileNamePart(file.path) + ": its duration, " +
                                           FormatNumber(file.duration, workbench_.patterns.TimePattern) +
                                           ", is far from the others', " +
                                           FormatNumber(median, workbench_.patterns.TimePattern));
    }
  }
  pending_ = lastAtHand_ = false;
  removed_.reset();
  MakeAveragedTrial(workbench_, average_, seconds, BaseName(txtFilename_));
  Log("Number of files in average: " + std::to_string(files) + "\n" +
      (seconds ? "Mean time (s): " + Value(average_.MeanTime()) + "\n" : ""));
  for (std::size_t j = 0; j < average_.Channels().size(); ++j) {
    TellVariation(j);
  }
  if (const std::string why = log_.Close(); !why.empty()) {
    workbench_.OutputFileName = FullPath(txtFilename_);
    ShowSaveFailure(workbench_, why);
  }
  Did(workbench_, "Ensemble average of " + CountOf(files, "file") + ", " +
                      CountOf(average_.Sums().Width(), "channel") + " over " +
                      CountOf(average_.Sums().Intervals(), "interval") +
                      (seconds ? ", mean time" : ", percentage time base"));
  stage_ = Stage::Finished;
  return false;
}

void EnsembleForm::TellVariation(std::size_t j) {
  constexpr double kRoundingRules = 0.1;  // %: the squares of 32 bits hold no deviation that is smaller
  const int mean = 2 * static_cast<int>(j) + 1;
  const double percent = CoefficientOfVariation(workbench_.trial, mean, mean + 1);
  const std::string number = ChannelNumber(average_.Channels()[j]);
  const std::string label = Trim(average_.LabelOf(j).Text());
  const std::string of = number + ", '" + label + "'";
  List("Coeff. of var. for Chan. " + of + " =" + Value(percent) + "%");
  Log("Coeff. of var. for Channel " + of + " = " + Value(percent) + "%\n");
  variation_.emplace_back(number + " " + label, percent);
  if (percent > 0 && percent < kRoundingRules) {
    AddNotice(workbench_, "The deviations of channel " + of +
                              ", are so small against its means that 32-bit rounding decides on them.");
  }
}

}  // namespace velmora
