#include "core/trial/abscissa.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"

namespace velmora {

double AbscissaStart(const Trial& trial) {
  const double first = trial.NData > 0 ? static_cast<double>(trial.Data(1, 0)) : 0.0;
  return std::isfinite(first) ? first : 0.0;
}

double SamplesPerUnit(const Trial& trial) {
  constexpr double kOfTheSame = 1.25;  // samples; the duration of a trial without a rate is one too long
  const double intervals = trial.NData - 1.0;
  if (!(trial.Rate > 0 && trial.Duration > 0 && intervals > 0) ||
      std::abs(trial.Rate * trial.Duration - intervals) <= kOfTheSame) {
    return trial.Rate;
  }
  constexpr double kNearly = 1e-3;
  const double span = static_cast<double>(trial.Data(trial.NData, 0)) - static_cast<double>(trial.Data(1, 0));
  return std::abs(span - trial.Duration) <= kNearly * trial.Duration ? intervals / trial.Duration
                                                                     : trial.Rate;
}

double AbscissaEnd(const Trial& trial) {
  return AbscissaStart(trial) + trial.Duration;
}

std::int32_t SampleOf(const Trial& trial, double x) {
  const double rate = SamplesPerUnit(trial);
  const std::int32_t sample = rate > 0 ? RoundHalfEven32(rate * (x - AbscissaStart(trial)) + 1) : 0;
  return std::clamp(sample, 1, std::max(trial.NData, 1));
}

double PlaceOf(const Trial& trial, std::int32_t i) {
  const double rate = SamplesPerUnit(trial);
  return AbscissaStart(trial) + (rate > 0 ? (static_cast<double>(i) - 1) / rate : 0.0);
}

}  // namespace velmora
