#include "impact/phases/moment_power_form.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"
#include "impact/phases/work_units.hpp"

namespace velmora {
namespace {

std::string UnitsOf(const Trial& trial, int channel) {
  return channel < 1 ? std::string() : OneLine(Trim(trial.ChanUnits[channel].Text()));
}

bool AreDegrees(const std::string& units) {
  return units.starts_with("deg") || units.starts_with("\u00B0");
}

bool AreOfRotation(const std::string& units) {
  return AreDegrees(units) || units.starts_with("rad");
}

bool ArePerTime(const std::string& units) {
  return units.find("/s") != std::string::npos || units.find("s-1") != std::string::npos ||
         units.find("s^-1") != std::string::npos;
}

bool AreOfMoment(const std::string& units) {
  return units.starts_with("N") && units.find('m') != std::string::npos;
}

/// 0 when there is none.
template <typename Fits>
std::int32_t FirstWhoseUnits(const Trial& trial, const Fits& fit) {
  for (int c = 1; c <= trial.NChan; ++c) {
    if (fit(UnitsOf(trial, c))) {
      return c;
    }
  }
  return 0;
}

}  // namespace

MomentPowerForm::MomentPowerForm(Workbench& workbench, SampleRange range)
    : PhasesForm(workbench, "frmMomentPower", "Moment Power Analysis", range) {
  moment_ = FirstWhoseUnits(workbench.trial, AreOfMoment);
  motion_ = FirstWhoseUnits(workbench.trial, AreOfRotation);
  AddMotionFields();
  AddText("txtLabel", "&Label of the power", label_);
  AddRuleFields();
  AddButtons();
  FollowUnits();
}

void MomentPowerForm::AddMotionFields() {
  AddChannel("comMoment", "Mo&ment", moment_);
  AddChannel("comMotion", "M&otion", motion_).edited = [this] { FollowUnits(); };
  AddChoice("optMotion", "The motion is an", kind_, {"Angular &velocity", "&Angle"}).edited = [this] {
    kindChosen_ = true;
  };
  AddChoice("optAngle", "in", angleUnit_, {"&Radians", "&Degrees"}).edited = [this] { unitChosen_ = true; };
}

void MomentPowerForm::FollowUnits() {
  const std::string units = UnitsOf(workbench_.trial, motion_);
  if (!kindChosen_) {
    kind_ = AreOfRotation(units) && !ArePerTime(units) ? 1 : 0;
  }
  if (!unitChosen_) {
    angleUnit_ = AreDegrees(units) ? 1 : 0;
  }
}

bool MomentPowerForm::MayCompute() {
  if (moment_ < 1 || motion_ < 1 || moment_ == motion_) {
    RefuseTooFewChannels(workbench_, 2);
    return false;
  }
  // The derivative at the ends of the range stands on the samples beside them.
  const SampleRange around =
      IsAngle() ? SampleRange{std::max(1, Range().lo - 1), std::min(workbench_.trial.NData, Range().hi + 1)}
                : Range();
  return !RefuseMissing(workbench_, moment_, Range()) && !RefuseMissing(workbench_, motion_, around) &&
         HasFreeChannels(workbench_, 1);
}

// Degrees taken for radians make a power 57 times too large: what was taken for what is told.
std::string MomentPowerForm::Words() const {
  const std::string unit = InDegrees() ? "degrees" : "radians";
  return IsAngle() ? "angle in " + unit + ", differentiated" : "angular velocity in " + unit + " per second";
}

void MomentPowerForm::WarnOfJumps() {
  if (!IsAngle()) {
    return;
  }
  const Trial& trial = workbench_.trial;
  const double halfTurn = InDegrees() ? 180.0 : Pi;
  std::int64_t jumps = 0;
  for (std::int64_t i = Range().lo + 1; i <= Range().hi; ++i) {
    jumps += std::abs(double{trial.Data(i, motion_)} - trial.Data(i - 1, motion_)) > halfTurn ? 1 : 0;
  }
  if (jumps > 0) {
    ShowRefusal(workbench_,
                {.title = "Angle Jumps",
                 .text = "The angle goes by more than half a turn between neighbouring samples, " +
                         CountOf(jumps, "time") + ".  Its derivative is no velocity there.",
                 .icon = Icon::Exclamation});
  }
}

bool MomentPowerForm::Compute() {
  if (!MayCompute()) {
    return false;
  }
  WarnOfJumps();
  Trial& trial = workbench_.trial;
  const std::vector<float> power = MomentPower(
      trial, {.moment = moment_, .motion = motion_, .isAngle = IsAngle(), .inDegrees = InDegrees()});
  viewTitle_ = "Moment power: " + LabelOnOneLine(trial, moment_) + " times " +
               LabelOnOneLine(trial, motion_) + ", " + Words();
  viewWords_ = "Positive is generation, negative is absorption.";
  Did(workbench_,
      "Power of a moment, " + Words() + ", added as \"" + OneLine(Trim(label_)) + "\", and its phases",
      std::array{moment_, motion_});
  const std::array made = {
      NewChannel{.label = OneLine(Trim(label_)), .units = PowerUnitsOf(UnitsOf(trial, moment_))}};
  const int channel = AppendChannels(workbench_, made);
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    trial.Data(i, channel) = power[static_cast<std::size_t>(i - 1)];
  }
  ForgetFound();
  FindPhases(channel);
  return true;
}

void AnalyseMomentPower(Workbench& workbench) {
  AnalysePhases<MomentPowerForm>(workbench);
}

}  // namespace velmora
