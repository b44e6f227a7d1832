#pragma once

#include <complex>
#include <variant>
#include <vector>

#include "dsp/design/cfc.hpp"
#include "dsp/design/direct_filter.hpp"
#include "dsp/design/savitzky_golay.hpp"
#include "dsp/design/section_runs.hpp"
#include "dsp/design/tap_runs.hpp"

namespace velmora {

/// A filter as it will be run, looked at and told before it is. The impact classes and the polynomial
/// smoothing are without lag whatever the direction says.
struct PlannedFilter {
  std::variant<Biquads, TapFilter, SavitzkyGolay, CfcSection, DirectFilter> kind;
  RunDirection direction = RunDirection::ZeroLag;
  double rate = 0.0;  // Hz

  [[nodiscard]] bool IsWithoutLag() const;
  /// The fewest samples that it can run over.
  [[nodiscard]] std::int64_t FewestSamples() const;
};

/// Runs it over whole channels of at least FewestSamples() samples, in place.
void RunPlanned(Trial& trial, const ChannelList& channels, const PlannedFilter& filter,
                SimdLevel level = MachineSimdLevel(), const Turn& turn = {});

/// What all runs together do at a frequency in Hz.
std::complex<double> PlannedResponse(const PlannedFilter& filter, double frequency);

struct PlannedPoint {
  double frequency = 0.0;  // Hz
  double gain = 0.0;
  double phase = 0.0;  // degrees, below 0 for a lag; without jumps of a whole turn
  double delay = 0.0;  // seconds, of the envelope of a narrow band
};

/// Frequencies ascending, the first 0.
std::vector<PlannedPoint> PlannedResponses(const PlannedFilter& filter,
                                           const std::vector<double>& frequencies);

/// The answers to a single sample of 1 and to a step from 0 to 1, until they have settled.
struct PlannedAnswers {
  std::vector<double> time;  // seconds from the sample or step; a filter without lag answers before it
  std::vector<double> impulse;
  std::vector<double> step;
};
PlannedAnswers AnswersOf(const PlannedFilter& filter);

}  // namespace velmora
