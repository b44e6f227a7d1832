#include "impact/head_impact.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/trial/helpers.hpp"
#include "dsp/filters/recursive_filter.hpp"

namespace velmora {
namespace {

// A level counts for the A-3 once the acceleration was above the one before it for this long, in seconds.
constexpr float kA3Duration = 0.003F;
constexpr std::int32_t kFilterPadding = -100;
constexpr double kMillisecondsPerSecond = 1000.0;

// The samples of the range in g, how many of them are below 0, and how many no numbers.
void TakeSamples(ChannelView samples, SampleRange range, const HeadImpactSettings& settings,
                 HeadImpact& impact) {
  std::vector<float>& a = impact.acceleration;
  const double scaling = settings.scaling;
  const float floor = settings.zeroNegatives ? 0.0F : -std::numeric_limits<float>::infinity();
  a.resize(static_cast<std::size_t>(std::int64_t{range.hi} - range.lo + 1));
  std::int64_t i = range.lo - 1;
  for (float& x : a) {
    x = static_cast<float>(scaling * samples[i++]);
    x = x < floor ? floor : x;
    impact.negatives += x < 0.0F ? 1 : 0;
    impact.missing += std::isfinite(x) ? 0 : 1;
  }
}

void TakeTimes(ChannelView times, SampleRange range, double scale, std::vector<float>& t) {
  t.resize(static_cast<std::size_t>(std::int64_t{range.hi} - range.lo + 1));
  std::int64_t i = range.lo - 1;
  for (float& x : t) {
    x = static_cast<float>(times[i++] * scale);
  }
}

FilterVerdict Filter(std::span<float> a, double rate, float cutoff) {
  return LowPassArray(a, rate,
                      {.Cutoff = cutoff,
                       .Passes = kHeadImpactPasses,
                       .Padding = kFilterPadding,
                       .IsZeroLag = true,
                       .IsCritical = true});
}

// A sample not above the level ends the run; one that raises the level does not.
void FindA3(double timeStep, HeadImpact& impact) {
  double run = 0.0;
  for (std::size_t i = 0; i < impact.acceleration.size(); ++i) {
    const float a = impact.acceleration[i];
    if (!(a > impact.a3Level)) {
      run = 0.0;
      continue;
    }
    run += timeStep;
    if (run >= kA3Duration) {
      impact.a3Level = a;
      impact.a3Sample = static_cast<std::int64_t>(i) + 1;
    }
  }
}

// sum + a^2.5 as the C library's power gives it. The product below is within 4 units of that power's last
// place, and both the addition and the rounding to 32 bits keep the order of numbers: where its ends round to
// one sum, so does the power.
float AddPower(float sum, double a) {
  const double about = a * a * std::sqrt(a);
  const double room = about * 0x1p-50;
  const auto low = static_cast<float>(sum + (about - room));
  const auto high = static_cast<float>(sum + (about + room));
  return low == high ? low : static_cast<float>(sum + std::pow(a, 2.5));
}

void AddUp(double timeStep, double mass, HeadImpact& impact) {
  float sum = 0.0F;
  float sumOfPowers = 0.0F;
  for (std::size_t i = 0; i < impact.acceleration.size(); ++i) {
    const float a = impact.acceleration[i];
    sum += a;
    if (a > impact.peak) {
      impact.peak = a;
      impact.timeOfPeak = impact.time[i];
    }
    impact.delta = static_cast<float>(impact.delta + static_cast<double>(a) / kGravityConstant * timeStep);
    if (!(a < 0.0F)) {  // the filter may swing below 0, where there is no such power
      sumOfPowers = AddPower(sumOfPowers, a);
    }
  }
  const auto count = static_cast<double>(impact.samples);
  impact.integral = static_cast<double>(sum) / kGravityConstant * timeStep;
  impact.average = sum / count;
  impact.onsetRate = impact.timeOfPeak == 0.0F ? 0.0 : static_cast<double>(impact.peak) / impact.timeOfPeak;
  impact.peakMetric = static_cast<double>(kGravityConstant) * impact.peak;
  impact.gsi = sumOfPowers * timeStep;
  impact.nsi = mass > 0 ? mass * impact.delta * impact.peak / kGravityConstant : 0.0;
}

}  // namespace

HeadImpact ReduceHeadImpact(Trial& trial, int channel, SampleRange range,
                            const HeadImpactSettings& settings) {
  HeadImpact impact;
  impact.samples = static_cast<std::int64_t>(range.hi) - range.lo + 1;
  const double timeStep = 1.0 / trial.Rate;
  TakeTimes(trial.Channel(0), range, settings.inSeconds ? 1.0 : kMillisecondsPerSecond, impact.time);
  TakeSamples(trial.Channel(channel), range, settings, impact);
  if (impact.negatives > 0 || impact.missing > 0 || impact.acceleration.empty()) {
    return impact;
  }
  if (settings.cutoff > 0.0F) {
    impact.unfiltered = impact.acceleration;
    impact.filter = Filter(impact.acceleration, trial.Rate, settings.cutoff);
  }
  impact.duration = static_cast<double>(impact.time.back()) - impact.time.front();
  FindA3(timeStep, impact);
  AddUp(timeStep, settings.headformMass, impact);
  impact.hicWindow = std::min(HicWindow(settings.hicSpan, trial.Rate), impact.samples);
  impact.hic = FindHic(impact.acceleration, impact.hicWindow, timeStep);
  return impact;
}

}  // namespace velmora
