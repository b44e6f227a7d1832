#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "events/contacts.hpp"

namespace velmora {

/// What an impact is, and which of its values is the peak.
struct StrikeRule {
  ContactRule contact;
  /// The peak is the first local maximum so many samples behind the onset at most, where there is one (the
  /// impact peak of a step, in front of the larger one of push-off); nothing: it is the largest value.
  std::optional<std::int64_t> firstMaximumWithin{};
};

/// An impact and how it rises. Samples count from 0; rates are units of the signal a second.
struct Strike {
  Contact contact;
  std::int64_t peak = 0;
  double peakValue = 0.0;
  // 20 and 80 % of the samples from onset to peak, between which the rates are taken. (Milner 2006; Williams
  // 2000)
  std::int64_t riseFrom = 0;
  std::int64_t riseTo = 0;
  std::optional<double> averageRate;  // of the straight line between them; nothing where they are one sample
  std::optional<double> largestRate;  // between neighbouring samples
  double impulse = 0.0;               // by trapezoids from the first sample to the last
  double mean = 0.0;
};

/// The impacts of a signal that rises with them; `timeStep` in seconds.
std::vector<Strike> FindStrikes(std::span<const double> x, const StrikeRule& rule, double timeStep);

}  // namespace velmora
