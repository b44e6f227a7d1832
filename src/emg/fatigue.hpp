#pragma once

#include <cstdint>

#include "core/trial/trial.hpp"
#include "spectra/harmonic_regression.hpp"

namespace velmora {

enum class FatigueMethod : std::int32_t { HarmonicRegression, FastFourierTransform };  // as menus number them

inline constexpr std::int64_t kFewestIntervals = 2;
inline constexpr std::int64_t kMostIntervals = 2000;

struct FatigueSettings {
  FatigueMethod method = FatigueMethod::HarmonicRegression;
  double interval = 1.0;       // seconds, of the harmonic regression
  std::int32_t data = 1024;    // samples in an interval of the fast transform
  std::int32_t harmonics = 0;  // of the harmonic regression; 0: all that the interval has
  double refractory = 0.0;     // seconds
  std::int32_t divisor = 1;    // intervals that begin within the span of one: 1, 2 or 4
};

/// Successive intervals of a range of samples. Neighbours share a sample where nothing is interleaved and
/// there is no refractory interval: the one begins where the other ends.
struct FatigueIntervals {
  std::int32_t first = 1;  // of the range
  std::int32_t last = 1;
  std::int64_t span = 0;        // from an interval's first sample to its last; below 0: there is none
  std::int64_t step = 0;        // from one interval to the next, without the refractory one
  std::int64_t refractory = 0;  // samples

  /// How many there are. Intervals that do not move on count as one more than the most that are allowed.
  [[nodiscard]] std::int64_t Count() const;
  /// The k-th, from 0, of a channel.
  [[nodiscard]] Epoch At(std::int64_t k, int channel) const;
  /// How much of an interval lies in the next one, in percent; below 0: what lies between them.
  [[nodiscard]] double Overlap() const;
};

/// The intervals between the cursors.
FatigueIntervals IntervalsOf(const Trial& trial, const FatigueSettings& settings);

/// The harmonics of an interval when none were chosen: the most there can be.
std::int32_t AllHarmonics(const FatigueIntervals& intervals);

/// What an interval tells; times in seconds, frequencies in Hz.
struct FatigueRow {
  double from = 0.0;  // of its first sample
  double to = 0.0;
  double median = 0.0;
  double mean = 0.0;
  double percentMedian = 0.0;  // of the first interval; 0 where that is 0
  double percentMean = 0.0;
  double absoluteMean = 0.0;
  double rms = 0.0;
  double absoluteIntegral = 0.0;
  double exactMedian = 0.0;  // between the lines of the spectrum; NaN without power
};

/// The row of an interval whose spectrum has these frequencies, without its percentages. Sums are in double
/// precision.
FatigueRow TakeFatigueRow(const Trial& trial, const Epoch& epoch, const FourFrequencies& frequencies);

/// The percentages of a row, where the first interval has these frequencies.
void SetPercentages(FatigueRow& row, double firstMedian, double firstMean);

}  // namespace velmora
