#pragma once

#include <vector>

#include "dsp/filters/biquads.hpp"
#include "dsp/filters/filter_section.hpp"

namespace velmora {

/// A stable filter as it runs: its sections at a rate in Hz, forward or forward and backward.
struct RunningFilter {
  Biquads sections;
  double rate = 0.0;
  bool zeroLag = false;
};

/// A recursive section that runs `passes` times, at least once, as sections one after the other.
Biquads Repeated(const SectionOf<double>& section, PassType type, int passes);

struct FrequencyPoint {
  double frequency;  // Hz
  double gain;
  double phase;  // degrees, below 0 for a lag; without jumps of a whole turn
};

struct StepPoint {
  double time;  // seconds from the step; the answer of a zero-lag filter begins before it
  double value;
};

/// Frequencies in Hz at which a response shows its shape: 0, and from a hundredth of the lowest edge to
/// half the rate in equal ratios, the edges among them. `edges` lie above 0 and below rate/2.
std::vector<double> ResponseFrequencies(const std::vector<double>& edges, double rate);

std::vector<FrequencyPoint> FrequencyResponse(const RunningFilter& filter,
                                              const std::vector<double>& frequencies);

/// The answer to a step from 0 to 1, until it has settled, in at most about a thousand points.
std::vector<StepPoint> StepResponse(const RunningFilter& filter);

}  // namespace velmora
