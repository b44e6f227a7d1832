#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/trial/trial.hpp"

namespace velmora {

/// What a table of a study tells of a channel.
enum class Statistic {
  Minimum,
  Maximum,
  Range,
  Mean,
  Rms,
  Sd,
  First,
  Last,
  TimeOfMinimum,
  TimeOfMaximum,
  Count
};

/// The names that recipes call them by, in their order: "minimum", "time-of-maximum".
const std::vector<std::string>& StatisticNames();

/// Without regard to case; nothing for a name that is none.
std::optional<Statistic> StatisticNamed(std::string_view name);

/// Of channel 1..NChan over the samples from CursorLo to CursorHi, all of them without cursors, in 64-bit
/// arithmetic from the first sample to the last. `sd` has the divisor n - 1 and takes two passes; times are
/// those of the abscissa, of the first sample that is the extreme. Samples keep their shortest text as 32-bit
/// numbers. Throws std::invalid_argument where there is no such value: a sample that it takes is not finite,
/// the sd of a single sample.
std::string StatisticText(Trial& trial, int channel, Statistic statistic);

}  // namespace velmora
