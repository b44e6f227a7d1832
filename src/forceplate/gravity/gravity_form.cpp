#include "forceplate/gravity/gravity_form.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "core/text/numbers.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/design/cancellable_run.hpp"
#include "dsp/math/mean_deviation.hpp"
#include "forceplate/force_samples.hpp"
#include "formats/native_binary/native_binary_layout.hpp"
#include "results/pictured_results.hpp"

namespace velmora {
namespace {

constexpr double kTallestInMetres = 3.0;
constexpr double kRestlessPart = 0.05;  // of the weight that a standing person's force may vary by
constexpr double kWeightPart = 0.005;   // that an entered mass may be off before a jump's height is

std::string WordsOf(const GravityFound& found) {
  std::string words = "Centre of gravity of " + FormatNumber(found.mass, "0.0") + " kg";
  if (found.jump && found.jump->impulseHeight) {
    words += ", a jump of " + FormatNumber(*found.jump->impulseHeight, "0.000") + " m by its impulse";
  }
  return words;
}

}  // namespace

GravityForm::GravityForm(Workbench& workbench, SampleRange range)
    : AnalysisForm(workbench, "frmGravity", "Center of Gravity"), range_(range) {
  const std::string& people = workbench.records.FILMINFO;
  mass_ = native::Get<float>(people, native::kMass);
  height_ = native::Get<float>(people, native::kHeight);
  if (height_ > kTallestInMetres) {
    height_ /= 100;
  }
  AddChannelFields();
  AddBodyFields();
  AddButtons();
  Follow();
}

void GravityForm::AddChannelFields() {
  const Trial& trial = workbench_.trial;
  fx_ = ChannelByLabel(trial, {"Fx comb", "Fx#1", "Fx"});
  fy_ = ChannelByLabel(trial, {"Fy comb", "Fy#1", "Fy"});
  fz_ = ChannelByLabel(trial, {"Fz comb", "Fz#1", "Fz"});
  ax_ = ChannelByLabel(trial, {"Ax comb", "Ax#1", "COPx", "Ax"});
  ay_ = ChannelByLabel(trial, {"Ay comb", "Ay#1", "COPy", "Ay"});
  AddChannel("comFx", "F&x", fx_);
  AddChannel("comFy", "F&y", fy_);
  AddChannel("comFz", "F&z (vertical)", fz_);
  AddChannel("comAx", "Centre of pressure x", ax_);
  AddChannel("comAy", "Centre of pressure y", ay_);
}

void GravityForm::AddBodyFields() {
  const double all = (range_.hi - range_.lo + 1) / workbench_.trial.Rate;
  quiet_ = std::min(quiet_, all);
  const auto follow = [this] { Follow(); };
  AddChoice("optMass", "Mass", massFrom_, {"From the quiet &interval", "&Entered (kg)"}).edited = follow;
  AddNumber("txtMass", "Mass (kg)", mass_, {.lowest = 0, .highest = 1000, .openBelow = true});
  AddNumber("txtQuiet", "&Quiet interval (s)", quiet_, {.lowest = 0, .highest = all, .openBelow = true});
  AddNumber("txtGravity", "&Gravity (m/s²)", gravity_, {9, 10});
  AddFlag("chkUnloaded", "&Subtract the smallest force", unloaded_);
  AddChoice("optDrift", "Drift", driftChoice_, {"&Starts at rest", "&Also ends at rest", "Stead&y"});
  AddChoice("optHorizontal", "Horizontally", horizontalChoice_,
            {"As the &vertical", "&Zero points", "&Pendulum"})
      .edited = follow;
  AddNumber("txtHeight", "&Height (m)", height_, {0.3, kTallestInMetres});
  AddFlag("chkAcceleration", "Add a&cceleration", addAcceleration_);
  AddFlag("chkVelocity", "Add ve&locity", addVelocity_);
  AddFlag("chkDisplacement", "Add &displacement", addDisplacement_);
  AddNumber("txtThreshold", "&Unloaded below (N)", threshold_,
            {.lowest = 0, .highest = 10000, .openBelow = true});
  AddNumber("txtStart", "&Moves at (% of weight)", start_, {.lowest = 0, .highest = 100, .openBelow = true});
}

void GravityForm::Follow() {
  horizontal_ = static_cast<HorizontalMethod>(horizontalChoice_);
  for (FormField& field : fields_) {
    if (field.name == "txtMass") {
      field.hidden = massFrom_ != kEntered;
    } else if (field.name == "txtHeight") {
      field.hidden = horizontal_ != HorizontalMethod::Pendulum;
    } else if (field.name == "comFx" || field.name == "comFy") {
      field.hidden = !NeedsForce();
    } else if (field.name == "comAx" || field.name == "comAy") {
      field.hidden = !NeedsPressure();
    }
  }
}

bool GravityForm::HasDirection(int force, int pressure) const {
  return (force > 0 || !NeedsForce()) && (pressure > 0 || !NeedsPressure());
}

// Those that the method reads.
std::vector<int> GravityForm::HorizontalChannels() const {
  std::vector<int> channels;
  for (const auto& [force, pressure] : {std::pair{fx_, ax_}, std::pair{fy_, ay_}}) {
    if (!HasDirection(force, pressure)) {
      continue;
    }
    if (NeedsForce()) {
      channels.push_back(force);
    }
    if (NeedsPressure()) {
      channels.push_back(pressure);
    }
  }
  return channels;
}

bool GravityForm::HasChannels() {
  std::vector<int> channels = HorizontalChannels();
  if (fz_ == 0 || (channels.empty() && NeedsPressure())) {
    RefuseTooFewChannels(workbench_,
                         1 + (NeedsPressure() ? 1 : 0) + (NeedsPressure() && NeedsForce() ? 1 : 0));
    return false;
  }
  channels.push_back(fz_);
  for (const int c : channels) {
    if (RefuseMissing(workbench_, c, range_)) {
      return false;
    }
  }
  return HasPressureUnits() && HasFreeChannels(workbench_, ChannelsToAdd());
}

int GravityForm::ChannelsToAdd() const {
  const int directions = 1 + (HasDirection(fx_, ax_) ? 1 : 0) + (HasDirection(fy_, ay_) ? 1 : 0);
  return directions * ((addAcceleration_ ? 1 : 0) + (addVelocity_ ? 1 : 0) + (addDisplacement_ ? 1 : 0));
}

bool GravityForm::HasPressureUnits() {
  for (const auto& [force, pressure] : {std::pair{fx_, ax_}, std::pair{fy_, ay_}}) {
    if (NeedsPressure() && HasDirection(force, pressure) && !MetresIn(workbench_.trial, pressure)) {
      ShowRefusal(workbench_,
                  {.title = "Unknown Units",
                   .text = "The units of channel " + ChannelNumber(pressure) + " must be m, cm or mm.",
                   .icon = Icon::Exclamation});
      return false;
    }
  }
  return true;
}

std::size_t GravityForm::QuietSamples() const {
  const std::int64_t samples = RoundHalfEven(quiet_ * workbench_.trial.Rate);
  return static_cast<std::size_t>(std::clamp<std::int64_t>(samples, 1, range_.hi - range_.lo + 1));
}

bool GravityForm::TakeWeight(GravityFound& found) {
  const auto quiet = std::span(found.vertical).first(QuietSamples());
  found.turned = PointsDown(quiet);
  if (found.turned) {
    TurnForce(found.vertical);
  }
  if (unloaded_) {
    const double least = *std::min_element(found.vertical.begin(), found.vertical.end());
    for (double& force : found.vertical) {
      force -= least;
    }
  }
  const MeanDeviation still = MeanDeviationOf(quiet);
  found.quietForce = still.mean;
  found.quietDeviation = still.deviation;
  found.weight = massFrom_ == kEntered ? mass_ * gravity_ : still.mean;
  found.mass = massFrom_ == kEntered ? mass_ : still.mean / gravity_;
  if (found.weight > threshold_) {
    return true;
  }
  ShowRefusal(workbench_, {.title = "No Weight",
                           .text = "The force is " + FormatNumber(found.weight, "0.0") +
                                   " N in the quiet interval.  Somebody must stand still there.",
                           .icon = Icon::Exclamation});
  return false;
}

bool GravityForm::IsLoaded(const GravityFound& found) {
  const auto it = std::find_if(found.vertical.begin(), found.vertical.end(),
                               [this](double force) { return force < threshold_; });
  if (!NeedsPressure() || it == found.vertical.end()) {
    return true;
  }
  ShowRefusal(workbench_,
              {.title = "No Centre of Pressure",
               .text = "The force is below " + PlainNumber(threshold_) + " N at sample " +
                       std::to_string(range_.lo + (it - found.vertical.begin())) +
                       ": there is no centre of pressure without a load.  Use another range or method.",
               .icon = Icon::Exclamation});
  return false;
}

std::optional<HorizontalMotion> GravityForm::FindHorizontal(const GravityFound& found, int force,
                                                            int pressure) const {
  const Trial& trial = workbench_.trial;
  const double dt = 1.0 / trial.Rate;
  HorizontalMotion motion;
  if (NeedsPressure()) {
    motion.pressure = SamplesOf(trial, pressure, range_);
    const double metres = *MetresIn(trial, pressure);
    for (double& place : motion.pressure) {
      place *= metres;
    }
  }
  if (horizontal_ == HorizontalMethod::Pendulum) {
    motion.motion = MotionOfPendulum(motion.pressure, dt, PendulumFrequency(height_, gravity_));
    return motion;
  }
  std::vector<double> forces = SamplesOf(trial, force, range_);
  if (found.turned) {
    TurnForce(forces);
  }
  if (horizontal_ == HorizontalMethod::ZeroPoints) {
    std::optional<AxisMotion> way = MotionByZeroPoints(forces, motion.pressure, found.mass, dt);
    if (!way) {
      return std::nullopt;
    }
    motion.motion = *std::move(way);
    return motion;
  }
  for (double& value : forces) {
    value /= found.mass;
  }
  motion.motion = MotionByIntegral(std::move(forces), dt, found.drift);
  return motion;
}

bool GravityForm::FindMotions(GravityFound& found) {
  bool crosses = true;
  const bool done = ReadCancellable(workbench_, "Centre of gravity", [&](const Turn& turn) {
    std::vector<double> acceleration;
    acceleration.reserve(found.vertical.size());
    for (const double force : found.vertical) {
      acceleration.push_back(force / found.mass - gravity_);
    }
    found.z = MotionByIntegral(std::move(acceleration), 1.0 / workbench_.trial.Rate, found.drift);
    Give(turn);
    if (HasDirection(fx_, ax_)) {
      found.x = FindHorizontal(found, fx_, ax_);
      crosses = crosses && found.x;
      Give(turn);
    }
    if (HasDirection(fy_, ay_)) {
      found.y = FindHorizontal(found, fy_, ay_);
      crosses = crosses && found.y;
      Give(turn);
    }
    found.jump =
        FindJump(found.vertical, workbench_.trial.Rate,
                 {.weight = found.weight, .gravity = gravity_, .unloaded = threshold_, .moves = start_});
  });
  if (done && !crosses) {
    ShowRefusal(workbench_, {.title = "No Zero Points",
                             .text = "The horizontal force never crosses zero; use another method.",
                             .icon = Icon::Exclamation});
  }
  return done && crosses;
}

void GravityForm::TellDoubts(const GravityFound& found) {
  TellIfNotNewtons(workbench_, fz_);
  if (found.quietDeviation > kRestlessPart * found.weight) {
    AddNotice(workbench_, "The force varies in the quiet interval by " +
                              FormatNumber(100 * found.quietDeviation / found.weight, "0.0") +
                              " % of the weight (standard deviation): nobody stands still there.");
  }
  if (found.jump && std::abs(found.quietForce - found.weight) > kWeightPart * found.weight) {
    AddNotice(workbench_, "The mass entered weighs " + FormatNumber(found.weight, "0.0") +
                              " N, the force in the quiet interval is " +
                              FormatNumber(found.quietForce, "0.0") + " N.");
  }
  TellIfOnThePlate(fx_, found.x);
  TellIfOnThePlate(fy_, found.y);
  if (found.jump && massFrom_ == kFromQuiet &&
      found.jump->start < static_cast<std::int64_t>(QuietSamples())) {
    AddNotice(workbench_, "The jump begins within the quiet interval, which the weight is taken from.");
  }
}

// What pushes a standing body back acts on it away from the centre of pressure: behind it the body falls
// forward. Forces that run with the pressure are those on the plate, or along an axis that points elsewhere.
void GravityForm::TellIfOnThePlate(int force, const std::optional<HorizontalMotion>& motion) {
  if (horizontal_ != HorizontalMethod::ZeroPoints || !motion) {
    return;
  }
  const double a = MeanOf(motion->motion.acceleration);
  const double p = MeanOf(motion->pressure);
  double together = 0.0;
  for (std::size_t i = 0; i < motion->pressure.size(); ++i) {
    together += (motion->motion.acceleration[i] - a) * (motion->pressure[i] - p);
  }
  if (together > 0) {
    AddNotice(workbench_, "Channel " + ChannelNumber(force) +
                              " runs with the centre of pressure and not against it: it may be the force on "
                              "the plate instead of the one on the body.  Negate it then.");
  }
}

void GravityForm::AddMotions(const GravityFound& found) {
  struct Added {
    NewChannel channel;
    const std::vector<double>* values;
  };
  std::vector<Added> added;
  const auto add = [&](const std::string& axis, const AxisMotion& motion, bool isPlace) {
    if (addAcceleration_) {
      added.push_back({{"COG a" + axis, "m/s^2"}, &motion.acceleration});
    }
    if (addVelocity_) {
      added.push_back({{"COG v" + axis, "m/s"}, &motion.velocity});
    }
    if (addDisplacement_) {
      added.push_back({{(isPlace ? "COG " : "COG d") + axis, "m"}, &motion.position});
    }
  };
  if (found.x) {
    add("x", found.x->motion, NeedsPressure());
  }
  if (found.y) {
    add("y", found.y->motion, NeedsPressure());
  }
  add("z", found.z, false);
  if (added.empty()) {
    Did(workbench_, WordsOf(found));
    return;
  }
  std::vector<NewChannel> channels;
  channels.reserve(added.size());
  for (const Added& one : added) {
    channels.push_back(one.channel);
  }
  std::vector<int> made(added.size());
  std::iota(made.begin(), made.end(), AppendChannels(workbench_, channels));
  for (std::size_t k = 0; k < added.size(); ++k) {
    const ChannelView channel = workbench_.trial.Channel(made[k]);
    for (std::size_t i = 0; i < added[k].values->size(); ++i) {
      channel[range_.lo - 1 + static_cast<std::int64_t>(i)] = static_cast<float>((*added[k].values)[i]);
    }
  }
  Did(workbench_, WordsOf(found), made);
}

bool GravityForm::Compute() {
  if (!HasChannels()) {
    return false;
  }
  GravityFound found{.range = range_,
                     .vertical = SamplesOf(workbench_.trial, fz_, range_),
                     .drift = static_cast<DriftRule>(driftChoice_),
                     .horizontal = horizontal_};
  if (!TakeWeight(found) || !IsLoaded(found) || !FindMotions(found)) {
    return false;
  }
  TellDoubts(found);
  results_ = GravityResults(workbench_, found,
                            {.range = range_, .parameters = ParametersOf(workbench_.trial, *this)});
  AddMotions(found);
  return true;
}

void FindCentreOfGravity(Workbench& workbench) {
  constexpr int kFewestSamples = 5;
  if (const auto range = AskTimedRange(workbench, kFewestSamples)) {
    GravityForm form(workbench, *range);
    if (form.Ask()) {
      ShowPicturedResults(workbench, form.TakeResults());
    }
  }
}

}  // namespace velmora
