#include "emg/epochs/integrate_reset_form.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/design/cancellable_run.hpp"

namespace velmora {
namespace {

constexpr std::size_t kMostRows = 10'000;  // of a channel

}  // namespace

IntegrateResetForm::IntegrateResetForm(Workbench& workbench)
    : AnalysisForm(workbench, "frmIntegrateReset", "Integrate and Reset"), width_(workbench) {
  AddChoice("optReset", "&Reset", reset_, {"Every &time interval", "At a &level"}).edited = [this] {
    Follow();
  };
  fields_.push_back(
      {.name = "WindowWidth", .caption = "&Window width", .target = &width_.width, .edited = [this] {
         width_.typed = true;
       }});
  AddFlag("WindowInSeconds", "Width in &seconds", width_.inSeconds).edited = [this] {
    if (width_.UnitEdited(workbench_)) {
      NoteFilled("WindowWidth");
    }
  };
  fields_.push_back({.name = "txtLevel", .caption = "Le&vel", .target = &level_});
  AddFlag("chkRectify", "Rectif&y", rectify_);
  AddChannels("channels", "&Channels", channels_);
  AddButtons("&Integrate");
  Follow();
}

void IntegrateResetForm::Follow() {
  for (FormField& field : fields_) {
    if (field.name == "WindowWidth" || field.name == "WindowInSeconds") {
      field.hidden = reset_ != 0;
    } else if (field.name == "txtLevel") {
      field.hidden = reset_ == 0;
    }
  }
}

std::string IntegrateResetForm::Words() const {
  const double width = workbench_.smoothing.WindowWidth;
  return std::string(rectify_ ? "Rectified, integrated" : "Integrated") + " and reset " +
         (reset_ == 0 ? "every " + PlainNumber(width / workbench_.trial.Rate) + " s"
                      : "at a level of " + PlainNumber(level_));
}

void IntegrateResetForm::AddRows(ResultTable& table, int channel,
                                 const std::vector<IntegratorReset>& resets) {
  const Trial& trial = workbench_.trial;
  const std::string label = Trim(trial.ChanLabel[channel].Text());
  for (std::size_t k = 0; k < resets.size() && k < kMostRows; ++k) {
    const IntegratorReset& reset = resets[k];
    const double interval = reset.samples / trial.Rate;
    table.rows.push_back({ChannelNumber(channel), label, static_cast<double>(k + 1),
                          static_cast<double>(reset.sample), double{trial.Data(reset.sample, 0)},
                          reset.integral, interval, 1 / interval});
  }
  if (resets.size() > kMostRows) {
    results_.words += std::string(results_.words.empty() ? "" : "  ") + "The first " +
                      FormatCount(static_cast<std::int64_t>(kMostRows)) + " of " +
                      FormatCount(static_cast<std::int64_t>(resets.size())) + " resets of channel " +
                      ChannelNumber(channel) + " are listed.";
  }
}

bool IntegrateResetForm::Compute() {
  Trial& trial = workbench_.trial;
  ChannelList channels = SelectedChannels(trial, channels_);
  if (channels.empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  if (reset_ == 0 && !width_.Accept(workbench_)) {
    return false;
  }
  if (reset_ != 0 && !(level_ > 0 && std::isfinite(level_))) {
    ShowRefusal(
        workbench_,
        {.title = "Invalid Level", .text = "The level must be above zero.", .icon = Icon::Exclamation});
    return false;
  }
  channels = WithoutMissing(workbench_, channels, {1, trial.NData});
  if (channels.empty()) {
    return false;
  }
  const NumberPatterns& patterns = workbench_.patterns;
  const ResultTable::Format time = ThroughPattern(patterns.TimePattern);
  const ResultTable::Format count = ThroughPattern("0");
  ResultTable table{.name = "frmIntegrateReset",
                    .title = "Resets",
                    .columns = {"Channel", "Label", "Reset", "Sample", "Time", "Integral", "Interval (s)",
                                "Frequency (Hz)"},
                    .formats = {nullptr, nullptr, count, count, time, ThroughPattern(patterns.ValuePattern),
                                time, ThroughPattern("0.00")}};
  const ResetRule rule{.atLevel = reset_ != 0, .width = workbench_.smoothing.WindowWidth, .level = level_};
  const bool done = RunCancellable(workbench_, channels, "Integrating", [&](const Turn& turn) {
    for (const int c : channels) {
      AddRows(table, c, IntegrateAndReset(trial, c, rule, rectify_, 1.0 / trial.Rate));
      Give(turn);
    }
  });
  if (!done) {
    return false;
  }
  for (const int c : channels) {
    trial.ChanUnits[c] = Trim(trial.ChanUnits[c].Text()) + ".s";
  }
  MarkChanged(workbench_, true);
  Did(workbench_, Words(), channels);
  results_.name = "frmIntegrateReset";
  results_.title = Words();
  results_.file = {.what = "Integrated EMG", .extension = ".iem"};
  results_.head = {.range = SampleRange{1, trial.NData}, .parameters = ParametersOf(trial, *this)};
  results_.tables = {std::move(table)};
  return true;
}

void IntegrateWithReset(Workbench& workbench) {
  if (workbench.trial.NData < 1 || !HasTimeBase(workbench)) {
    return;
  }
  IntegrateResetForm form(workbench);
  if (form.Ask()) {
    ShowResults(workbench, form.TakeResults());
  }
}

}  // namespace velmora
