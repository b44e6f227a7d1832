#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/trial/helpers.hpp"
#include "dsp/design/cfc.hpp"
#include "impact/accelerometry/hic_over_pairs.hpp"

namespace velmora {

/// How three channels become accelerations in g.
struct AccelerometryRule {
  std::array<int, 3> channels = {1, 2, 3};
  bool metric = false;           // they are in m/s^2, else in g
  std::int64_t biasSamples = 0;  // of the range, from its first on, whose mean is taken off each
  std::optional<CfcSection> filter{};
};

/// Three axes and their resultant in g, in 64 bits, over the whole trial.
struct Accelerations {
  std::array<std::vector<double>, 3> axes;
  std::array<double, 3> bias{};  // that was taken off
  std::vector<double> resultant;

  /// Atan2(y, z) and atan2(-x, sqrt(y^2 + z^2)) in degrees of a sample from 0: how the sensor lies while
  /// gravity alone acts. What was taken off as bias is gravity, too, and put back.
  [[nodiscard]] double Roll(std::size_t i) const;
  [[nodiscard]] double Pitch(std::size_t i) const;
};

/// The channels as they are read, then the bias off, then the filter.
Accelerations ReadAccelerations(const Trial& trial, SampleRange range, const AccelerometryRule& rule);

/// A value, and the samples from 0 of the range that it is of.
struct MeasureAt {
  double value = 0.0;
  std::int64_t first = 0;
  std::int64_t last = 0;
};

/// Of one impact; everything in g and of the range.
struct Accelerometry {
  std::array<MeasureAt, 3> peaks;  // with their signs
  MeasureAt peakResultant;
  double azimuth = 0.0;    // degrees: atan2(y, x) at the peak of the resultant
  double elevation = 0.0;  // degrees: atan2(z, sqrt(x^2 + y^2)) there
  double rms = 0.0;        // of the resultant
  double mean = 0.0;
  /// The largest level that is held for 3 ms without a break, or for 3 ms in all; none in a shorter range.
  std::optional<MeasureAt> contiguous;
  std::optional<double> cumulative;
  double gsi = 0.0;                                // (Gadd 1966, SAE 660793)
  std::array<std::optional<HicOverPairs>, 2> hic;  // none where the limit is below the sample interval
  std::array<double, 3> velocityChange{};          // m/s, by trapezoids
  double resultantChange = 0.0;                    // of the three as a vector
  double aboveGravity = 0.0;                       // mean of r - 1 where r is larger (van Hees 2013: ENMO)
};

/// `hicLimits` in ms. (SAE J885; FMVSS 208 and ISO/TS 6487 for 3 ms and HIC.) The range holds two samples or
/// more.
Accelerometry MeasureAccelerations(const Accelerations& accelerations, SampleRange range, double rate,
                                   const std::array<double, 2>& hicLimits, const Turn& turn = {});

/// The most sample intervals within a limit in ms, and the fewest samples that last 3 ms.
std::int64_t IntervalsWithin(double milliseconds, double rate);
std::int64_t SamplesOfThreeMilliseconds(double rate);

}  // namespace velmora
