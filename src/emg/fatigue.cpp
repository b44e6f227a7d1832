#include "emg/fatigue.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

double Percent(double value, double first) {
  return first != 0 ? 100.0 * value / first : 0.0;
}

}  // namespace

std::int64_t FatigueIntervals::Count() const {
  const std::int64_t room = std::int64_t{last} - first - span - refractory;
  if (span < 0 || refractory < 0 || room < 0) {
    return 0;
  }
  const std::int64_t onward = step + refractory;
  return onward > 0 ? room / onward + 1 : kMostIntervals + 1;
}

Epoch FatigueIntervals::At(std::int64_t k, int channel) const {
  const std::int64_t begin = first + k * (step + refractory);
  return {.channel = channel,
          .first = static_cast<std::int32_t>(begin),
          .last = static_cast<std::int32_t>(begin + span)};
}

double FatigueIntervals::Overlap() const {
  const auto samples = static_cast<double>(span + 1);
  return samples > 0 ? 100.0 * (samples - static_cast<double>(step + refractory)) / samples : 0.0;
}

FatigueIntervals IntervalsOf(const Trial& trial, const FatigueSettings& settings) {
  FatigueIntervals intervals{.first = trial.CursorLo, .last = trial.CursorHi};
  const double divisor = settings.divisor;
  if (settings.method == FatigueMethod::HarmonicRegression) {
    intervals.span = std::int64_t{TimeToSample(trial, settings.interval)} - 1;
    intervals.step = RoundHalfEven(static_cast<double>(intervals.span) / divisor);
  } else {
    intervals.span = settings.data - 1;
    intervals.step = RoundHalfEven(settings.data / divisor - 1);
  }
  intervals.refractory = std::int64_t{TimeToSample(trial, settings.refractory)} - 1;
  return intervals;
}

std::int32_t AllHarmonics(const FatigueIntervals& intervals) {
  return RoundHalfEven32(static_cast<double>(intervals.span) / 2);
}

FatigueRow TakeFatigueRow(const Trial& trial, const Epoch& epoch, const FourFrequencies& frequencies) {
  double sum = 0.0;
  double squares = 0.0;
  const float* at = trial.matrix.Frame(epoch.first) + epoch.channel;
  for (std::int32_t i = epoch.first; i <= epoch.last; ++i, at += trial.matrix.Stride()) {
    const double x = *at;
    sum += std::fabs(x);
    squares += x * x;
  }
  const double n = epoch.Samples();
  return {.from = SampleToTime(trial, epoch.first),
          .to = SampleToTime(trial, epoch.last),
          .median = frequencies.median,
          .mean = frequencies.mean,
          .absoluteMean = sum / n,
          .rms = std::sqrt(squares / n),
          .absoluteIntegral = sum * (1.0 / trial.Rate)};
}

void SetPercentages(FatigueRow& row, double firstMedian, double firstMean) {
  row.percentMedian = Percent(row.median, firstMedian);
  row.percentMean = Percent(row.mean, firstMean);
}

}  // namespace velmora
