#include "spectra/fft_form.hpp"

#include <bit>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "results/result_presses.hpp"

namespace velmora {

FftLength FftLengthOf(const Trial& trial) {
  const std::int32_t distance = std::max(trial.CursorHi - trial.CursorLo, 1);
  FftLength length;
  length.M = static_cast<std::int32_t>(std::bit_floor(static_cast<std::uint32_t>(distance)));
  length.Half = RoundHalfEven32(length.M / 2.0);
  length.Df = trial.Rate > 0 ? static_cast<float>(1.0 / (length.M / trial.Rate)) : 0.0F;
  length.MaxFreq = RoundHalfEven32(static_cast<double>(length.Df) * length.Half);
  return length;
}

void AnalyseByFft(Workbench& workbench, int channel, const FftLength& length, EpochTransform& transform) {
  const Trial& trial = workbench.trial;
  SpectrumMemory& spectrum = workbench.spectrum;
  transform.TakePowers(trial, {.channel = channel, .first = 1, .last = length.M}, length.Half, spectrum);
  FourFrequencies frequencies;
  SummarisePowers(spectrum, length.Half, length.Df, PowerSum::Double, frequencies);
  KeepFrequencies(spectrum, frequencies);
  workbench.results.ResultText =
      SpectrumReport(channel, "  " + TrimRight(trial.ChanLabel[channel].Text()), frequencies);
}

FftForm::FftForm(Workbench& workbench, int channel, const FftLength& length)
    : SpectrumForm(workbench, {.name = "frmFFT",
                               .title = "Power Spectrum (FFT) for file: " + workbench.trial.FileName,
                               .abscissas = {"Harmonics", "Frequency"},
                               .series = {"1 &Normalized power", "2 &Cumulative power", "3 &Relative power",
                                          "1, 2 and 3", "Absolute power"},
                               .abscissa = 1,
                               .channel = channel,
                               .lines = length.Half,
                               .step = length.Df,
                               .MaxHarm = length.Half,
                               .MaxFreq = length.MaxFreq}),
      length_(length),
      df_(length.Df),
      trial_(workbench.trial.TrialName),
      channel_(ChannelNumber(channel)),
      label_(workbench.trial.ChanLabel[channel].Text()) {
  AddMenuFields();
  AddFields();
  const SpectrumMemory& spectrum = workbench.spectrum;
  AddFrequencyFields(
      {spectrum.MedianFreq, spectrum.MeanFreq, spectrum.Percentile95Freq, spectrum.Percentile99Freq});
  AddButtons();
  DrawGraph();
}

void FftForm::AddFields() {
  const auto show = [this](const char* name, const char* caption, FormField::Target target,
                           const char* units = "") {
    fields_.push_back({.name = name, .caption = caption, .target = target, .units = units, .readOnly = true});
  };
  show("txtTrial", "Trial", &trial_);
  show("txtChannel", "Channel", &channel_);
  show("txtLabel", "Label", &label_);
  show("M", "Samples transformed", &length_.M);
  show("Half", "Harmonics", &length_.Half);
  show("Df", "Frequency step", &df_, "Hz");
  show("MaxFreq", "Highest frequency", &length_.MaxFreq, "Hz");
}

void FftForm::AddButtons() {
  buttons_ = {
      {"E&xit", FormButton::Role::Accept, [] { return true; }},
      {.caption = "&Maximum", .press = [this] { return AskMaximum(); }},
      StayButton("S&tats",
                 [this] {
                   workbench_.questions.AskBox({.title = "FFT Results",
                                                .text = workbench_.results.ResultText,
                                                .icon = Icon::Information});
                 }),
      StayButton("&Reset", [this] { ShowWhole(); }),
  };
  for (FormButton& button : PictureButtons(workbench_, *this)) {
    buttons_.push_back(std::move(button));
  }
}

}  // namespace velmora
