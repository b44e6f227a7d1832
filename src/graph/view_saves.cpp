#include "graph/view_saves.hpp"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "export/save_data.hpp"

namespace velmora {
namespace {

constexpr Colour kSavedPair = 0x00FF00;  // green: this interval went to a file

// The pair that the user names by its first cursor.
std::optional<SampleRange> AskPair(Workbench& workbench, TimeView& view) {
  const int count = view.Cursors();
  const std::string typed = workbench.questions.AskInput(
      {.title = "Select First Cursor of Pair",
       .prompt = "Enter number of first cursor of pair.  There are " + std::to_string(count) + " cursors.",
       .isNumber = true});
  if (typed.empty()) {
    return std::nullopt;
  }
  const std::int32_t first = RoundHalfEven32(Val(typed));
  if (first < 1 || first >= count) {
    ShowRefusal(workbench, {.title = "Invlaid Cursor Selection",
                            .text = "Invalid cursor selection.  Try again.  Press Delete button to delete "
                                    "cursors.",
                            .icon = Icon::Exclamation});
    return std::nullopt;
  }
  const auto [lo, hi] = std::minmax({view.SampleOf(first), view.SampleOf(first + 1)});
  view.Lead().Cursors[static_cast<std::size_t>(first - 1)].Color = kSavedPair;
  return SampleRange{lo, hi};
}

std::optional<SampleRange> AskRange(Workbench& workbench, TimeView& view) {
  const SampleRange all{1, workbench.trial.NData};
  if (view.Cursors() == 1) {
    return SampleRange{view.SampleOf(1), all.hi};
  }
  if (view.Cursors() == 2) {
    return view.PairRange();
  }
  if (view.Cursors() > 2) {
    const Button button = workbench.questions.AskBox(
        {.title = "Select a Pair of Cursors",
         .text = "There are more than 2 cursors.  Press Yes to select one pair or No to select ALL the data.",
         .icon = Icon::Question,
         .buttons = {Button::Yes, Button::No, Button::Cancel}});
    if (button != Button::No) {
      return button == Button::Yes ? AskPair(workbench, view) : std::nullopt;
    }
  }
  return all;
}

std::string StylePath(const Workbench& workbench, const GraphView& view, int graph) {
  return (std::filesystem::path(workbench.StartDir) / view.StyleName(graph)).string();
}

std::string StyleText(const std::string& path) {
  constexpr std::int64_t kLongestStyle = 1 << 20;
  const InputFile file(path);
  std::string text(static_cast<std::size_t>(std::min(file.Size(), kLongestStyle)), '\0');
  text.resize(file.ReadAt(0, text.data(), text.size()));
  return text;
}

void ShowStyleFault(Workbench& workbench, const char* reason) {
  ShowFailure(workbench, {.title = "Graphics Style", .text = reason, .icon = Icon::Exclamation});
}

}  // namespace

void SaveRange(Workbench& workbench, TimeView& view) {
  const std::optional<SampleRange> range = AskRange(workbench, view);
  if (!range) {
    return;
  }
  workbench.trial.CursorLo = range->lo;
  workbench.trial.CursorHi = range->hi;
  workbench.SaveRangeSet = true;
  SaveData(workbench, SaveFormat::NativeBinary);
  workbench.SaveRangeSet = false;
}

std::string CursorFileText(const Workbench& workbench, const SingleView& view) {
  const Trial& trial = workbench.trial;
  std::string text = "Filename:\t" + TrialFile(workbench) + "\n";
  text += "Trial code:\t" + trial.TrialName + "\tTrial:\t" + std::to_string(trial.TrialIndex) + "\n";
  text += "Duration (s):\t" + FormatNumber(trial.Duration, workbench.patterns.TimePattern) + "\n";
  text += "Sampling rate (Hz):\t" + FormatNumber(trial.Rate, workbench.patterns.RatePattern) + "\n";
  text += "\nCursor\tSample\tTime (s)\tDelta t (s)\n";
  const std::vector<double> cursors = view.CommonCursors();
  double previous = cursors.empty() ? 0.0 : cursors.front();
  int number = 0;
  for (const double x : cursors) {
    ++number;
    text += std::to_string(number) + "\t" + std::to_string(view.SampleOf(number)) + "\t" +
            FormatNumber(x, "0.0000") + "\t" + FormatNumber(x - previous, "0.0000") + "\n";
    previous = x;
  }
  return text;
}

void SaveCursors(Workbench& workbench, SingleView& view) {
  if (view.Cursors() == 0) {
    ShowRefusal(workbench, {.title = "No Cursors",
                            .text = "There are no cursors positions to be stored.",
                            .icon = Icon::Exclamation});
    return;
  }
  const Button button = workbench.questions.AskBox({.title = "Save Cursors?",
                                                    .text = "Do you want to save the cursor positions?",
                                                    .icon = Icon::Question,
                                                    .buttons = {Button::Yes, Button::No}});
  if (button == Button::No ||
      !AskSaveName(workbench, {.title = "Save cursor positions in .VMC file",
                               .defaultName = workbench.trial.TrialName + ".vmc",
                               .extension = ".vmc",
                               .filter = "Velmora2 Cursors (.vmc)|*.vmc|All files (*.*)|*.*"})) {
    return;
  }
  try {
    OutputFile file(workbench.OutputFileName);
    file.Write(CursorFileText(workbench, view));
    CommitSave(workbench, file);
    DidSave(workbench, "Saved cursor positions as");
  } catch (const FileError& error) {
    ShowFailure(workbench, {.text = error.what(), .icon = Icon::Exclamation});
  }
}

void SaveStyle(Workbench& workbench, GraphView& view) {
  try {
    for (int graph = 1; graph <= view.NGraphs(); ++graph) {
      OutputFile file(StylePath(workbench, view, graph));
      file.Write(view.GraphAt(graph).StyleText());
      CommitSave(workbench, file);
    }
  } catch (const FileError& error) {
    ShowStyleFault(workbench, error.what());
  }
}

void RecallStyle(Workbench& workbench, GraphView& view) {
  try {
    for (int graph = 1; graph <= view.NGraphs(); ++graph) {
      view.GraphAt(graph).ReadStyle(StyleText(StylePath(workbench, view, graph)));
    }
  } catch (const std::exception& error) {
    ShowStyleFault(workbench, error.what());
  }
  view.TakeStyles();
}

}  // namespace velmora
