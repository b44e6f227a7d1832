#include "impact/accelerometry/accelerometry_form.hpp"

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/design/cancellable_run.hpp"
#include "impact/acceleration_units.hpp"

namespace velmora {

AccelerometryForm::AccelerometryForm(Workbench& workbench, SampleRange range)
    : AnalysisForm(workbench, "frmAccelerometry", "3-D Accelerometry"), range_(range) {
  std::size_t axis = 0;
  for (int c = 1; c <= workbench.trial.NChan && axis < axes_.size(); ++c) {
    if (AccelerationUnitsOf(workbench.trial, c)) {
      axes_[axis++] = c;
    }
  }
  AddAxisFields();
  AddMeasureFields();
  AddButtons();
  FollowUnits();
}

void AccelerometryForm::AddAxisFields() {
  AddChannel("comX", "&X axis", axes_[0]).edited = [this] { FollowUnits(); };
  AddChannel("comY", "&Y axis", axes_[1]);
  AddChannel("comZ", "&Z axis", axes_[2]);
  AddChoice("optUnits", "Units", units_, {"&g", "&m/s\u00B2"}).edited = [this] { unitsChosen_ = true; };
}

void AccelerometryForm::AddMeasureFields() {
  constexpr Limits kHicLimits{3, 100};
  AddChoice("comClass", "CFC c&lass", filter_.chosen, CfcChoice::Names());
  AddNumber("txtBias", "Subtract the mean of the first (s)", bias_,
            {0, (range_.hi - range_.lo + 1) / workbench_.trial.Rate});
  AddNumber("txtHIC1", "&HIC over at most", hicLimits_[0], kHicLimits).units = "ms";
  AddNumber("txtHIC2", "and over at most", hicLimits_[1], kHicLimits).units = "ms";
  AddFlag("chkResultant", "Add the &resultant", addResultant_);
  AddFlag("chkTilt", "Add roll and &pitch", addTilt_);
}

void AccelerometryForm::FollowUnits() {
  if (!unitsChosen_) {
    units_ = static_cast<std::int32_t>(
        AccelerationUnitsOf(workbench_.trial, axes_[0]).value_or(AccelerationUnits::G));
  }
}

bool AccelerometryForm::MayCompute() {
  const std::set<std::int32_t> apart(axes_.begin(), axes_.end());
  if (apart.size() < axes_.size() || *apart.begin() < 1) {
    RefuseTooFewChannels(workbench_, static_cast<int>(axes_.size()));
    return false;
  }
  // A filter stands on all samples of its channel.
  const SampleRange used = filter_.chosen > 0 ? SampleRange{1, workbench_.trial.NData} : range_;
  for (const int c : axes_) {
    if (RefuseMissing(workbench_, c, used)) {
      return false;
    }
  }
  return HasFreeChannels(workbench_, ChannelsAsked());
}

void AccelerometryForm::WarnOfUnits() {
  const auto units = [this](std::size_t k) {
    return OneLine(Trim(workbench_.trial.ChanUnits[axes_[k]].Text()));
  };
  if (units(0) != units(1) || units(0) != units(2)) {
    ShowRefusal(workbench_,
                {.title = "Units Differ",
                 .text = "The channels are in \"" + units(0) + "\", \"" + units(1) + "\" and \"" + units(2) +
                         "\".  All are taken to be in " + (Metric() ? "m/s\u00B2." : "g."),
                 .icon = Icon::Exclamation});
  }
}

void AccelerometryForm::WarnOfGravity() {
  constexpr double kNear = 0.1;  // of a mean of 1
  const double wrongly = Metric() ? found_.mean * kStandardGravity : found_.mean / kStandardGravity;
  if (bias_ == 0 && std::abs(wrongly - 1) < kNear) {
    ShowRefusal(
        workbench_,
        {.title = "Check the Units",
         .text = "The mean of the resultant is " + FormatNumber(Metric() ? wrongly : found_.mean, "0.00 ") +
                 (Metric() ? "m/s\u00B2.  Are the channels in g?" : "g.  Are the channels in m/s\u00B2?"),
         .icon = Icon::Exclamation});
  }
}

bool AccelerometryForm::Compute() {
  if (!MayCompute()) {
    return false;
  }
  const Trial& trial = workbench_.trial;
  AccelerometryRule rule{.channels = axes_,
                         .metric = Metric(),
                         .biasSamples = std::min<std::int64_t>(RoundHalfEven(bias_ * trial.Rate),
                                                               std::int64_t{range_.hi} - range_.lo + 1)};
  if (filter_.chosen > 0) {
    rule.filter = DesignCfcFor(workbench_, filter_.Class());
    if (!rule.filter) {
      return false;
    }
  }
  WarnOfUnits();
  const bool done = ReadCancellable(workbench_, "Accelerometry", [&](const Turn& turn) {
    accelerations_ = ReadAccelerations(trial, range_, rule);
    Give(turn);
    found_ = MeasureAccelerations(accelerations_, range_, trial.Rate, hicLimits_, turn);
  });
  if (!done) {
    return false;
  }
  WarnOfGravity();
  Did(workbench_, Words(), axes_);
  AddChannelsAsked();
  return true;
}

void AccelerometryForm::AddChannelsAsked() {
  if (ChannelsAsked() == 0) {
    return;
  }
  Trial& trial = workbench_.trial;
  std::vector<NewChannel> made;
  if (addResultant_) {
    made.push_back({.label = "Resultant", .units = Metric() ? "m/s^2" : "g"});
  }
  if (addTilt_) {
    made.push_back({.label = "Roll", .units = "deg"});
    made.push_back({.label = "Pitch", .units = "deg"});
  }
  const int first = AppendChannels(workbench_, made);
  for (std::int32_t i = 1; i <= trial.NData; ++i) {
    const auto k = static_cast<std::size_t>(i - 1);
    int channel = first;
    if (addResultant_) {
      const double scale = Metric() ? kStandardGravity : 1.0;
      trial.Data(i, channel++) = static_cast<float>(accelerations_.resultant[k] * scale);
    }
    if (addTilt_) {
      trial.Data(i, channel++) = static_cast<float>(accelerations_.Roll(k));
      trial.Data(i, channel) = static_cast<float>(accelerations_.Pitch(k));
    }
  }
}

std::string AccelerometryForm::HicName(std::size_t k) const {
  return "HIC" + PlainNumber(hicLimits_[k]);
}

std::string AccelerometryForm::Words() const {
  std::string words = "3-D accelerometry, " + filter_.Words() + ", peak " +
                      FormatNumber(found_.peakResultant.value, "0.0 ") + "g";
  for (std::size_t k = 0; k < hicLimits_.size(); ++k) {
    if (found_.hic[k]) {
      words += ", " + HicName(k) + " " + FormatNumber(found_.hic[k]->value, "0.0");
    }
  }
  return words;
}

void MeasureThreeAxes(Workbench& workbench) {
  constexpr std::int32_t kFewestSamples = 3;  // of a filtered channel
  if (const auto range = AskTimedRange(workbench, kFewestSamples)) {
    AccelerometryForm form(workbench, *range);
    if (form.Ask()) {
      form.ShowFound();
    }
  }
}

}  // namespace velmora
