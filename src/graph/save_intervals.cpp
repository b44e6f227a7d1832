#include "graph/save_intervals.hpp"

#include <algorithm>
#include <filesystem>

#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "formats/native_binary/native_binary_writer.hpp"

namespace velmora {
namespace {

constexpr const char* kExtension = ".vmb";

// The typed name without the extension of these files.
std::string StemOf(const std::string& path) {
  const std::filesystem::path typed(path);
  return typed.extension() == kExtension ? std::filesystem::path(typed).replace_extension().string() : path;
}

std::vector<std::string> NumberedPaths(const std::string& stem, std::size_t count) {
  const std::string pattern(std::max<std::size_t>(std::to_string(count).size(), 2), '0');
  std::vector<std::string> paths;
  for (std::size_t k = 1; k <= count; ++k) {
    paths.push_back(stem + "-" + FormatNumber(static_cast<double>(k), pattern) + kExtension);
  }
  return paths;
}

bool MayReplace(Workbench& workbench, const std::vector<std::string>& paths) {
  const auto there = std::count_if(paths.begin(), paths.end(), PathExists);
  return there == 0 ||
         workbench.questions.AskBox({.title = "Save Intervals",
                                     .text = CountOf(there, "file") + " of these names, " +
                                             std::string(FileNamePart(paths.front())) + " to " +
                                             std::string(FileNamePart(paths.back())) +
                                             ", will be replaced.\nDo you want to continue (Yes/No)?",
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

/// Writes until the end, Cancel or a fault. Returns how many files were written.
std::size_t WriteAll(Workbench& workbench, const std::vector<SampleRange>& intervals,
                     const std::vector<std::string>& paths) {
  ProgressPanel panel(workbench);
  for (std::size_t k = 0; k < intervals.size(); ++k) {
    workbench.OutputFileName = paths[k];
    panel.SetFileName(paths[k]);
    if (panel.GiveTurn()) {
      return k;
    }
    try {
      WriteNativeRange(workbench, panel, paths[k], intervals[k]);
    } catch (const FileError& error) {
      ShowSaveFailure(workbench, error.what());
      return k;
    }
  }
  return intervals.size();
}

void Tell(Workbench& workbench, const std::vector<std::string>& paths, std::size_t written) {
  const std::string last = written > 0 ? paths[written - 1] : "";
  if (written > 0) {
    Did(workbench, "Saved " + CountOf(static_cast<std::int64_t>(written), "interval") +
                       " between cursors as " + paths.front() + (written > 1 ? " to " + last : ""));
  }
  if (written < paths.size()) {
    workbench.report.warnings.push_back(std::to_string(written) + " of " + std::to_string(paths.size()) +
                                        " intervals were saved.");
  }
}

}  // namespace

std::vector<SampleRange> IntervalsBetweenCursors(const TimeView& view) {
  std::vector<std::int32_t> samples;
  for (int cursor = 1; cursor <= view.Cursors(); ++cursor) {
    samples.push_back(view.SampleOf(cursor));
  }
  std::sort(samples.begin(), samples.end());
  samples.erase(std::unique(samples.begin(), samples.end()), samples.end());
  std::vector<SampleRange> intervals;
  for (std::size_t k = 1; k < samples.size(); ++k) {
    intervals.push_back({samples[k - 1], samples[k]});
  }
  return intervals;
}

void SaveIntervals(Workbench& workbench, TimeView& view) {
  const std::vector<SampleRange> intervals = IntervalsBetweenCursors(view);
  if (intervals.empty()) {
    ShowRefusal(workbench,
                {.title = "Save Intervals",
                 .text = "There is no interval: set two cursors at least, or find them by triggering.",
                 .icon = Icon::Exclamation});
    return;
  }
  if (!AskSaveName(workbench,
                   {.title = "Save " + CountOf(static_cast<std::int64_t>(intervals.size()), "interval") +
                             " as name-" + NumberedPaths("", 1).front().substr(1),
                    .defaultName = workbench.trial.TrialName + kExtension,
                    .extension = kExtension,
                    .filter = "Velmora2/3 binary (.vmb)|*.vmb"})) {
    return;
  }
  const std::vector<std::string> paths = NumberedPaths(StemOf(workbench.OutputFileName), intervals.size());
  if (!MayReplace(workbench, paths)) {
    return;
  }
  const std::size_t written = WriteAll(workbench, intervals, paths);
  Tell(workbench, paths, written);
  workbench.ensemble.Files.assign(paths.begin(), paths.begin() + static_cast<std::ptrdiff_t>(written));
  Request(workbench, ShellRequest::ShowFiles);
}

}  // namespace velmora
