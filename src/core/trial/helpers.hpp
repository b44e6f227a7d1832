#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/files.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Time in seconds of sample i (from 1): (i-1)/Rate; 0 when Rate is not positive.
double SampleToTime(const Trial& trial, std::int32_t i);

/// Rate*t+1, rounded to the nearest sample number, an exact half to the even one; 0 when Rate is not
/// positive. The result may lie outside the trial.
std::int32_t TimeToSample(const Trial& trial, double t);

/// The abscissa counts seconds, however they are shown.
bool IsTimeBased(const Workbench& workbench);

/// A value of the abscissa as people read it: through the pattern, or as a clock with the pattern's decimals
/// while the time base is HH:MM:SS. The abscissa itself keeps seconds.
std::string AbscissaText(const Workbench& workbench, double x, std::string_view pattern);

/// The units of the abscissa as people read them.
std::string AbscissaUnits(const Workbench& workbench);

struct SampleRange {
  std::int32_t lo = 0;
  std::int32_t hi = 0;
};

/// A 64-bit copy of a channel's samples in the range; channel 0 is the abscissa.
std::vector<double> SamplesOf(const Trial& trial, int channel, SampleRange range);

/// The samples an operation is to use: all of them without a question when the cursors span the
/// trial or neither is set, else what the user answers.
SampleRange AskCursorRange(Workbench& workbench);

/// Sets FileChanged; the window's status area shows "Modified" while it is set.
void MarkChanged(Workbench& workbench, bool changed);

/// Shows a channel in a graph of its own, to look at while the work goes on. Nothing without a window.
void ShowChannel(const Workbench& workbench, int channel);

/// Asks the window for something. Nothing without a window.
void Request(const Workbench& workbench, ShellRequest request);

/// Closes the graph that is open, if any.
void CloseView(Workbench& workbench);

/// The same as a person does it: the view may ask, and stay open. What opened the view comes back.
void LeaveView(Workbench& workbench);

/// Moves the page of channels on by 16, again from 1 past the end; nothing below 17 channels.
void NextChannelPage(Workbench& workbench);

/// The first page: FirstChanShown 1, LastChanShown NChan, at most 16.
void ShowFirstChannelPage(Workbench& workbench);

/// Cursors as the end of a load leaves them: CursorLo at least 1 and below NData (so 0 for a single
/// sample), CursorHi at most NData, and NData when it does not lie above CursorLo.
void NormaliseCursors(Trial& trial);

/// The channel's label; "channel 03" without one.
std::string ChannelInWords(const Trial& trial, int channel);

/// The trial's file as side files name it: DataDir before a name without a directory of its own; on one line.
std::string TrialFile(const Workbench& workbench);

/// Asks where to save, starting in DataDir; a name typed without an extension gets the question's. The
/// answer goes to OutputFileName. Returns false when the answer was empty.
bool AskSaveName(Workbench& workbench, FileQuestion question);

/// Asks for a text per channel, starting from `names`, in the picker. Returns false, with `names` as they
/// were, when it was left with Cancel.
template <typename Text>
bool PickNames(Workbench& workbench, std::string_view prompt, PerChannel<Text>& names) {
  ChooserState& chooser = workbench.chooser;
  std::copy(names.begin(), names.end(), chooser.ChooserNames.begin());
  chooser.ChooserPrompt = prompt;
  chooser.ChooserNamesMode = true;
  chooser.ChooserNameLength = Text::kLength;
  const bool accepted = ChannelPicker(workbench).Show();
  if (accepted) {
    std::copy(chooser.ChooserNames.begin() + 1, chooser.ChooserNames.end(), names.begin() + 1);
  }
  return accepted;
}

/// Boxes that also tell a recipe what came of its step: a refusal is a warning and the step goes on;
/// a failure ends it. Both take a box with any buttons and return the answer.
Button ShowRefusal(Workbench& workbench, const Box& box);
Button ShowFailure(Workbench& workbench, const Box& box);

/// Reports what the command at hand did, with its parameters in words; `channels` are those it changed.
/// What changed nothing is not reported: a command without a report is no step of the history.
void Did(Workbench& workbench, std::string what, std::span<const int> channels = {});

/// The same where channels differ in their parameters: one deed for each wording, with its channels. None
/// when there are no channels.
void DidEach(Workbench& workbench, std::span<const int> channels,
             const std::function<std::string(int channel)>& what);

/// Reports that OutputFileName was written.
void DidSave(Workbench& workbench, std::string_view what = "Saved");

/// Adds to the deed reported last a channel that was left as it was, and why. Before any deed: to one
/// without words, which the next `Did` completes.
void LeftOut(Workbench& workbench, int channel, std::string why);

/// A remark on the trial that needs no answer: it stays with the trial until the next load and is a
/// warning of the step. The trial keeps the same remark once.
void AddNotice(Workbench& workbench, std::string text);

/// Commits a file that a person asked for. A notice tells what of an old file's owner, group and
/// permissions could not be kept. Throws FileError.
void CommitSave(Workbench& workbench, OutputFile& file);

/// The failure of every save: OutputFileName could not be written, for the system's reason given.
void ShowSaveFailure(Workbench& workbench, std::string_view reason);

}  // namespace velmora
