#include "impact/accelerometry/accelerometry.hpp"

#include <algorithm>
#include <cmath>
#include <deque>
#include <functional>

#include "core/text/numbers.hpp"
#include "dsp/math/mean_deviation.hpp"
#include "impact/acceleration_units.hpp"
#include "impact/phases/work_phases.hpp"

namespace velmora {
namespace {

using Signal = std::span<const double>;

constexpr double kToDegrees = 180 / Pi;

MeasureAt LargestMagnitude(Signal x) {
  const auto at =
      std::max_element(x.begin(), x.end(), [](double a, double b) { return std::abs(a) < std::abs(b); });
  return {.value = *at, .first = at - x.begin(), .last = at - x.begin()};
}

/// The window of so many samples whose smallest value is the largest; the first of equal ones.
std::optional<MeasureAt> HighestWindow(Signal r, std::int64_t window) {
  const auto samples = static_cast<std::int64_t>(r.size());
  const auto value = [r](std::int64_t i) { return r[static_cast<std::size_t>(i)]; };
  std::optional<MeasureAt> highest;
  std::deque<std::int64_t> rising;  // candidates for the smallest value of this window and the next ones
  for (std::int64_t i = 0; i < samples; ++i) {
    while (!rising.empty() && value(rising.back()) >= value(i)) {
      rising.pop_back();
    }
    rising.push_back(i);
    if (rising.front() <= i - window) {
      rising.pop_front();
    }
    if (i + 1 >= window && (!highest || value(rising.front()) > highest->value)) {
      highest = {.value = value(rising.front()), .first = i + 1 - window, .last = i};
    }
  }
  return highest;
}

std::optional<double> NthLargest(Signal r, std::int64_t n) {
  if (static_cast<std::int64_t>(r.size()) < n) {
    return std::nullopt;
  }
  std::vector<double> sorted(r.begin(), r.end());
  const auto nth = sorted.begin() + (n - 1);
  std::nth_element(sorted.begin(), nth, sorted.end(), std::greater<>());
  return *nth;
}

void MeasureResultant(Signal r, double timeStep, Accelerometry& found) {
  double squares = 0.0;
  double above = 0.0;
  double severity = 0.0;
  for (const double a : r) {
    squares += a * a;
    above += std::max(a - 1, 0.0);
    severity += a * a * std::sqrt(a);
  }
  const auto count = static_cast<double>(r.size());
  found.rms = std::sqrt(squares / count);
  found.mean = MeanOf(r);
  found.aboveGravity = above / count;
  found.gsi = severity * timeStep;
}

// A product that is a whole number but for its rounding counts as one.
double Settled(double product) {
  const double whole = std::round(product);
  return std::abs(product - whole) < 1e-9 * std::max(1.0, whole) ? whole : product;
}

}  // namespace

double Accelerations::Roll(std::size_t i) const {
  return std::atan2(axes[1][i] + bias[1], axes[2][i] + bias[2]) * kToDegrees;
}

double Accelerations::Pitch(std::size_t i) const {
  return std::atan2(-(axes[0][i] + bias[0]), std::hypot(axes[1][i] + bias[1], axes[2][i] + bias[2])) *
         kToDegrees;
}

Accelerations ReadAccelerations(const Trial& trial, SampleRange range, const AccelerometryRule& rule) {
  Accelerations found;
  for (std::size_t k = 0; k < found.axes.size(); ++k) {
    std::vector<double>& axis = found.axes[k];
    axis = SamplesOf(trial, rule.channels[k], {1, trial.NData});
    if (rule.metric) {
      std::transform(axis.begin(), axis.end(), axis.begin(), [](double x) { return x / kStandardGravity; });
    }
    if (rule.biasSamples > 0) {
      const double bias = MeanOf(Signal(axis).subspan(static_cast<std::size_t>(range.lo - 1),
                                                      static_cast<std::size_t>(rule.biasSamples)));
      std::transform(axis.begin(), axis.end(), axis.begin(), [bias](double x) { return x - bias; });
      found.bias[k] = bias;
    }
    if (rule.filter) {
      RunCfc(axis, *rule.filter);
    }
  }
  const auto& [x, y, z] = found.axes;
  found.resultant.resize(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) {
    found.resultant[i] = std::sqrt(x[i] * x[i] + y[i] * y[i] + z[i] * z[i]);
  }
  return found;
}

Accelerometry MeasureAccelerations(const Accelerations& accelerations, SampleRange range, double rate,
                                   const std::array<double, 2>& hicLimits, const Turn& turn) {
  const auto within = [range](const std::vector<double>& all) {
    return Signal(all).subspan(static_cast<std::size_t>(range.lo - 1),
                               static_cast<std::size_t>(std::int64_t{range.hi} - range.lo + 1));
  };
  const double timeStep = 1.0 / rate;
  const Signal r = within(accelerations.resultant);
  Accelerometry found;
  std::array<double, 3> atPeak{};
  found.peakResultant = LargestMagnitude(r);
  double squares = 0.0;
  for (std::size_t k = 0; k < 3; ++k) {
    const Signal x = within(accelerations.axes[k]);
    found.peaks[k] = LargestMagnitude(x);
    atPeak[k] = x[static_cast<std::size_t>(found.peakResultant.first)];
    found.velocityChange[k] = RunningIntegral(x, timeStep).back() * kStandardGravity;
    squares += found.velocityChange[k] * found.velocityChange[k];
    Give(turn);
  }
  found.resultantChange = std::sqrt(squares);
  found.azimuth = std::atan2(atPeak[1], atPeak[0]) * kToDegrees;
  found.elevation = std::atan2(atPeak[2], std::hypot(atPeak[0], atPeak[1])) * kToDegrees;
  MeasureResultant(r, timeStep, found);
  found.contiguous = HighestWindow(r, SamplesOfThreeMilliseconds(rate) + 1);
  found.cumulative = NthLargest(r, SamplesOfThreeMilliseconds(rate));
  for (std::size_t k = 0; k < 2; ++k) {
    if (const std::int64_t longest = IntervalsWithin(hicLimits[k], rate); longest > 0) {
      found.hic[k] = FindHicOverPairs(r, longest, timeStep, MachineSimdLevel(), turn);
    }
  }
  return found;
}

std::int64_t IntervalsWithin(double milliseconds, double rate) {
  return static_cast<std::int64_t>(Settled(milliseconds * rate / 1000));
}

std::int64_t SamplesOfThreeMilliseconds(double rate) {
  return std::max<std::int64_t>(1, static_cast<std::int64_t>(std::ceil(Settled(0.003 * rate))));
}

}  // namespace velmora
