#include "dsp/smoothing/smooth_commands.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "dsp/channel_picking.hpp"
#include "dsp/filters/filter_commands.hpp"
#include "dsp/filters/filter_testing_form.hpp"
#include "dsp/interval_questions.hpp"
#include "dsp/smoothing/epoch_duration_form.hpp"
#include "dsp/smoothing/moving_window.hpp"
#include "dsp/smoothing/polynomial_commands.hpp"
#include "dsp/smoothing/smooth_form.hpp"
#include "dsp/time_base/interpolation.hpp"

namespace velmora {
namespace {

ChannelList Selected(const Workbench& workbench) {
  return SelectedChannels(workbench.trial, workbench.chooser.ChanSelected);
}

void MarkWhenAny(Workbench& workbench, const ChannelList& channels) {
  if (!channels.empty()) {
    MarkChanged(workbench, true);
  }
}

// "Moving average, 21 samples (0.105 s)"
void TellWindow(Workbench& workbench, std::string_view name, const ChannelList& channels) {
  if (channels.empty()) {
    return;
  }
  const std::int16_t width = workbench.smoothing.WindowWidth;
  std::string words = std::string(name) + ", window of " + CountOf(width, "sample");
  if (const double rate = workbench.trial.Rate; rate > 0 && workbench.time.Base == TimeBase::Seconds) {
    words += " (" + FormatNumber(width / rate, "0.0000") + " s)";
  }
  Did(workbench, words, channels);
}

constexpr char kAverageName[] = "Moving average";
constexpr char kRmsName[] = "Moving RMS";
constexpr char kMeanAbsoluteName[] = "Moving mean absolute value";

template <void (*kernel)(Trial&, const ChannelList&, std::int32_t, SimdLevel, const Turn&), const char* name>
void Smooth(Workbench& workbench) {
  if (workbench.trial.NData < 1 || !EpochDurationForm(workbench).Ask()) {
    return;
  }
  const ChannelList channels = Selected(workbench);
  MarkWhenAny(workbench, channels);
  ProgressPanel panel(workbench, ProgressPanel::Kind::Processing);
  kernel(workbench.trial, channels, workbench.smoothing.WindowWidth, MachineSimdLevel(), TurnOf(panel));
  TellWindow(workbench, name, channels);
}

// A width that nobody has chosen yet becomes a tenth of a second.
void RmsAmplitude(Workbench& workbench) {
  constexpr std::int16_t untouched = 3;
  if (workbench.smoothing.WindowWidth == untouched) {
    const std::int64_t tenth = RoundHalfEven(0.1 * workbench.trial.Rate);
    workbench.smoothing.WindowWidth = static_cast<std::int16_t>(
        std::clamp<std::int64_t>(tenth, 1, std::numeric_limits<std::int16_t>::max()));
    workbench.smoothing.WindowInSeconds = true;
  }
  Smooth<MovingRms, kRmsName>(workbench);
}

bool WantsOddWidth(Workbench& workbench) {
  return workbench.questions.AskBox({.title = "Change Window Width",
                                     .text = "Window should be an odd number.\nPress Yes to increase window "
                                             "by one or No to leave it as is.",
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

void Median(Workbench& workbench) {
  if (workbench.trial.NData < 1 || !EpochDurationForm(workbench).Ask()) {
    return;
  }
  const ChannelList channels = Selected(workbench);
  if (channels.empty()) {
    return;
  }
  if (workbench.smoothing.WindowWidth % 2 == 0 && WantsOddWidth(workbench)) {
    ++workbench.smoothing.WindowWidth;
  }
  MarkChanged(workbench, true);
  ProgressPanel panel(workbench, ProgressPanel::Kind::Processing);
  MovingMedian(workbench.trial, channels, workbench.smoothing.WindowWidth, TurnOf(panel));
  TellWindow(workbench, "Moving median", channels);
}

void Interpolate(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (trial.NData < 1 || !HasInterval(workbench)) {
    return;
  }
  const ChannelList channels = PickChannels(workbench, "Choose which channel(s) to smooth.");
  if (channels.empty() || !ConfirmReplacement(workbench, "Interpolate Data")) {
    return;
  }
  MarkChanged(workbench, true);
  InterpolateLine(trial, channels, trial.CursorLo, trial.CursorHi);
  Did(workbench,
      "Straight line from sample " + std::to_string(trial.CursorLo) + " to " + std::to_string(trial.CursorHi),
      channels);
}

void DigitalFilters(Workbench& workbench) {
  if (workbench.trial.NData < 1) {
    return;
  }
  SmoothForm form(workbench);
  form.Show(workbench);
  if (form.WantsZeroLag()) {
    ShowButterworth(workbench);
  }
}

// It needs no data: a filter is looked at by itself.
void TestFilters(Workbench& workbench) {
  FilterTestingForm(workbench).Show(workbench);
}

constexpr std::string_view kSmoothMenu = "&Analysis/Sm&oothing";

constexpr std::array kSmoothCommands = {
    Command{"smooth.moving-average", "Moving &Average", kSmoothMenu, Needs::Data,
            Smooth<MovingAverage, kAverageName>},
    Command{"smooth.butterworth", "&Butterworth, Critically-damped, or Bessel", kSmoothMenu, Needs::Data,
            ShowButterworth},
    Command{"smooth.digital", "&Digital Filtering (various)", kSmoothMenu, Needs::Data, DigitalFilters},
    Command{"smooth.interpolate", "Linear &Interpolation", kSmoothMenu, Needs::Data, Interpolate},
    Command{"smooth.median", "Moving &Median", kSmoothMenu, Needs::Data, Median},
    Command{"smooth.polynomial", "&Polynomial fitting", kSmoothMenu, Needs::Data, FitPolynomials},
    Command{"smooth.rms", "&RMS amplitude", kSmoothMenu, Needs::Data, RmsAmplitude},
    Command{"smooth.spline", "&Spline fit an interval", kSmoothMenu, Needs::Data, FitInterval},
    Command{"smooth.testing", "Filter &Testing", kSmoothMenu, Needs::Nothing, TestFilters},
    Command{"smooth.mav", "Mean Absolute &Value (MAV)", kSmoothMenu, Needs::Data,
            Smooth<MovingMeanAbsolute, kMeanAbsoluteName>},
};

}  // namespace

std::span<const Command> SmoothCommands() {
  return kSmoothCommands;
}

}  // namespace velmora
