#include <algorithm>
#include <filesystem>
#include <new>

#include "browse/file_list.hpp"
#include "core/files/paths.hpp"
#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "ensemble/ensemble_form.hpp"
#include "events/event_tracking.hpp"
#include "import/load_file.hpp"

namespace velmora {
namespace {

constexpr const char* kDataFiles =
    "Velmora2 binary (.vmb)|*.vmb|Velmora ASCII (.vma)|*.vma|ASCII "
    "(.asc,.csv,.prn,.tab,.txt)|*.asc;*.csv;*.prn;*.tab;*.txt|All files (*.*)|*.*";

bool IsDirectory(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

std::vector<std::string> FilesIn(const std::string& directory, const std::string& mask) {
  std::vector<std::string> paths;
  for (const ListedFile& file : ListFiles(directory, mask).files) {
    paths.push_back((std::filesystem::path(directory) / file.name).string());
  }
  return paths;
}

/// A file that is loaded here is not joined to another that waits for that.
class NoMerge {
 public:
  explicit NoMerge(MergeStore& merge) : merge_(merge), pending_(merge.MergePending) {
    merge_.MergePending = false;
  }
  NoMerge(const NoMerge&) = delete;
  NoMerge& operator=(const NoMerge&) = delete;
  ~NoMerge() { merge_.MergePending = pending_; }

 private:
  MergeStore& merge_;
  bool pending_;
};

}  // namespace

// The mask comes first where it says what is looked for.
std::vector<std::string> EnsembleForm::AskFiles(const char* title, bool masked) {
  const std::string mask = Trim(txtMask_).empty() ? "*.*" : Trim(txtMask_);
  const std::string filter =
      masked ? "Files of the mask (" + mask + ")|" + mask + "|" + kDataFiles : kDataFiles;
  const std::vector<std::string> answered =
      workbench_.questions.AskFile({.mode = FileQuestion::Mode::Open,
                                    .title = title,
                                    .filter = filter,
                                    .directory = directory_.empty() ? workbench_.DataDir : directory_,
                                    .several = true});
  if (!answered.empty()) {
    directory_ = IsDirectory(answered.front()) ? answered.front() : DirectoryOf(answered.front());
  }
  return Expanded(answered);
}

// A directory stands for its files of the mask, a mask for the files that fit it. Files that are in the
// average already are not found again; whoever names one twice means it.
std::vector<std::string> EnsembleForm::Expanded(const std::vector<std::string>& answered) const {
  std::vector<std::string> paths;
  const auto known = [&](const std::string& path) {
    return std::any_of(average_.Files().begin(), average_.Files().end(), [&](const AveragedFile& file) {
      std::error_code error;
      return stage_ == Stage::Averaging && file.averaged &&
             std::filesystem::equivalent(file.path, path, error);
    });
  };
  for (const std::string& answer : answered) {
    const bool directory = IsDirectory(answer);
    const std::string name = FileNamePart(answer);
    std::error_code error;
    if (!directory &&
        (std::filesystem::exists(answer, error) || name.find_first_of("*?") == std::string::npos)) {
      paths.push_back(FullPath(answer));
      continue;
    }
    const std::string place = FullPath(directory ? answer : DirectoryOf(answer));
    const std::vector<std::string> found = FilesIn(place, directory ? txtMask_ : name);
    if (found.empty()) {
      workbench_.report.warnings.push_back("No file of " + place + " fits the mask " +
                                           (directory ? txtMask_ : name) + ".");
    }
    std::copy_if(found.begin(), found.end(), std::back_inserter(paths),
                 [&](const std::string& path) { return !known(path); });
  }
  return paths;
}

void EnsembleForm::AddFiles(const std::vector<std::string>& paths) {
  if (paths.empty()) {
    return;
  }
  ProgressPanel panel(workbench_);
  panel.SetFormat("Files of the ensemble average");
  panel.SetLimits(0, static_cast<double>(paths.size()));
  AddFilesInTurn(paths, panel);
}

// Cancel holds between files; one that it cut short is not added.
void EnsembleForm::AddFilesInTurn(const std::vector<std::string>& paths, ProgressPanel& panel) {
  for (std::size_t k = 0; k < paths.size(); ++k) {
    panel.SetFileName(paths[k]);
    panel.SetStatus("File " + std::to_string(k + 1) + " of " + std::to_string(paths.size()));
    panel.SetValue(static_cast<double>(k));
    const bool loaded = !panel.GiveTurn() && Load(paths[k]);
    if (workbench_.CancelRequested) {
      lastAtHand_ = lastAtHand_ && !loaded;
      note_ = "Cancelled: " + CountOf(static_cast<std::int64_t>(paths.size() - k), "file") + " of " +
              std::to_string(paths.size()) + " not added.";
      workbench_.report.warnings.push_back(note_);
      return;
    }
    if (loaded) {
      AddLoaded();
    }
  }
}

// Returns why there is no trial now.
std::string EnsembleForm::LoadTrial(const std::string& path) {
  Trial& trial = workbench_.trial;
  std::vector<std::string>& failures = workbench_.report.failures;
  const std::size_t before = failures.size();
  std::string why;
  loaded_ = true;
  try {
    const NoMerge noMerge(workbench_.merge);
    trial.FileName = path;
    trial.FileTypeCode = -1;
    LoadFile(workbench_);
    workbench_.report.deeds.clear();  // the average is the deed
  } catch (const CommandAbandoned&) {
    throw;
  } catch (const std::bad_alloc&) {
    why = "there is not enough memory";
  } catch (const std::exception& error) {
    why = error.what();
  }
  for (std::size_t k = before; k < failures.size(); ++k) {
    why += (why.empty() ? "" : "; ") + failures[k];
  }
  failures.resize(before);
  if (trial.NData > 0) {
    trial.Duration = trial.Rate > 0 ? (trial.NData - 1) / trial.Rate : trial.NData;
    trial.Rate = trial.Rate > 0 ? trial.Rate : 1.0;
    return {};
  }
  return why.empty() ? "it could not be read" : why;
}

// A file that cannot be read has been told of by its reader; here it is named, and the average goes on.
bool EnsembleForm::Load(const std::string& path) {
  if (!MayLeaveEvents(workbench_)) {
    return false;
  }
  pending_ = lastAtHand_ = false;
  removed_.reset();
  const std::string why = LoadTrial(path);
  if (!why.empty()) {
    LeaveOut({.path = path}, why);
    return false;
  }
  if (stage_ != Stage::Averaging) {
    stage_ = Stage::Choosing;
  }
  return true;
}

void EnsembleForm::LeaveOut(AveragedFile file, const std::string& why) {
  workbench_.report.warnings.push_back(FileNamePart(file.path) + " was not averaged: " + why);
  if (stage_ == Stage::Averaging) {
    file.remark = why;
    average_.List(std::move(file));
  } else {
    note_ = FileNamePart(file.path) + ": " + why;
  }
}

// The trial at hand, whole as it was loaded or as a graph left it. Returns whether it is in the average.
bool EnsembleForm::AddLoaded() {
  Trial& trial = workbench_.trial;
  pending_ = lastAtHand_ = false;
  AveragedFile file = removed_ ? *removed_ : average_.Describe(workbench_);
  if (!HasChannels(file) || !IsWanted(file)) {
    pending_ = trial.NData > 1 && average_.Channels().back() <= trial.NChan;
    return false;
  }
  if (trial.NData < 2) {
    LeaveOut(std::move(file), "it has one sample only");
    return false;
  }
  const std::string times = Value(file.firstTime) + " s to " + Value(file.lastTime) + " s";
  removed_.reset();
  const std::string why = average_.Add(trial, file);
  MarkChanged(workbench_, true);  // it is not what is in the file any more
  stretched_ = true;
  NormaliseCursors(trial);
  if (!why.empty()) {
    LeaveOut(std::move(file), why);
    return false;
  }
  lastAtHand_ = true;
  const std::string lines =
      "Added file: " + trial.FileName + "\nTrial: " + trial.TrialName + ".\n       from " + times;
  Log(lines + "\n");
  List(lines);
  if (const std::string& odd = average_.Files().back().remark; !odd.empty()) {
    workbench_.report.warnings.push_back(FileNamePart(file.path) + ": " + odd);
  }
  return true;
}

bool EnsembleForm::HasChannels(const AveragedFile& file) {
  const int there = workbench_.trial.NChan;
  const ChannelList& channels = average_.Channels();
  const int count = static_cast<int>(channels.size());
  const int needed = there < count ? count : channels.back();
  const std::string has = "It has " + std::to_string(there) + " but there needs to be ";
  if (there < needed) {
    workbench_.questions.AskBox(
        {.title = "Incorrect Number of Channels",
         .text = "This file has too few channels to be included in the ensemble average.\n" + has +
                 std::to_string(needed) + "\nThis trial will not be included in the ensemble average.",
         .icon = Icon::Exclamation,
         .about = file.path});
    LeaveOut(file, "it has " + CountOf(there, "channel") + ", there needs to be " + std::to_string(needed));
    return false;
  }
  const int most = average_.ChannelsOfFirst();
  if (there <= most) {
    return true;
  }
  const Box box{.title = "Incorrect Number of Channels",
                .text =
                    "This file has too many channels; do you want continue averaging or exit and delete "
                    "unwanted channels?\nPress OK to continue and include the first " +
                    std::to_string(most) + ".\n in the average or press Cancel too exit and delete " +
                    std::to_string(there - most) + " channels.",
                .icon = Icon::Exclamation,
                .buttons = {Button::OK, Button::Cancel},
                .about = file.path};
  if (workbench_.questions.AskBox(box) == Button::OK) {
    return true;
  }
  LeaveOut(file, "it has " + CountOf(there, "channel") + ", the first file " + std::to_string(most));
  return false;
}

bool EnsembleForm::IsWanted(const AveragedFile& file) {
  if (!chkPrompt_) {
    return true;
  }
  const Trial& trial = workbench_.trial;
  const double duration = removed_ ? file.duration : trial.Duration;
  const std::string text =
      "Add file: " + file.path + "\nDuration: " + FormatNumber(duration, workbench_.patterns.TimePattern) +
      " seconds\nSamples:  " + std::to_string(file.samples) + "\nChannels: " + std::to_string(trial.NChan) +
      " of " + std::to_string(average_.ChannelsOfFirst()) +
      "\nCurrent files in average: " + std::to_string(average_.EnsembleFiles()) +
      "\nPress Yes to include this file in the average.";
  const Box box{.title = "Include in Average?",
                .text = text,
                .icon = Icon::Question,
                .buttons = {Button::Yes, Button::No}};
  if (workbench_.questions.AskBox(box) == Button::Yes) {
    return true;
  }
  AveragedFile left = file;
  left.remark = "No was answered";
  average_.List(std::move(left));
  return false;
}

void EnsembleForm::Log(const std::string& lines) {
  const std::string why = log_.Add(lines);
  if (!why.empty() && !logTrouble_) {
    logTrouble_ = true;
    workbench_.OutputFileName = log_.Path();
    ShowSaveFailure(workbench_, why);
  }
}

void EnsembleForm::List(const std::string& lines) {
  lstFiles_ += (lstFiles_.empty() ? "" : "\n") + lines;
}

}  // namespace velmora
