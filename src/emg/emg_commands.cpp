#include "emg/emg_commands.hpp"

#include <algorithm>
#include <array>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_picking.hpp"
#include "dsp/filters/filter_and_tell.hpp"
#include "dsp/math/channel_math.hpp"
#include "emg/apdf_form.hpp"
#include "emg/bursts/co_contraction_form.hpp"
#include "emg/bursts/onsets_form.hpp"
#include "emg/emg_kernels.hpp"
#include "emg/emg_statistics_form.hpp"
#include "emg/envelope_preview.hpp"
#include "emg/epochs/epoch_view.hpp"
#include "emg/epochs/integrate_reset_form.hpp"
#include "emg/fatigue_form.hpp"
#include "emg/maximums/maximums_form.hpp"
#include "emg/maximums/normalize_form.hpp"
#include "spectra/analysis_start.hpp"

namespace velmora {
namespace {

constexpr double kTrignoDelay = 0.048;  // seconds, by which the sensor's EMG comes late
constexpr double kLeastEmgRate = 240;   // Hz, that holds the spectrum of a surface EMG

// What every entry starts with; returns false without a trial.
bool Begin(Workbench& workbench) {
  workbench.TimeStep = 1.0 / workbench.trial.Rate;
  workbench.chooser.ClearModes();
  return workbench.trial.NData > 0;
}

ChannelList PickForAnalysis(Workbench& workbench, std::string_view prompt) {
  if (workbench.trial.NChan == 1) {
    return {1};
  }
  const KeepsChanged keeps(workbench);
  return PickChannels(workbench, prompt);
}

void AmplitudeDistributions(Workbench& workbench) {
  if (!Begin(workbench)) {
    return;
  }
  const ChannelList channels = PickForAnalysis(workbench, "Choose channel(s) for C/APDF analysis.");
  const Trial& trial = workbench.trial;
  if (!channels.empty() && (trial.CursorLo > 1 || (trial.CursorHi > 0 && trial.CursorHi < trial.NData))) {
    AddNotice(workbench, "C/APDF took all samples, also those outside the cursors.");
  }
  for (const int c : channels) {
    if (ComputeApdf(workbench, c)) {
      Did(workbench, "Amplitude probability distribution", std::array{c});
    } else {
      LeftOut(workbench, c, "no amplitude distribution");
    }
    ApdfForm(workbench, c, channels).Show(workbench);
    const Box box{.title = "C/APDF statistics",
                  .text = workbench.results.ResultText + "\n\nPress OK for next channel or Cancel to exit.",
                  .icon = Icon::Information,
                  .buttons = {Button::OK, Button::Cancel}};
    if (workbench.questions.AskBox(box) != Button::OK) {
      return;
    }
  }
}

void RemoveTrignoDelay(Workbench& workbench) {
  if (!Begin(workbench)) {
    return;
  }
  const std::int64_t shift = RoundHalfEven(workbench.trial.Rate * kTrignoDelay);
  BeginPicking(workbench,
               "Choose which channel(s) are Delsys Trigno EMG channels (to remove 48 ms time delays).");
  workbench.chooser.ChooserSelectMode = true;
  workbench.chooser.Remark = "48 ms at " +
                             FormatNumber(workbench.trial.Rate, workbench.patterns.RatePattern) +
                             " Hz: they move to " + "the left by " + std::to_string(shift) +
                             " samples; as many at the end become 0.";
  ChannelPicker(workbench).Show();
  const ChannelList channels = SelectedChannels(workbench.trial, workbench.chooser.ChanSelected);
  if (channels.empty()) {
    return;
  }
  ShiftLeft(workbench.trial, channels, shift);
  MarkChanged(workbench, true);
  Did(workbench, "Delsys Trigno delay of 48 ms removed (" + std::to_string(shift) + " samples)", channels);
}

void Statistics(Workbench& workbench) {
  if (!Begin(workbench)) {
    return;
  }
  workbench.graph.StatLo = 1;
  workbench.graph.StatHi = workbench.trial.NData;
  ShowEmgStatistics(workbench);
}

// The same analysis, as the menus of two trades name it.
void AnalyseOverTime(Workbench& workbench, const char* title) {
  Trial& trial = workbench.trial;
  trial.CursorLo = std::max(trial.CursorLo, 1);
  trial.CursorHi = trial.CursorHi < 1 ? trial.NData : std::min(trial.CursorHi, trial.NData);
  const KeepsChanged keeps(workbench);
  if (AskCursorWindow(workbench)) {
    FatigueForm(workbench, title).Show(workbench);
  }
}

void RefuseTimeBase(Workbench& workbench, const char* why) {
  ShowRefusal(workbench,
              {.title = "Invalid Sampling Rate or Timebase", .text = why, .icon = Icon::Exclamation});
}

// Whether the samples can hold an EMG; told when they cannot.
bool HoldsEmg(Workbench& workbench) {
  if (IsTimeBased(workbench) && workbench.trial.Rate >= kLeastEmgRate) {
    return true;
  }
  RefuseTimeBase(workbench, "Data not time based or sampling rate < 240 Hz.  Processing cannot continue.");
  return false;
}

void Fatigue(Workbench& workbench) {
  if (Begin(workbench) && HoldsEmg(workbench)) {
    AnalyseOverTime(workbench, "EMG Fatigue Analysis");
  }
}

void Normalize(Workbench& workbench) {
  if (Begin(workbench) && HoldsEmg(workbench)) {
    NormalizeEnvelopes(workbench);
  }
}

// An analysis of another file, begun as every entry.
template <void (*analysis)(Workbench&)>
void Analyse(Workbench& workbench) {
  if (Begin(workbench)) {
    analysis(workbench);
  }
}

void TimeSeries(Workbench& workbench) {
  if (!Begin(workbench)) {
    return;
  }
  if (!IsTimeBased(workbench) || !(workbench.trial.Rate > 0)) {
    RefuseTimeBase(workbench, "Data not time based.  Processing cannot continue.");
    return;
  }
  AnalyseOverTime(workbench, "Time Series Fourier Analysis");
}

void LinearEnvelope(Workbench& workbench) {
  if (!Begin(workbench)) {
    return;
  }
  BeginPicking(workbench,
               "Select cutoff frequency (6 Hz or less) for Linear Envelope (0.0 means do not process).");
  workbench.chooser.ChanConst = workbench.filters.LastLowPassCutoffs;
  workbench.chooser.ChooserValuesMode = true;
  workbench.chooser.Preview = [&trial = workbench.trial](int channel, float cutoff) {
    return PreviewEnvelope(trial, channel, cutoff);
  };
  if (!ChannelPicker(workbench).Show()) {
    return;
  }
  const FilterSettings envelope = EnvelopeFilter(0);
  ChannelsFilter filter{.design = FilterDesign::CriticallyDamped,
                        .Padding = envelope.Padding,
                        .Rectify = true,
                        .Cutoffs = workbench.chooser.ChanConst};
  filter.Passes.fill(envelope.Passes);
  filter.ZeroLag.fill(envelope.IsZeroLag);
  FilterAndTell(workbench, filter, ", rectified before");
  MarkChanged(workbench, true);
}

void RectifyIntegrate(Workbench& workbench) {
  if (!Begin(workbench)) {
    return;
  }
  const ChannelList channels =
      PickChannels(workbench, "Select channel(s) to Rectify and Integrate over time.");
  if (channels.empty()) {
    return;
  }
  MarkChanged(workbench, true);  // also where a sample is found that cannot be stored
  RectifyAndIntegrate(workbench.trial, channels, workbench.TimeStep);
  Did(workbench, "Rectified and integrated over time", channels);
}

// `id` is the command of another menu that this entry stands for.
template <const char* id>
void Forward(Workbench& workbench) {
  if (Begin(workbench)) {
    workbench.NextCommand = id;
  }
}

constexpr char kHarmonicRegression[] = "fourier.harmonic-regression";
constexpr char kRms[] = "smooth.rms";
constexpr char kFilters[] = "smooth.butterworth";
constexpr char kMav[] = "smooth.mav";
constexpr char kAbsolute[] = "math.absolute";
constexpr char kEpochs[] = "integrate.epoch";

constexpr std::string_view kMenu = "&Analysis/&EMG";
constexpr std::string_view kIntegrals = "&Analysis/&Integration statistics";

constexpr std::array kEmgCommands = {
    Command{"fourier.time-series", "Time series Fourier Analysis", "&Analysis/&Fourier analysis", Needs::Data,
            TimeSeries},
    Command{"emg.apdf", "&APDF && CAPDF", kMenu, Needs::Data, AmplitudeDistributions},
    Command{"emg.trigno-delay", "Delsys Trigno time delay removal", kMenu, Needs::Data, RemoveTrignoDelay},
    Command{"emg.statistics", "EMG statistics", kMenu, Needs::Data, Statistics},
    Command{"emg.fourier", "Fourier analysis by harmonic regression", kMenu, Needs::Data,
            Forward<kHarmonicRegression>},
    Command{"emg.fatigue", "Fati&gue analysis", kMenu, Needs::Data, Fatigue},
    Command{"emg.integrate-epoch", "Integrate by Epoch", kMenu, Needs::Data, Forward<kEpochs>},
    Command{"emg.linear-envelope", "Linear envelope EMG", kMenu, Needs::Data, LinearEnvelope},
    Command{"emg.maximums", "Determine Maximums (MVCs)", kMenu, Needs::Data, Analyse<DetermineMaximums>},
    Command{"emg.normalize", "Normalize LE-EMGs", kMenu, Needs::Data, Normalize},
    Command{"emg.rms", "RMS EMG", kMenu, Needs::Data, Forward<kRms>},
    Command{"emg.smoothing", "Smoothing (filtering)", kMenu, Needs::Data, Forward<kFilters>},
    Command{"emg.integrate-reset", "Integrate and Reset", kMenu, Needs::Data, Analyse<IntegrateWithReset>},
    Command{"emg.mav", "Mean Absolute &Value (MAV)", kMenu, Needs::Data, Forward<kMav>},
    Command{"emg.rectify", "Full-&Wave rectify (absolute values)", kMenu, Needs::Data, Forward<kAbsolute>},
    Command{"emg.rectify-integrate", "Rectif&y && Integrate", kMenu, Needs::Data, RectifyIntegrate},
    Command{"emg.onsets", "&Onsets and offsets", kMenu, Needs::Data, Analyse<FindOnsets>},
    Command{"emg.co-contraction", "&Co-contraction", kMenu, Needs::Data, Analyse<FindCoContraction>},
    Command{"values.maximums", "&Maximums", "&Multi-axis graph/&Values", Needs::View,
            DetermineMaximumsOfView},
    Command{"integrate.epoch", "Integrate by &Epoch", kIntegrals, Needs::Data, Analyse<IntegrateByEpoch>},
};

}  // namespace

std::span<const Command> EmgCommands() {
  return kEmgCommands;
}

}  // namespace velmora
