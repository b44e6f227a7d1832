#include "dsp/bias/bias_commands.hpp"

#include <algorithm>
#include <array>
#include <string>

#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "dsp/bias/bias.hpp"
#include "dsp/bias/bias_file.hpp"

namespace velmora {
namespace {

void BeginPicking(Workbench& workbench) {
  ChooserState& chooser = workbench.chooser;
  chooser.ChanSelected.fill(false);
  chooser.ClearModes();
  chooser.ChooserSelectMode = true;
  chooser.ChooserExitMode = true;
  chooser.ChooserPrompt = "Check which channel(s) to process.";
}

ChannelList Picked(const Workbench& workbench) {
  return SelectedChannels(workbench.trial, workbench.chooser.ChanSelected);
}

ChannelList AllChannels(const Trial& trial) {
  ChannelFlags all;
  all.fill(true);
  return SelectedChannels(trial, all);
}

// The end of every command that changed data. An open graph goes, to be opened again on the new data.
void Finish(Workbench& workbench) {
  for (std::size_t c = 1; c <= static_cast<std::size_t>(workbench.trial.NChan); ++c) {
    workbench.bias.BiasMemory[c] = workbench.chooser.ChanConst[c];
  }
  workbench.bias.BiasMemoryOf = workbench.LoadedFile;
  CloseView(workbench);
}

/// Reports a bias that was removed; without channels its levels were measured alone.
void Tell(Workbench& workbench, const std::string& bias, const ChannelList& channels) {
  if (channels.empty()) {
    Did(workbench, "Bias levels measured: " + bias);
  } else {
    Did(workbench, "Bias removed, " + bias, channels);
  }
}

void SubtractMeasured(Workbench& workbench, const std::string& bias) {
  const ChannelList channels = Picked(workbench);
  SubtractLevels(workbench.trial, channels, workbench.chooser.ChanConst);
  workbench.bias.BiasLevelsKnown = true;
  Tell(workbench, bias, channels);
  Finish(workbench);
}

std::string MeanOf(std::int32_t count, const char* which) {
  return "mean of the " + std::string(which) + " " + CountOf(count, "sample");
}

bool TooShortForDrift(Workbench& workbench) {
  if (workbench.trial.NData >= 2) {
    return false;
  }
  ShowRefusal(workbench, {.title = "Too Few Data",
                          .text = "At least 2 samples are needed to remove a drift.",
                          .icon = Icon::Exclamation});
  return true;
}

// How many samples to average, 1 to NData; 0 when the question was left.
std::int32_t AskCount(Workbench& workbench, const std::string& end) {
  const std::string typed =
      workbench.questions.AskInput({.title = "Number of Data to Compute Average Bias",
                                    .prompt = "Enter number of data to average at the " + end +
                                              " of the file.  These values may then be used to autozero "
                                              "selected channels.",
                                    .defaultText = "10",
                                    .isNumber = true});
  return typed.empty() ? 0 : std::clamp(RoundHalfEven32(Val(typed)), 1, workbench.trial.NData);
}

// The levels are known from here on, whether or not they are used.
bool PickMeasured(Workbench& workbench) {
  workbench.bias.BiasLevelsKnown = true;
  return ChannelPicker(workbench).Show();
}

template <auto measure>
void AutozeroFrom(Workbench& workbench, const char* end, const char* place) {
  BeginPicking(workbench);
  const std::int32_t count = AskCount(workbench, end);
  if (count == 0) {
    return;
  }
  measure(workbench.trial, count, workbench.chooser.ChanConst);
  if (PickMeasured(workbench)) {
    SubtractMeasured(workbench, MeanOf(count, place));
  }
}

void AutozeroFromLeft(Workbench& workbench) {
  AutozeroFrom<MeasureFirst>(workbench, "beginning", "first");
}

void AutozeroFromRight(Workbench& workbench) {
  AutozeroFrom<MeasureLast>(workbench, "end", "last");
}

void MeanBetweenCursors(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  BeginPicking(workbench);
  const std::int32_t lo = trial.CursorLo > 0 ? trial.CursorLo : 1;
  const std::int32_t hi = trial.CursorHi <= 0 || trial.CursorHi > trial.NData ? trial.NData : trial.CursorHi;
  if (lo > hi) {
    ShowRefusal(workbench, {.title = "Invalid Interval",
                            .text = "There are no data between the cursors.",
                            .icon = Icon::Exclamation});
    return;
  }
  MeasureBetween(trial, lo, hi, workbench.chooser.ChanConst);
  if (PickMeasured(workbench)) {
    SubtractMeasured(workbench, "mean of samples " + std::to_string(lo) + " to " + std::to_string(hi));
  }
}

void Drift(Workbench& workbench) {
  if (TooShortForDrift(workbench)) {
    return;
  }
  BeginPicking(workbench);
  MeasureDrift(workbench.trial, workbench.chooser.ChanConst);
  if (ChannelPicker(workbench).Show()) {
    const ChannelList channels = Picked(workbench);
    RemoveDrift(workbench.trial, channels, workbench.chooser.ChanConst);
    Tell(workbench, "drift from the first to the last sample", channels);
    Finish(workbench);
  }
}

void AutozeroAndDrift(Workbench& workbench) {
  if (TooShortForDrift(workbench)) {
    return;
  }
  BeginPicking(workbench);
  const std::int32_t count = AskCount(workbench, "beginning");
  if (count == 0) {
    return;
  }
  MeasureFirst(workbench.trial, count, workbench.chooser.ChanConst);
  if (PickMeasured(workbench)) {
    const ChannelList channels = Picked(workbench);
    RemoveLevelAndDrift(workbench.trial, channels, workbench.chooser.ChanConst);
    Tell(workbench, MeanOf(count, "first") + " and drift", channels);
    Finish(workbench);
  }
}

// Levels of 0 change nothing, but they are what a save of the levels writes.
void TellLevels(Workbench& workbench, ChannelList channels, const std::string& origin) {
  const PerChannel<float>& levels = workbench.chooser.ChanConst;
  std::erase_if(channels, [&levels](int c) { return levels[c] == 0.0F; });
  if (channels.empty()) {
    Did(workbench, "Bias levels " + origin + ", all of them 0");
  }
  DidEach(workbench, channels,
          [&](int c) { return "Bias level " + PlainNumber(levels[c]) + " (" + origin + ") subtracted"; });
}

// Offers the levels for editing and subtracts them from every channel; `origin` is what is told of them.
void EditAndSubtract(Workbench& workbench, const std::string& origin) {
  ChooserState& chooser = workbench.chooser;
  chooser.ChooserSelectMode = false;
  chooser.ChooserValuesMode = true;
  chooser.ChooserPrompt = "Enter bias levels to be subtracted from each channel (R=X-bias).";
  if (!ChannelPicker(workbench).Show()) {
    return;
  }
  const ChannelList channels = AllChannels(workbench.trial);
  SubtractLevels(workbench.trial, channels, chooser.ChanConst);
  workbench.bias.BiasLevelsKnown = true;
  TellLevels(workbench, channels, origin);
  Finish(workbench);
}

void EnterTerms(Workbench& workbench) {
  BeginPicking(workbench);
  for (std::size_t c = 1; c <= static_cast<std::size_t>(workbench.trial.NChan); ++c) {
    workbench.chooser.ChanConst[c] = workbench.bias.BiasMemory[c];
  }
  workbench.chooser.ValuesOf = workbench.bias.BiasMemoryOf;
  EditAndSubtract(workbench, "entered");
}

void LevelsFromFile(Workbench& workbench) {
  BeginPicking(workbench);
  const std::vector<std::string> chosen =
      workbench.questions.AskFile({.mode = FileQuestion::Mode::Open,
                                   .title = "Read Bias levels (.BSV) file",
                                   .extension = ".bsv",
                                   .filter = "Velmora2 Bias Levels (.bsv)|*.bsv|All files (*.*)|*.*"});
  if (chosen.empty()) {
    return;
  }
  try {
    if (!ReadBiasFile(chosen.front(), workbench.trial.NChan, workbench.chooser.ChanConst)) {
      AddNotice(workbench,
                FileNamePart(chosen.front()) +
                    " has no level for some channels, and those behind them may have the levels of "
                    "others: a comma in a label ends its line.");
    }
  } catch (const BiasFileError& error) {
    ShowFailure(workbench, {.title = error.title(), .text = error.what(), .icon = Icon::Exclamation});
    return;
  }
  EditAndSubtract(workbench, "from " + FileNamePart(chosen.front()));
}

void SaveLevels(Workbench& workbench) {
  try {
    WriteBiasFile(workbench);
  } catch (const FileError& error) {
    ShowSaveFailure(workbench, error.what());
  }
}

template <void (*procedure)(Workbench&)>
void WithData(Workbench& workbench) {
  if (workbench.trial.NData > 0) {
    procedure(workbench);
  }
}

constexpr std::string_view kBiasMenu = "&Analysis/&Bias Removal";

constexpr std::array kBiasCommands = {
    Command{"bias.autozero-left", "&Autozero (from left)", kBiasMenu, Needs::Data,
            WithData<AutozeroFromLeft>},
    Command{"bias.drift", "&Drift removal", kBiasMenu, Needs::Data, WithData<Drift>},
    Command{"bias.mean", "Use &Mean values", kBiasMenu, Needs::Data, WithData<MeanBetweenCursors>},
    Command{"bias.file", "Read bias levels from a &File", kBiasMenu, Needs::Data, WithData<LevelsFromFile>},
    Command{"bias.manual", "Enter &Terms manually", kBiasMenu, Needs::Data, WithData<EnterTerms>},
    Command{"bias.both", "&Both autozero and drift removal", kBiasMenu, Needs::Data,
            WithData<AutozeroAndDrift>},
    Command{"bias.autozero-right", "Autozero from &Right", kBiasMenu, Needs::Data,
            WithData<AutozeroFromRight>},
    Command{"bias.save", "&Save bias levels", kBiasMenu, Needs::Data, WithData<SaveLevels>},
};

}  // namespace

std::span<const Command> BiasCommands() {
  return kBiasCommands;
}

}  // namespace velmora
