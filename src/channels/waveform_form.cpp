#include "channels/waveform_form.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/generated_trial.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"

namespace velmora {
namespace {

constexpr double kLargest = 1e30;

std::vector<std::string> ShapeNames() {
  return {"&Constant", "&Sine",  "S&quare",          "&Triangle",
          "Sa&wtooth", "&Pulse", "&Half-sine pulse", "Ha&versine pulse",
          "&Ramp",     "C&hirp", "&Uniform noise",   "&Gaussian noise"};
}

}  // namespace

WaveformForm::WaveformForm(Workbench& workbench)
    : AnalysisForm(workbench, "frmWaveform", "Generate a Waveform") {
  const Trial& trial = workbench.trial;
  if (trial.NData > 0) {
    rate_ = trial.Rate;
    time_ = trial.Duration;
  }
  AddFields();
  FollowShape();
  AddButtons("&Done");
  buttons_.insert(buttons_.begin(), StayButton("&Add", [this] { Add(); }));
  if (trial.NData > 0) {
    LockTimes();
  }
  DrawSum();
}

void WaveformForm::AddFields() {
  const auto number = [this](const char* name, const char* caption, double& value, const char* units,
                             Limits limits) { AddNumber(name, caption, value, limits).units = units; };
  AddChoice("optShape", "", shape_, ShapeNames()).edited = [this] { FollowShape(); };
  const Limits any{-kLargest, kLargest};
  const Limits above{.lowest = 0, .highest = kLargest, .openBelow = true};
  number("txtAmplitude", "&Amplitude", wave_.amplitude, "", any);
  number("txtOffset", "&Offset", wave_.offset, "", any);
  number("txtFrequency", "&Frequency (Hz)", wave_.frequency, "", {0, rate_ / 2});
  number("txtEndFrequency", "&End frequency (Hz)", wave_.endFrequency, "", {0, rate_ / 2});
  number("txtPhase", "P&hase (deg)", wave_.phase, "", any);
  number("txtDuty", "&Duty (%)", wave_.duty, "",
         {.lowest = 0, .highest = 100, .openBelow = true, .openAbove = true});
  number("txtStart", "S&tart (s)", wave_.start, "", any);
  number("txtWidth", "Wi&dth (s)", wave_.width, "", above);
  number("txtSeed", "&Seed", seed_, "", {0, 4294967295.0});
  number("txtRate", "Sampling &rate (Hz)", rate_, "", above);
  number("txtDuration", "Sample t&ime (s)", time_, "", above);
  AddText("txtLabel", "&Label", label_).edited = [this] { labelTyped_ = true; };
  AddText("txtUnits", "U&nits", units_);
}

void WaveformForm::LockTimes() {
  for (FormField& field : fields_) {
    field.readOnly = field.readOnly || field.name == "txtRate" || field.name == "txtDuration";
  }
}

// Fields that mean nothing to the shape are out of the way; its name is the label as long as nobody typed
// one.
void WaveformForm::FollowShape() {
  const auto shape = static_cast<WaveShape>(shape_);
  const bool single = shape >= WaveShape::Pulse && shape <= WaveShape::Ramp;
  const bool periodic =
      (shape >= WaveShape::Sine && shape <= WaveShape::Sawtooth) || shape == WaveShape::Chirp;
  const bool noise = shape >= WaveShape::UniformNoise;
  const auto shows = [&](const std::string& name) {
    return name == "txtFrequency" || name == "txtPhase" ? periodic
           : name == "txtEndFrequency"                  ? shape == WaveShape::Chirp
           : name == "txtDuty" ? shape == WaveShape::Square || shape == WaveShape::Triangle
           : name == "txtStart" || name == "txtWidth" ? single
           : name == "txtSeed"                        ? noise
                                                      : true;
  };
  for (FormField& field : fields_) {
    field.hidden = !shows(field.name);
  }
  if (!labelTyped_) {
    label_ = WithoutMnemonic(ShapeNames()[static_cast<std::size_t>(shape_)]);
    NoteFilled("txtLabel");
  }
}

// The rate comes first, since frequencies are held to it.
std::optional<std::int64_t> WaveformForm::Samples() {
  if (!sum_.empty()) {
    return static_cast<std::int64_t>(sum_.size());
  }
  if (workbench_.trial.NData > 0) {
    return workbench_.trial.NData;
  }
  const std::optional<std::int64_t> samples = GeneratedSamples(workbench_, rate_, time_, Title());
  return samples && MayBeLarge(workbench_, *samples, 1) ? samples : std::nullopt;
}

bool WaveformForm::Add() {
  const std::optional<std::int64_t> samples = Samples();
  if (!samples) {
    return false;
  }
  const Limits frequencies{0, rate_ / 2};
  SetLimits("txtFrequency", frequencies);
  SetLimits("txtEndFrequency", frequencies);
  if (!WithinLimits() || !HasFreeChannels(workbench_, 1)) {
    return false;
  }
  if (sum_.empty()) {
    sum_.resize(static_cast<std::size_t>(*samples));
    LockTimes();
  }
  wave_.shape = static_cast<WaveShape>(shape_);
  wave_.seed = static_cast<std::uint32_t>(RoundHalfEven(seed_));
  AddWaveform(wave_, rate_, sum_);
  added_.push_back(WithoutMnemonic(ShapeNames()[static_cast<std::size_t>(shape_)]));
  DrawSum();
  return true;
}

bool WaveformForm::Compute() {
  if (sum_.empty()) {
    ShowRefusal(workbench_, {.title = Title(),
                             .text = "No waveform was added.  Press Add first, or Cancel.",
                             .icon = Icon::Exclamation});
    return false;
  }
  if (!HasFreeChannels(workbench_, 1)) {
    return false;
  }
  if (workbench_.trial.NData == 0) {
    StartGeneratedTrial(workbench_, rate_, time_, Title());
    workbench_.trial.FileName = "Fourier";
  }
  const std::array made = {NewChannel{label_, units_}};
  const int c = AppendChannels(workbench_, made);
  const ChannelView channel = workbench_.trial.Channel(c);
  for (std::int64_t i = 0; i < channel.size(); ++i) {
    channel[i] = static_cast<float>(sum_[static_cast<std::size_t>(i)]);
  }
  std::string words = "Generated ";
  for (const std::string& name : added_) {
    words += (&name == &added_.front() ? "" : " + ") + name;
  }
  Did(workbench_, words, std::array{c});
  return true;
}

void WaveformForm::DrawSum() {
  FormGraph graph{.title = added_.empty()
                               ? "Nothing added yet"
                               : "Sum of " + CountOf(static_cast<std::int64_t>(added_.size()), "waveform"),
                  .x = {.maximum = time_ > 0 ? time_ : 1.0, .caption = "Time (s)"},
                  .y = {.minimum = -1, .maximum = 1, .caption = "Waveform"}};
  FormGraph::Plot plot{.name = "Waveform"};
  double most = 0.0;
  for (std::size_t i = 0; i < sum_.size(); ++i) {
    plot.x.push_back(static_cast<double>(i) / rate_);
    plot.y.push_back(sum_[i]);
    most = std::max(most, std::fabs(sum_[i]));
  }
  if (most > 0) {
    graph.y.minimum = -1.05 * most;
    graph.y.maximum = 1.05 * most;
  }
  graph.plots = {std::move(plot)};
  graph_ = std::move(graph);
}

}  // namespace velmora
