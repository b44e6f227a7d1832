#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/questions/result_table.hpp"
#include "core/workbench.hpp"
#include "emg/fatigue.hpp"

namespace velmora {

/// The frequency that halves the power between the lines of a spectrum: f0 (k - 1 + (half - cumulated(k-1)) /
/// power(k)), k the first harmonic whose cumulated power reaches half. `power` by harmonic from subscript 1.
/// NaN without power.
double ExactMedianFrequency(std::span<const double> power, double fundamental);

/// How a quantity changes over time: a line by least squares, and a slope that outliers do not turn.
struct TimeSlope {
  double initial = 0.0;         // of the line, at time 0
  double slope = 0.0;           // a second
  std::optional<double> low{};  // of 95 %, by Student's distribution; from three values on
  std::optional<double> high{};
  std::optional<double> r2{};  // nothing for a constant
  double theilSen = 0.0;       // a second: the median of the slopes of all pairs (Sen 1968)
  std::size_t n = 0;           // values that are numbers
};

/// Nothing below two values at different times.
std::optional<TimeSlope> SlopeOver(std::span<const double> time, std::span<const double> value);

/// The slopes of one analysis; times from the start of the first interval. (De Luca's index is the
/// percentage.) Intervals without a spectrum have no frequency.
struct FatigueSlope {
  std::string name;
  std::optional<TimeSlope> slope;
};
std::vector<FatigueSlope> FatigueSlopes(std::span<const FatigueRow> rows);

/// The middle of an interval, in seconds from the start of the first.
double MiddleOf(const FatigueRow& row, const FatigueRow& first);

/// "frmFatigueSlope".
ResultTable FatigueSlopeTable(const Workbench& workbench, std::span<const FatigueRow> rows);

}  // namespace velmora
