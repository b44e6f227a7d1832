#include "dsp/math/math_commands.hpp"

#include <array>
#include <cmath>
#include <string>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_picking.hpp"
#include "dsp/math/channel_math.hpp"

namespace velmora {
namespace {

// What an operation is given once the picker has closed.
using SelectKernel = void (*)(Workbench&, const ChannelList&);
using ValuesKernel = void (*)(Workbench&);

/// One row of the menu of mathematical functions.
struct MathOperation {
  std::string_view prompt;
  /// What was done, for the report. Empty where the operation tells it itself.
  std::string_view told;
  SelectKernel select = nullptr;  // for the channels selected
  ValuesKernel values = nullptr;  // for the constants entered
  float prefill = 1.0F;
  bool integers = false;
  /// Asks and works on its own.
  void (*whole)(Workbench&, std::string_view prompt) = nullptr;
  bool needsTime = false;
  std::int32_t fewestSamples = 1;
};

// Cancel puts the pre-filled constants back, which every operation takes as "no action".
void PickValues(Workbench& workbench, const MathOperation& operation) {
  BeginPicking(workbench, operation.prompt);
  ChooserState& chooser = workbench.chooser;
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    chooser.ChanConst[c] = operation.prefill;
  }
  chooser.ChooserValuesMode = true;
  chooser.ChooserIntegerValues = operation.integers;
  ChannelPicker(workbench).Show();
}

// "Multiplied by 2" for each constant that was entered.
void TellConstants(Workbench& workbench, const ChannelList& channels, std::string_view told) {
  DidEach(workbench, channels, [&workbench, told](int c) {
    std::string words(told);
    return words.replace(words.find('#'), 1, PlainNumber(workbench.chooser.ChanConst[c]));
  });
}

// Channels whose constant asks for something: neither 0 nor 1.
ChannelList ChannelsWithFactor(const Workbench& workbench) {
  ChannelFlags flags{};
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    const float factor = workbench.chooser.ChanConst[c];
    flags[c] = factor != 0.0F && factor != 1.0F;
  }
  return SelectedChannels(workbench.trial, flags);
}

template <void (*kernel)(Trial&, const ChannelList&)>
void Apply(Workbench& workbench, const ChannelList& channels) {
  kernel(workbench.trial, channels);
}

template <void (*kernel)(Trial&, const ChannelList&, double)>
void ApplyOverTime(Workbench& workbench, const ChannelList& channels) {
  kernel(workbench.trial, channels, workbench.TimeStep);
}

void DifferentiateTwice(Workbench& workbench, const ChannelList& channels) {
  Differentiate(workbench.trial, channels, workbench.TimeStep);
  Differentiate(workbench.trial, channels, workbench.TimeStep);
}

// The only values operation that marks the file as changed.
void AddPicked(Workbench& workbench) {
  const PerChannel<float>& constants = workbench.chooser.ChanConst;
  ChannelFlags flags{};
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    flags[c] = constants[c] != 0.0F;
    if (flags[c]) {
      MarkChanged(workbench, true);
    }
  }
  const ChannelList channels = SelectedChannels(workbench.trial, flags);
  AddConstants(workbench.trial, channels, constants);
  TellConstants(workbench, channels, "Constant # added");
}

void MultiplyPicked(Workbench& workbench) {
  const ChannelList channels = ChannelsWithFactor(workbench);
  MultiplyBy(workbench.trial, channels, workbench.chooser.ChanConst);
  TellConstants(workbench, channels, "Multiplied by #");
}

void DividePicked(Workbench& workbench) {
  const ChannelList channels = ChannelsWithFactor(workbench);
  DivideBy(workbench.trial, channels, workbench.chooser.ChanConst);
  TellConstants(workbench, channels, "Divided by #");
}

void RaisePicked(Workbench& workbench) {
  const PerChannel<float>& powers = workbench.chooser.ChanConst;
  ChannelList raised;
  ChannelList refused;
  for (const int c : ChannelsWithFactor(workbench)) {
    if (powers[c] < 0.0F) {
      ShowRefusal(workbench, {.title = "Invalid power",
                              .text = "Negative powers are not permitted.  Array " + std::to_string(c) +
                                      " will not be altered.",
                              .icon = Icon::Exclamation});
      refused.push_back(c);
      continue;
    }
    RaiseToPower(workbench.trial, {c}, powers);
    raised.push_back(c);
  }
  TellConstants(workbench, raised, "Raised to the power #");
  for (const int c : refused) {
    LeftOut(workbench, c, "power " + PlainNumber(powers[c]) + ", at least 0");
  }
}

std::string PathText(const ChannelList& channels, double total) {
  std::string text = channels.size() == 1 ? "channel " : "channels ";
  for (std::size_t k = 0; k < channels.size(); ++k) {
    const bool last = k + 1 == channels.size();
    const bool lastButOne = k + 2 == channels.size();
    text += ChannelNumber(channels[k]) + (last ? " is " : lastButOne ? " and " : ", ");
  }
  return text + FormatNumber(total, "0.0000") + ".";
}

void LengthOfPath(Workbench& workbench, std::string_view prompt) {
  const Trial& trial = workbench.trial;
  const std::int32_t first = trial.CursorLo > 0 ? trial.CursorLo : 1;
  const std::int32_t last = trial.CursorHi > 0 ? trial.CursorHi : trial.NData;
  const ChannelList channels = PickChannels(workbench, prompt);
  if (channels.empty()) {
    return;
  }
  if (channels.size() > 3) {
    ShowRefusal(workbench, {.title = "Too Many Channels Selected",
                            .text = "You can only select 1, 2 or 3 channels at a time.",
                            .icon = Icon::Exclamation});
    return;
  }
  const double total = PathLength(trial, channels, first, last);
  Did(workbench,
      "Length of the path from sample " + std::to_string(first) + " to " + std::to_string(last) + " is " +
          FormatNumber(total, "0.0000"),
      channels);
  workbench.questions.AskBox({.title = "Path Length",
                              .text = "Path starts from datum " + std::to_string(first) + " to datum " +
                                      std::to_string(last) + ".\nPath length of " + PathText(channels, total),
                              .icon = Icon::Information});
}

ChannelList PickTwoForResiduals(Workbench& workbench, std::string_view prompt) {
  const bool changed = workbench.trial.FileChanged;
  ChannelList channels = PickChannels(workbench, prompt);
  MarkChanged(workbench, changed);  // nothing is altered here, whatever the picker marked
  if (!channels.empty() && channels.size() != 2) {
    ShowRefusal(workbench, {.title = "Choose Only 2 Channels",
                            .text = "You must only choose two channels to compute residuals.",
                            .icon = Icon::Exclamation});
    channels.clear();
  }
  return channels;
}

void ResidualsRms(Workbench& workbench, std::string_view prompt) {
  const Trial& trial = workbench.trial;
  if (trial.NChan < 2) {
    ShowRefusal(workbench, {.title = "Only One Channel Loaded",
                            .text = "Must have at least two channels to take residuals.",
                            .icon = Icon::Information});
    return;
  }
  const ChannelList pair = trial.NChan == 2 ? ChannelList{1, 2} : PickTwoForResiduals(workbench, prompt);
  if (pair.empty()) {
    return;
  }
  const double rms = RmsOfResiduals(trial, pair[0], pair[1]);
  Did(workbench, "RMS of residuals is " + FormatNumber(rms, "0.000"), pair);
  workbench.questions.AskBox({.text = "RMS of residuals for '" + Trim(trial.ChanLabel[pair[0]].Text()) +
                                      "' and '" + Trim(trial.ChanLabel[pair[1]].Text()) + "' is " +
                                      FormatNumber(rms, "0.000") + "."});
}

// In the order of the menu.
constexpr std::array<MathOperation, 16> kOperations = {{
    {.prompt = "Select channel(s) to Rectify (|X|, absolute values).",
     .told = "Absolute value",
     .select = Apply<Absolute>},
    {.prompt = "Enter Constant(s) to be added to channel(s) (R=X+c).", .values = AddPicked, .prefill = 0.0F},
    {.prompt = "Select channel(s) to accumulate.", .told = "Cumulative sum", .select = Apply<Accumulate>},
    {.prompt = "Select channel(s) for Differentiation by time (R=dX/dt).",
     .told = "First derivative by time",
     .select = ApplyOverTime<Differentiate>,
     .needsTime = true,
     .fewestSamples = 3},
    {.prompt = "Select channel(s) to Negate (-X).", .told = "Negated", .select = Apply<Negate>},
    {.prompt = "Select channel(s) to half-wave rectify (zero all negative values).",
     .told = "Half-wave rectified",
     .select = Apply<HalfWaveRectify>},
    {.prompt = "Select channel(s) to Integrate over time (Riemann sum).",
     .told = "Integrated over time (Riemann sum)",
     .select = ApplyOverTime<IntegrateOverTime>,
     .needsTime = true},
    {.prompt = "Select 1, 2, or 3 channel(s) for Path Integration.  Only one path at a time.",
     .whole = LengthOfPath},
    {.prompt = "Enter Scaling (multiplier) for each channel (R=sX, 0.0 means no action).",
     .values = MultiplyPicked},
    {.prompt = "Enter Normalization factor (divisor) for each channel (R=X/n, 0.0 means no action).",
     .values = DividePicked},
    {.prompt = "Enter Power to raise each channel (R=X^p, 0.0 means no action).",
     .values = RaisePicked,
     .integers = true},
    {.prompt = "Select channel(s) to take Square Root of (R=X^0.5).",
     .told = "Square root",
     .select = Apply<SquareRoot>},
    {.prompt = "Select channel(s) to Square (R=X^2).", .told = "Squared", .select = Apply<Square>},
    {.prompt = "Select two channels to compute RMS of Residuals (R=RMS[X-Y]).", .whole = ResidualsRms},
    {.prompt = "Select channel(s) to invert (R=1/x).", .told = "Inverted (1/x)", .select = Apply<Invert>},
    {.prompt = "Select channel(s) for Double Differentiation by time (R=d2X/dt2).",
     .told = "Second derivative by time",
     .select = DifferentiateTwice,
     .needsTime = true,
     .fewestSamples = 3},
}};

bool Refused(Workbench& workbench, const MathOperation& operation) {
  if (workbench.trial.NData < operation.fewestSamples) {
    ShowRefusal(workbench, {.title = "Too Few Data",
                            .text = "At least " + std::to_string(operation.fewestSamples) +
                                    " samples are needed for a derivative.",
                            .icon = Icon::Exclamation});
    return true;
  }
  if (operation.needsTime && !(workbench.TimeStep > 0 && std::isfinite(workbench.TimeStep))) {
    ShowRefusal(workbench, {.title = "Invalid Sampling Rate",
                            .text = "The sampling rate must be above zero for an operation over time.",
                            .icon = Icon::Exclamation});
    return true;
  }
  return false;
}

template <int index>
void Run(Workbench& workbench) {
  MathFunction(workbench, index);
}

void Scaling(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (trial.NData < 1) {
    return;
  }
  BeginPicking(workbench, "Enter scaling factor (multiplier) for each channel (0.00 means take no action).");
  PerChannel<float>& factors = workbench.chooser.ChanConst;
  for (int c = 1; c <= trial.NChan; ++c) {
    const float memory = workbench.scaling.ScaleMemory[c];
    factors[c] = memory == 0.0F ? 1.0F : memory;
  }
  workbench.chooser.ValuesOf = workbench.scaling.ScaleMemoryOf;
  workbench.chooser.NoValue = 1.0F;
  workbench.chooser.ChooserValuesMode = true;
  if (!ChannelPicker(workbench).Show()) {
    return;
  }
  workbench.scaling.ScaleMemoryOf = workbench.LoadedFile;
  for (int c = 1; c <= trial.NChan; ++c) {
    factors[c] = factors[c] == 0.0F ? 1.0F : factors[c];
    workbench.scaling.ScaleMemory[c] = factors[c];
  }
  const ChannelList channels = ChannelsWithFactor(workbench);
  for (const int c : channels) {
    MarkChanged(workbench, true);
    trial.ChanGain[c] *= factors[c];
  }
  MultiplyBy(trial, channels, factors);
  TellConstants(workbench, channels, "Scaled by #");
}

constexpr std::string_view kMathMenu = "&Analysis/&Mathematical functions";

constexpr std::array kMathCommands = {
    Command{"math.absolute", "&Absolute value (|X|)", kMathMenu, Needs::Data, Run<0>},
    Command{"math.add", "&Add a Constant (X+c)", kMathMenu, Needs::Data, Run<1>},
    Command{"math.cumulative", "&Cumulative Function (Sum X)", kMathMenu, Needs::Data, Run<2>},
    Command{"math.differentiate", "&Differentiate (dX/dt)", kMathMenu, Needs::Data, Run<3>},
    Command{"math.negate", "Ne&gate (-X)", kMathMenu, Needs::Data, Run<4>},
    Command{"math.half-wave", "&Half-wave Rectify (|X|)", kMathMenu, Needs::Data, Run<5>},
    Command{"math.integrate", "&Integrate over Time (sum X dt)", kMathMenu, Needs::Data, Run<6>},
    Command{"math.path-length", "&Length of Path (sum dX)", kMathMenu, Needs::Data, Run<7>},
    Command{"math.multiply", "&Multiply by a Constant (sX)", kMathMenu, Needs::Data, Run<8>},
    Command{"math.normalize", "&Normalize (X/c)", kMathMenu, Needs::Data, Run<9>},
    Command{"math.power", "&Power (X^n)", kMathMenu, Needs::Data, Run<10>},
    Command{"math.square-root", "Square &Root (X^0.5)", kMathMenu, Needs::Data, Run<11>},
    Command{"math.square", "&Square (X^2)", kMathMenu, Needs::Data, Run<12>},
    Command{"math.rms-residuals", "RMS of residuals (RMS[X-Y])", kMathMenu, Needs::Data, Run<13>},
    Command{"math.invert", "In&vert (1/X)", kMathMenu, Needs::Data, Run<14>},
    Command{"math.second-derivative", "&2nd Derivative (d2X/dt2)", kMathMenu, Needs::Data, Run<15>},
    Command{"analysis.scaling", "&Scaling", "&Analysis", Needs::Data, Scaling},
};

}  // namespace

void MathFunction(Workbench& workbench, int index) {
  if (workbench.trial.NData < 1) {
    return;
  }
  if (index < 0 || index >= static_cast<int>(kOperations.size())) {
    ShowRefusal(workbench,
                {.text = "Invalid case.  Program error in Math. functions.", .icon = Icon::Exclamation});
    return;
  }
  workbench.TimeStep = 1.0 / workbench.trial.Rate;
  const MathOperation& operation = kOperations[static_cast<std::size_t>(index)];
  if (Refused(workbench, operation)) {
    return;
  }
  if (operation.whole != nullptr) {
    operation.whole(workbench, operation.prompt);
  } else if (operation.values != nullptr) {
    PickValues(workbench, operation);
    operation.values(workbench);
  } else if (const ChannelList channels = PickChannels(workbench, operation.prompt); !channels.empty()) {
    operation.select(workbench, channels);
    Did(workbench, std::string(operation.told), channels);
  }
}

std::span<const Command> MathCommands() {
  return kMathCommands;
}

}  // namespace velmora
