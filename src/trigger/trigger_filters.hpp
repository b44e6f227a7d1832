#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/trial/sample_matrix.hpp"

namespace velmora {

/// A moment at which the condition was met.
struct Trigger {
  std::int32_t sample = 0;  // from 1
  double value = 0.0;       // of the channel there
  double integral = 0.0;    // sum of the samples from the trigger before up to this one; 0 for the first

  friend bool operator==(const Trigger&, const Trigger&) = default;
};

/// Values and sums at these samples (ascending) of a channel. Sums run in 64 bits from sample to sample.
std::vector<Trigger> MeasureTriggers(const SampleMatrix& matrix, int channel,
                                     std::span<const std::int32_t> samples);

struct TriggerFilters {
  double MinIntegral = 0.0;       // of |integral|/rate, units of the channel times seconds; never negative
  double RefractoryPeriod = 0.0;  // seconds; 0: none
  bool PositiveOnly = false;      // integrals of this sign alone
  bool NegativeOnly = false;
};

/// Takes out the triggers that the filters refuse; the first always stays. The integrals go first; the
/// refractory period then compares each trigger with the one before it in that list, not with the last one
/// that stays: of a train of close triggers only its first member is left. The integral of one that stays is
/// that since the trigger that stood before it in the scan.
void FilterTriggers(std::vector<Trigger>& triggers, const TriggerFilters& filters, double rate);

}  // namespace velmora
