#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/trial/helpers.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// Windows of `width` samples, each `overlap` percent over the one before, while they are whole. The step is
/// width (1 - overlap/100), rounded, at least 1.
std::vector<SampleRange> WindowsOfWidth(SampleRange range, std::int32_t width, double overlap);

/// `count` windows side by side that cover the range: window k begins at lo + round((k-1) n/count). At most
/// as many as there are samples.
std::vector<SampleRange> EqualWindows(SampleRange range, std::int32_t count);

/// From each sample to the one before the next; sorted, doubles dropped.
std::vector<SampleRange> WindowsBetween(std::vector<std::int32_t> samples);

/// Of the samples of one window that are numbers. Sums over time are none where one is missing, or without a
/// `timeStep`.
struct WindowStatistics {
  std::int64_t count = 0;  // 0: the rest says nothing
  double mean = 0.0;
  std::optional<double> deviation{};  // with n-1
  double minimum = 0.0;
  double maximum = 0.0;
  double rms = 0.0;
  double meanAbsolute = 0.0;
  double median = 0.0;
  std::optional<double> integral{};          // sum of x, times the time step
  std::optional<double> absoluteIntegral{};  // sum of |x|, times the time step
  std::optional<double> slope{};             // S(t, x) / S(t, t), t the abscissa
};

/// `samples` and `times` are those of the window; `timeStep` in seconds.
WindowStatistics StatisticsOfWindow(std::span<const float> samples, std::span<const float> times,
                                    std::optional<double> timeStep);

}  // namespace velmora
