#include <algorithm>
#include <memory>

#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "ensemble/ensemble_form.hpp"
#include "ensemble/ensemble_trial.hpp"
#include "export/save_data.hpp"
#include "formats/native_ascii/native_ascii_writer.hpp"
#include "graph/single_view.hpp"
#include "graph/view_window.hpp"
#include "import/load_file.hpp"

namespace velmora {

// Every writer takes the mark of unsaved data away, once the file is there.
bool EnsembleForm::SaveBy(const std::function<void()>& save) {
  Trial& trial = workbench_.trial;
  const bool changed = trial.FileChanged;
  MarkChanged(workbench_, true);
  save();
  const bool saved = !trial.FileChanged;
  MarkChanged(workbench_, changed && !saved);
  return saved;
}

bool EnsembleForm::SaveBinary() {
  workbench_.trial.CursorLo = 1;
  workbench_.trial.CursorHi = workbench_.trial.NData;
  SaveBy([this] { SaveData(workbench_, SaveFormat::NativeBinary); });
  return false;
}

bool EnsembleForm::SaveText() {
  if (SaveBy([this] { SaveData(workbench_, SaveFormat::TabDelimited); })) {
    textFile_ = workbench_.OutputFileName;
  }
  return false;
}

bool EnsembleForm::SaveEnsemble() {
  const bool saved = SaveBy([this] {
    ProgressPanel panel(workbench_);
    try {
      WriteEnsembleAscii(workbench_, panel, BaseName(txtFilename_) + ".vme");
    } catch (const FileError& error) {
      ShowSaveFailure(workbench_, error.what());
    }
  });
  if (saved) {
    workbench_.questions.AskBox({.title = "Finished averaging",
                                 .text = "Ensemble averages are in the file " + workbench_.OutputFileName,
                                 .icon = Icon::Information});
    Request(workbench_, ShellRequest::ShowFiles);
  }
  return false;
}

bool EnsembleForm::ViewText() {
  if (textFile_.empty()) {
    ShowRefusal(
        workbench_,
        {.title = Title(), .text = "You must save the file in ASCII first.", .icon = Icon::Exclamation});
    return false;
  }
  if (!workbench_.desktop.open) {
    return false;
  }
  const std::string& program = workbench_.preferences.Spreadsheet;
  const std::string why = workbench_.desktop.open(program, textFile_);
  if (!why.empty()) {
    ShowRefusal(workbench_, {.title = program, .text = why, .icon = Icon::Exclamation});
  }
  return false;
}

// A file that is not added yet is shown as it is, to be cropped; one that is, as it went into the average.
bool EnsembleForm::ShowGraph() {
  Trial& trial = workbench_.trial;
  ChannelFlags shown{};
  previews_ = pending_;
  if (stage_ == Stage::Averaging || stage_ == Stage::Chosen) {
    for (const int c : average_.Channels()) {
      shown[c] = c <= trial.NChan;
    }
  } else {
    std::fill_n(shown.begin() + 1, std::min<int>(trial.NChan, kPageChannels), true);
  }
  if (stage_ == Stage::Averaging && lastAtHand_) {
    const double time = average_.MeanTime();
    UseNormalTimeBase(workbench_, chkUseTime_ && time > 0, time);
  }
  if (lastAtHand_ || removed_) {
    MarkChanged(workbench_, false);  // so that a crop is noticed
  }
  trial.PairedGraphs = stage_ != Stage::Finished;
  OpenGraph(shown);
  return true;
}

void EnsembleForm::OpenGraph(const ChannelFlags& channels) {
  CloseView(workbench_);
  workbench_.chooser.ChanSelected = channels;
  workbench_.graph.ViewDuration = workbench_.trial.Duration;
  SettleViewWindow(workbench_);
  ShowFirstChannelPage(workbench_);
  auto view = std::make_unique<SingleView>(workbench_);
  if (previews_ && average_.EnsembleFiles() > 0) {
    ShowMeanBehind(view->Drawing());
    view->SetScale(static_cast<Scale>(workbench_.graph.GraphScaleChoice));
  }
  workbench_.view = std::move(view);
  Did(workbench_, "Ensemble averaging, " + CountOf(average_.EnsembleFiles(), "file") + " and a graph");
  workbench_.AfterView = [form = shared_from_this()] { form->ReturnFromGraph(); };
}

// The mean so far, as the file will be stretched to it.
void EnsembleForm::ShowMeanBehind(velmora::Graph& graph) const {
  constexpr std::int64_t kMost = 1000;  // intervals that a line is drawn of
  const EnsembleSums& sums = average_.Sums();
  const std::int64_t intervals = std::min<std::int64_t>(sums.Intervals(), kMost);
  for (int j = 0; j < sums.Width(); ++j) {
    Backdrop mean{.Channel = average_.Channels()[static_cast<std::size_t>(j)]};
    if (mean.Channel > workbench_.trial.NChan) {
      continue;  // the file has fewer channels, and is refused when it is added
    }
    for (std::int64_t k = 0; k <= intervals; ++k) {
      mean.Values.push_back(sums.Mean(1 + k * sums.Intervals() / intervals, j, average_.EnsembleFiles()));
    }
    graph.Backdrops.push_back(std::move(mean));
  }
  graph.Title += "\nWide and faint: the mean of " + CountOf(average_.EnsembleFiles(), "file");
}

// In the graph, and in the window beside it, anything may have become of the trial.
void EnsembleForm::ReturnFromGraph() {
  const Trial& trial = workbench_.trial;
  if (stage_ == Stage::Averaging) {
    const auto& files = average_.Files();
    const bool same = !trial.FileChanged && trial.NData == average_.Sums().Intervals() + 1 &&
                      !files.empty() && trial.FileName == files.back().path;
    pending_ = HasTrial() && (previews_ || !same);
    lastAtHand_ = lastAtHand_ && same;
    if (trial.FileChanged || !HasTrial() || (removed_ && trial.FileName != removed_->path)) {
      removed_.reset();
    }
    MarkChanged(workbench_, trial.FileChanged || lastAtHand_ || removed_);
  } else if (stage_ == Stage::Chosen && (!HasTrial() || average_.Channels().back() > trial.NChan)) {
    stage_ = Stage::Choosing;
  }
  Refresh();
  Show(workbench_);
}

bool EnsembleForm::ReadEnsemble() {
  if (!MayDropResults()) {
    return false;
  }
  const std::vector<std::string> paths = workbench_.questions.AskFile(
      {.mode = FileQuestion::Mode::Open,
       .title = "Read Ensemble",
       .filter = "Velmora ASCII (.vme)|*.vme|Velmora2 binary (.vmb)|*.vmb|All files (*.*)|*.*",
       .directory = directory_.empty() ? workbench_.DataDir : directory_});
  if (!paths.empty()) {
    stage_ = Stage::Choosing;
    variation_.clear();
    waiting_.clear();
    const std::string why = LoadTrial(FullPath(paths.front()));
    if (!why.empty()) {
      workbench_.report.failures.push_back("no trial was loaded from " + paths.front() + ": " + why);
      note_ = FileNamePart(paths.front()) + ": " + why;
    }
  }
  return false;
}

bool EnsembleForm::ShowHelp() {
  workbench_.questions.AskBox(
      {.title = "Help with Ensemble Averaging",
       .text =
           "Trials of one kind, such as strides, are averaged sample by sample.  Each is stretched to the "
           "same number of intervals first.\n\n"
           "1. The log tells which files were averaged.\n"
           "2. The mask says which files a directory stands for.\n"
           "3. The number of intervals, usually 100.\n"
           "4. Select the first file, or start with the one that is loaded.  Several files, or a "
           "directory, wait for step 6.\n"
           "5. Select up to 32 channels.\n"
           "6. Begin the average with the first file.\n"
           "7. Open the next file, or many.  Files may be dropped on the form.\n"
           "8. Add a file that was previewed, or remove the one added last.\n"
           "9. Calculate the means and standard deviations, which take the place of the trial.\n"
           "10. Save them.",
       .icon = Icon::Information});
  return false;
}

bool EnsembleForm::Cancel() {
  const Box box{.title = "Confirm Exit",
                .text = "Press Yes to exit or No to continue with processing.",
                .icon = Icon::Question,
                .buttons = {Button::Yes, Button::No}};
  if (workbench_.questions.AskBox(box) != Button::Yes) {
    return false;
  }
  TellOpened();
  return true;
}

// Without an average the trial is another one all the same.
void EnsembleForm::TellOpened() {
  if (stage_ == Stage::Finished || !HasTrial()) {
    return;
  }
  if (loaded_) {
    Did(workbench_, "Opened " + FileNamePart(workbench_.trial.FileName) + " to be averaged");
  } else if (stretched_) {
    Did(workbench_, "Resampled to " + CountOf(workbench_.trial.NData - 1, "interval") + " to be averaged");
  }
}

bool EnsembleForm::Exit() {
  if (stage_ == Stage::Averaging && average_.EnsembleFiles() > 1) {
    workbench_.report.warnings.push_back("An average of " + CountOf(average_.EnsembleFiles(), "file") +
                                         " was left before its means were calculated.");
  }
  if (!MayDropResults()) {
    return false;
  }
  TellOpened();
  return true;
}

// Returns whether the results are saved or not wanted.
bool EnsembleForm::MayDropResults() {
  if (stage_ != Stage::Finished || !workbench_.trial.FileChanged) {
    return true;
  }
  const Box box{.title = "Results Not Saved",
                .text =
                    "Results have not been saved.  Press Yes to save, No to exit without saving or "
                    "Cancel.",
                .icon = Icon::Exclamation,
                .buttons = {Button::Yes, Button::No, Button::Cancel}};
  const Button answer = workbench_.questions.AskBox(box);
  if (answer == Button::Yes) {
    SaveBinary();
    return !workbench_.trial.FileChanged;
  }
  return answer == Button::No;
}

}  // namespace velmora
