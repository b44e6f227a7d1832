#include "spectra/spectra_commands.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "core/questions/patience.hpp"
#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_picking.hpp"
#include "spectra/analysis_start.hpp"
#include "spectra/fft_form.hpp"
#include "spectra/fourier_statistics.hpp"
#include "spectra/generate_fourier_form.hpp"
#include "spectra/harmonic_regression.hpp"
#include "spectra/harmonic_series_form.hpp"
#include "spectra/windows.hpp"

namespace velmora {
namespace {

// The report of one channel; with more to come it can be the last. False ends the loop.
bool ShowReport(Workbench& workbench, const char* title, bool several) {
  const std::string& report = workbench.results.ResultText;
  if (!several) {
    workbench.questions.AskBox({.title = title, .text = report, .icon = Icon::Information});
    return true;
  }
  return workbench.questions.AskBox({.title = title,
                                     .text = report + "\nPress OK for next channel or Cancel to exit.",
                                     .icon = Icon::Information,
                                     .buttons = {Button::OK, Button::Cancel}}) == Button::OK;
}

std::string WithWindow(const Workbench& workbench, const std::string& what) {
  return what + ", " + workbench.spectrum.WindowName + " window";
}

// --- By harmonic regression

ChannelList PickHarmonics(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  ChooserState& chooser = workbench.chooser;
  BeginPicking(workbench, "Choose channels for Fourier analysis and maxiumum number of harmonics.");
  chooser.ChooserSelectMode = true;
  chooser.ChooserValuesMode = true;
  chooser.ChooserIntegerValues = true;
  chooser.ChanConst.fill(static_cast<float>(RoundHalfEven((trial.CursorHi - (trial.CursorLo - 1.0)) / 2)));
  return ChannelPicker(workbench).Show() ? SelectedChannels(trial, chooser.ChanSelected) : ChannelList{};
}

void Regress(Workbench& workbench, int channel, std::int32_t harmonics) {
  const Trial& trial = workbench.trial;
  const Epoch epoch{.channel = channel, .first = trial.CursorLo, .last = trial.CursorHi};
  SeriesOutcome outcome{};
  {
    ProgressPanel panel(workbench);
    panel.SetFormat("Fourier analysis");
    const std::int32_t used = UsableHarmonics(harmonics, epoch.Samples());
    panel.SetStatus(std::to_string(used) + " harmonics");
    panel.SetLimits(0, used);
    outcome = HarmonicRegression(trial, epoch, harmonics, workbench.spectrum, [&](std::int32_t done) {
      panel.SetValue(done);
      return !panel.GiveTurn();
    });
  }
  if (outcome == SeriesOutcome::NoSpectrum) {
    ShowRefusal(workbench,
                {.text = " Cannot compute Fourier series.  Data are constant.", .icon = Icon::Exclamation});
  } else if (outcome == SeriesOutcome::Done) {
    const std::string label = Trim(trial.ChanLabel[channel].Text());
    workbench.results.ResultText = SpectrumReport(channel, " " + label, KeptFrequencies(workbench.spectrum));
    const int done[] = {channel};
    Did(workbench,
        WithWindow(workbench,
                   "Power spectrum by harmonic regression, " + std::to_string(harmonics) + " harmonics"),
        done);
  }
}

void ShowSeries(Workbench& workbench, int channel) {
  if (workbench.spectrum.NHarm == 0) {
    ShowRefusal(workbench, {.text = "Number of harmonics requested was zero.", .icon = Icon::Exclamation});
    return;
  }
  HarmonicSeriesForm(workbench, channel).Show(workbench);
}

void HarmonicRegressionCommand(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (trial.NData == 0 || trial.NChan < 1) {
    return;
  }
  trial.CursorLo = std::max(trial.CursorLo, 1);
  trial.CursorHi = trial.CursorHi < 1 ? trial.NData : trial.CursorHi;
  const KeepsChanged keeps(workbench);
  if (!AskCursorWindow(workbench)) {
    return;
  }
  const ChannelList channels = PickHarmonics(workbench);
  for (const int channel : channels) {
    const double harmonics = workbench.chooser.ChanConst[channel];
    if (harmonics == 0) {
      continue;
    }
    if (!(harmonics >= 1)) {
      ShowRefusal(workbench,
                  {.title = "Invalid Number of Harmonics",
                   .text = "Number of harmonics must a positive number.  Harmonic analysis canceled.",
                   .icon = Icon::Exclamation});
      return;
    }
    Regress(workbench, channel, RoundHalfEven32(harmonics));
    ShowSeries(workbench, channel);
    if (!ShowReport(workbench, "DFT Results", channels.size() > 1)) {
      return;
    }
  }
}

// --- By the fast transform

ChannelList PickForFft(Workbench& workbench) {
  if (workbench.trial.NChan > 1) {
    return PickChannels(workbench, "Choose channels for Fourier analysis.");
  }
  workbench.chooser.ChanSelected.fill(false);
  workbench.chooser.ChanSelected[1] = true;
  return {1};
}

// A transform of millions of samples takes seconds, and cannot stop on its way.
void Transform(Workbench& workbench, int channel, const FftLength& length, EpochTransform& transform) {
  constexpr std::int32_t kLong = 1 << 20;
  const auto analyse = [&] { AnalyseByFft(workbench, channel, length, transform); };
  if (length.M >= kLong) {
    WithPatience(workbench, analyse);
  } else {
    analyse();
  }
}

void FftCommand(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  if (trial.NData == 0 || trial.NChan < 1) {
    ShowRefusal(workbench, {.text = "There are no data loaded.", .icon = Icon::Exclamation});
    return;
  }
  const KeepsChanged keeps(workbench);
  if (!AskCursorWindow(workbench)) {
    return;
  }
  const ChannelList channels = PickForFft(workbench);
  const FftLength length = FftLengthOf(trial);
  if (!channels.empty() && trial.CursorLo > 1) {
    AddNotice(workbench,
              "The FFT took samples 1 to " + std::to_string(length.M) +
                  ": the cursors say how many, not which.  Harmonic regression takes those between "
                  "the cursors.");
  }
  EpochTransform transform;
  for (const int channel : channels) {
    Transform(workbench, channel, length, transform);
    const int done[] = {channel};
    Did(workbench, WithWindow(workbench, "Power spectrum by FFT of " + std::to_string(length.M) + " samples"),
        done);
    FftForm(workbench, channel, length).Show(workbench);
    if (!ShowReport(workbench, "FFT Results", channels.size() > 1)) {
      return;
    }
  }
}

void GenerateCommand(Workbench& workbench) {
  GenerateFourierForm(workbench).Ask();
}

// --- Windows

template <std::size_t row>
void ChooseWindow(Workbench& workbench) {
  workbench.spectrum.WindowType = static_cast<std::int16_t>(row);
  Did(workbench, std::string(kSpectralWindows[row].name) + " window for spectra");
}

template <std::size_t row>
bool IsWindow(const Workbench& workbench) {
  return &WindowOf(workbench.spectrum.WindowType) == &kSpectralWindows[row];
}

constexpr std::string_view kFourierMenu = "&Analysis/&Fourier analysis";
constexpr std::string_view kWindowMenu = "&Analysis/&Fourier analysis/Select &Windowing";

constexpr std::array kAnalyses = {
    Command{"fourier.harmonic-regression", "Power spectrum (by &Harmonic regression)", kFourierMenu,
            Needs::Data, HarmonicRegressionCommand},
    Command{"fourier.fft", "Power spectrum (by FFT)", kFourierMenu, Needs::Data, FftCommand},
    Command{"fourier.statistics", "Fourier analysis &Statistics", kFourierMenu, Needs::Data,
            ShowFourierStatistics},
    Command{"fourier.generate", "Generate Fourier Series", kFourierMenu, Needs::Nothing, GenerateCommand},
};

// A command for each window, then the analyses.
template <std::size_t... rows>
constexpr auto WithWindows(std::index_sequence<rows...> /*windows*/) {
  std::array<Command, sizeof...(rows) + kAnalyses.size()> all = {
      Command{kSpectralWindows[rows].id, kSpectralWindows[rows].caption, kWindowMenu, Needs::Nothing,
              ChooseWindow<rows>, nullptr, IsWindow<rows>}...};
  std::copy(kAnalyses.begin(), kAnalyses.end(), all.begin() + sizeof...(rows));
  return all;
}

constexpr auto kSpectraCommands = WithWindows(std::make_index_sequence<kSpectralWindows.size()>());

}  // namespace

std::span<const Command> SpectraCommands() {
  return kSpectraCommands;
}

}  // namespace velmora
