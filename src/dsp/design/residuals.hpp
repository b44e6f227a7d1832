#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/simd.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/filters/filter_section.hpp"
#include "dsp/turn.hpp"

namespace velmora {

/// Cut-offs from `from` to `to` Hz in `steps` equal steps, steps + 1 of them.
std::vector<float> ResidualCutoffs(double from, double to, std::int32_t steps);

/// The verdict of the low-pass filter at a cut-off, which must be accepted for ResidualCurve.
FilterVerdict VerdictOfResidualFilter(float cutoff, double rate);

/// How far a channel lies from itself filtered, by cut-off: the root mean square over `range` of what a
/// zero-lag second-order Butterworth low-pass takes away. The whole channel is filtered, padded by reflection
/// with a fifth of its samples. (Winter 2009, Biomechanics and Motor Control of Human Movement, chapter 3.)
///
/// The cut-offs are filtered side by side: the same bits as those of the plain form.
std::vector<double> ResidualCurve(Trial& trial, int channel, SampleRange range,
                                  std::span<const float> cutoffs, SimdLevel level = MachineSimdLevel(),
                                  const Turn& turn = {});
std::vector<double> ResidualCurvePlain(Trial& trial, int channel, SampleRange range,
                                       std::span<const float> cutoffs);

/// The straight part of a residual curve, which is noise alone, and the cut-off it leads to.
struct ResidualLine {
  std::size_t first = 0;         // index of the cut-off where it begins; it goes on to the last
  double atZero = 0.0;           // its value at 0 Hz: the residual that noise alone leaves
  double slope = 0.0;            // per Hz
  std::optional<double> cutoff;  // Hz, where the curve first comes down to that; none: it never does
};

/// The line by least squares from the first cut-off on at which it fits with r squared at or above
/// `linearity` (at least ten points), or from the first at or above `lineFrom` Hz when that is above 0.
/// Nothing when no part is straight.
std::optional<ResidualLine> FindResidualLine(std::span<const float> cutoffs, std::span<const double> curve,
                                             double linearity, double lineFrom);

}  // namespace velmora
