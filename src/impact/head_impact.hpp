#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/trial/helpers.hpp"
#include "dsp/filters/filter_section.hpp"
#include "impact/hic.hpp"

namespace velmora {

/// Standard gravity as the reduction divides by it. What scales metres per second squared on request is
/// another literal, 9.80667, and multiplies.
inline constexpr float kGravityConstant = 9.80665F;

/// Passes of the reduction's critically damped, zero-lag filter.
inline constexpr std::int16_t kHeadImpactPasses = 3;

struct HeadImpactSettings {
  float scaling = 1.0F;       // the samples times this are accelerations in g
  bool inSeconds = false;     // the abscissa; else milliseconds
  float cutoff = 1000.0F;     // Hz, critically damped, 3 passes, zero-lag; 0: no filter
  double hicSpan = 36.0;      // ms
  double headformMass = 0.0;  // kg; 0: no Newman index
  bool zeroNegatives = false;
};

/// The measures of one impact. Totals and levels are 32-bit, rounded at each step; what is formed of them is
/// 64-bit. With `negatives` or `missing` above 0 nothing was reduced and all measures are 0.
struct HeadImpact {
  std::int64_t samples = 0;
  std::int64_t negatives = 0;  // samples below 0 that were left as they are
  std::int64_t missing = 0;    // samples that are no numbers
  FilterVerdict filter;        // a cut-off that was refused leaves the samples unfiltered

  std::vector<float> acceleration;  // scaled and filtered, in g
  std::vector<float> unfiltered;    // the same before the filter; empty without one
  std::vector<float> time;          // of the trial's abscissa, in ms or s

  double duration = 0.0;    // last time less first
  double integral = 0.0;    // m/s: sum of a / g, times the sample interval
  double average = 0.0;     // g
  float peak = 0.0F;        // g
  float timeOfPeak = 0.0F;  // on the trial's abscissa
  double onsetRate = 0.0;   // peak / timeOfPeak; 0 at time 0
  double peakMetric = 0.0;  // m/s^2
  float delta = 0.0F;       // sum of a / g * interval
  double gsi = 0.0;         // Gadd Severity Index (Gadd 1966, SAE 660793): integral of a^2.5
  double nsi = 0.0;         // Newman Severity Index: mass * delta * peak / g
  Hic hic;
  std::int64_t hicWindow = 0;  // samples
  float a3Level = 0.0F;        // g: reached for 3 ms
  std::int64_t a3Sample = 0;   // of the range, from 1; 0: never
};

/// Limits above which (or from which on) an impact is flagged.
inline constexpr double kGsiLimit = 1200.0;
inline constexpr double kHicLimit = 1000.0;

/// Reduces samples lo to hi (from 1, within the trial) of one channel; the trial stays as it is.
/// Throws std::out_of_range for a channel or range outside it.
HeadImpact ReduceHeadImpact(Trial& trial, int channel, SampleRange range, const HeadImpactSettings& settings);

}  // namespace velmora
