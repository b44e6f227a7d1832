#include "spectra/generate_fourier_form.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/trial/generated_trial.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"
#include "spectra/sine_pattern.hpp"

namespace velmora {
namespace {

constexpr std::size_t kRateField = 3;
constexpr std::size_t kTimeField = 4;

}  // namespace

GenerateFourierForm::GenerateFourierForm(Workbench& workbench)
    : Form("frmGenerateFourier", "Generate Fourier Series"),
      workbench_(workbench),
      newTrial_(workbench.trial.NData == 0),
      fileNameBefore_(workbench.trial.FileName) {
  Trial& trial = workbench.trial;
  if (newTrial_) {
    trial.FileName = "Fourier";
  } else {
    rate_ = trial.Rate;
    time_ = trial.Duration;
  }
  AddFields();
  buttons_ = {
      StayButton("&Add", [this] { Add(); }),
      {"&Done", FormButton::Role::Accept, [this] { return Land(); }},
      {"E&xit", FormButton::Role::Cancel, [this] { return Leave(); }},
  };
  if (!newTrial_) {
    LockTimes();
  }
  Describe();
  DrawSum();
}

void GenerateFourierForm::AddFields() {
  const auto describe = [this] {
    Describe();
    DrawSum();
  };
  const auto add = [&](const char* name, const char* caption, double& value, const char* units,
                       const char* title, const char* prompt) {
    fields_.push_back({.name = name,
                       .caption = caption,
                       .target = &value,
                       .units = units,
                       .prompt = prompt,
                       .title = title,
                       .edited = describe,
                       .emptyKeeps = true,
                       .asksByInput = true});
  };
  add("cwnAmplitude", "A&mplitude", amplitude_, "", "Amplitude", "Enter amplitude of waveform.");
  add("cwnFrequency", "&Frequency", frequency_, "Hz", "Number of Cycles",
      "Enter number of cycles per second.");
  add("cwnPhase", "&Phase angle", phase_, "deg", "Phase Angle", "Enter phase angle in degrees.");
  add("cwnRate", "Sampling &rate", rate_, "Hz", "Sampling Rate",
      "Enter sampling rate of generated waveform in hertz.");
  add("cwnTime", "Sample &time", time_, "s", "Sample Time", "Enter sampling time in seconds.");
  fields_.push_back({.name = "Cycles", .caption = "In this trial", .target = &cycles_, .readOnly = true});
}

void GenerateFourierForm::LockTimes() {
  fields_[kRateField].readOnly = true;
  fields_[kTimeField].readOnly = true;
}

// The pattern's cycles are spread over the samples, which are one more than its intervals.
void GenerateFourierForm::Describe() {
  const double cycles = frequency_ * time_;
  const double samples = newTrial_ && sum_.empty() ? std::round(rate_ * time_ + 1) : workbench_.trial.NData;
  const bool whole = cycles == std::round(cycles);
  cycles_ = PlainNumber(static_cast<float>(cycles)) +
            (whole ? " cycles, a whole number" : " cycles, no whole number");
  if (samples > 0 && rate_ > 0) {
    cycles_ += "; " + FormatNumber(cycles * rate_ / samples, "0.0000 Hz");
  }
}

void GenerateFourierForm::DrawSum() {
  FormGraph graph{.title = sines_ == 0   ? "No sine yet"
                           : sines_ == 1 ? "1 sine"
                                         : "Sum of " + std::to_string(sines_) + " sines",
                  .x = {.maximum = time_ > 0 ? time_ : 1.0, .caption = "Time (s)"},
                  .y = {.minimum = -1, .maximum = 1, .caption = "Fourier"}};
  FormGraph::Plot plot{.name = "Fourier"};
  double most = 0.0;
  for (std::size_t i = 0; i < sum_.size(); ++i) {
    plot.x.push_back(static_cast<double>(i) / rate_);
    plot.y.push_back(sum_[i]);
    most = std::max(most, std::abs(plot.y.back()));
  }
  if (most > 0) {
    graph.y.minimum = -1.05 * most;
    graph.y.maximum = 1.05 * most;
  }
  graph.plots = {std::move(plot)};
  graph_ = std::move(graph);
}

bool GenerateFourierForm::HasRoom() {
  if (workbench_.trial.NChan < kMaxChannels) {
    return true;
  }
  ShowRefusal(workbench_,
              {.title = "No Free Channels",
               .text = "There are no more free channels.  You must exit this form and erase channels "
                       "to generate new waveforms.",
               .icon = Icon::Exclamation});
  return false;
}

bool GenerateFourierForm::StartTrial() {
  const std::optional<std::int64_t> samples = GeneratedSamples(workbench_, rate_, time_, Title());
  if (!samples || !MayBeLarge(workbench_, *samples, 1) ||
      !StartGeneratedTrial(workbench_, rate_, time_, Title())) {
    return false;
  }
  LockTimes();
  return true;
}

void GenerateFourierForm::Add() {
  const Trial& trial = workbench_.trial;
  if (!HasRoom() || (trial.NData == 0 && !StartTrial())) {
    return;
  }
  sum_.resize(static_cast<std::size_t>(trial.NData), 0.0F);
  AddSine({.amplitude = amplitude_, .phase = phase_, .cycles = frequency_ * trial.Duration}, sum_);
  ++sines_;
  Describe();
  DrawSum();
}

bool GenerateFourierForm::Land() {
  if (!HasRoom()) {
    return false;
  }
  if (sum_.empty()) {
    ShowRefusal(workbench_, {.title = "Generate Fourier Series",
                             .text = "No waveform was added.  Press Add first, or Exit.",
                             .icon = Icon::Exclamation});
    return false;
  }
  Trial& trial = workbench_.trial;
  const NewChannel made[] = {{.label = "Fourier", .units = "?"}};
  const int c = AppendChannels(workbench_, made);
  const ChannelView channel = trial.Channel(c);
  for (std::int64_t i = 0; i < channel.size(); ++i) {
    channel[i] = sum_[static_cast<std::size_t>(i)];
  }
  const int landed[] = {c};
  Did(workbench_, "Sum of " + std::to_string(sines_) + (sines_ == 1 ? " sine" : " sines"), landed);
  return true;
}

bool GenerateFourierForm::Leave() {
  if (newTrial_ && workbench_.trial.NData == 0) {
    workbench_.trial.FileName = fileNameBefore_;
  }
  return true;
}

}  // namespace velmora
