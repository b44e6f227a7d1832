#include "statistics/window_statistics.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/text/numbers.hpp"
#include "statistics/order_statistics.hpp"

namespace velmora {
namespace {

std::optional<double> SlopeOf(std::span<const float> samples, std::span<const float> times, double mean) {
  double timeSum = 0.0;
  for (const float t : times) {
    timeSum += t;
  }
  const double timeMean = timeSum / static_cast<double>(times.size());
  double timeProducts = 0.0;
  double timeSquares = 0.0;
  for (std::size_t i = 0; i < times.size(); ++i) {
    const double dt = times[i] - timeMean;
    timeProducts += dt * (samples[i] - mean);
    timeSquares += dt * dt;
  }
  return timeSquares > 0 ? std::optional(timeProducts / timeSquares) : std::nullopt;
}

}  // namespace

std::vector<SampleRange> WindowsOfWidth(SampleRange range, std::int32_t width, double overlap) {
  std::vector<SampleRange> windows;
  const std::int64_t step = std::max<std::int64_t>(1, RoundHalfEven(width * (1 - overlap / 100)));
  for (std::int64_t lo = range.lo; lo + width - 1 <= range.hi; lo += step) {
    windows.push_back({static_cast<std::int32_t>(lo), static_cast<std::int32_t>(lo + width - 1)});
  }
  return windows;
}

std::vector<SampleRange> EqualWindows(SampleRange range, std::int32_t count) {
  std::vector<SampleRange> windows;
  const double samples = static_cast<double>(range.hi) - range.lo + 1;
  std::int32_t lo = range.lo;
  for (std::int32_t k = 1; k <= count; ++k) {
    const std::int32_t next = range.lo + RoundHalfEven32(k * samples / count);
    if (next > lo) {
      windows.push_back({lo, next - 1});
    }
    lo = next;
  }
  return windows;
}

std::vector<SampleRange> WindowsBetween(std::vector<std::int32_t> samples) {
  std::sort(samples.begin(), samples.end());
  samples.erase(std::unique(samples.begin(), samples.end()), samples.end());
  std::vector<SampleRange> windows;
  for (std::size_t k = 1; k < samples.size(); ++k) {
    windows.push_back({samples[k - 1], samples[k] - 1});
  }
  return windows;
}

WindowStatistics StatisticsOfWindow(std::span<const float> samples, std::span<const float> times,
                                    std::optional<double> timeStep) {
  std::vector<float> values;
  values.reserve(samples.size());
  std::copy_if(samples.begin(), samples.end(), std::back_inserter(values),
               [](float x) { return std::isfinite(x); });
  WindowStatistics of{.count = static_cast<std::int64_t>(values.size())};
  if (values.empty()) {
    return of;
  }
  double sum = 0.0;
  double absolute = 0.0;
  double squares = 0.0;
  for (const double x : values) {
    sum += x;
    absolute += std::fabs(x);
    squares += x * x;
  }
  const auto n = static_cast<double>(values.size());
  of.mean = sum / n;
  of.meanAbsolute = absolute / n;
  of.rms = std::sqrt(squares / n);
  double deviations = 0.0;
  double deviationSquares = 0.0;
  for (const double x : values) {
    const double d = x - of.mean;
    deviations += d;
    deviationSquares += d * d;
  }
  if (n > 1) {
    of.deviation = std::sqrt(std::max((deviationSquares - deviations * deviations / n) / (n - 1), 0.0));
  }
  if (values.size() == samples.size()) {
    of.slope = SlopeOf(samples, times, of.mean);
    if (timeStep) {
      of.integral = sum * *timeStep;
      of.absoluteIntegral = absolute * *timeStep;
    }
  }
  std::sort(values.begin(), values.end());
  of.minimum = values.front();
  of.maximum = values.back();
  of.median = PercentileOf(values, 0.5);
  return of;
}

}  // namespace velmora
