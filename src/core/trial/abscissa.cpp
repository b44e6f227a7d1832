#include "core/trial/abscissa.hpp"

#include <algorithm>
#include <cmath>

#include "core/trial/helpers.hpp"

namespace velmora {

double AbscissaStart(const Trial& trial) {
  const double first = trial.NData > 0 ? static_cast<double>(trial.Data(1, 0)) : 0.0;
  return std::isfinite(first) ? first : 0.0;
}

double AbscissaEnd(const Trial& trial) {
  return AbscissaStart(trial) + trial.Duration;
}

std::int32_t SampleOf(const Trial& trial, double x) {
  return std::clamp(TimeToSample(trial, x - AbscissaStart(trial)), 1, std::max(trial.NData, 1));
}

double PlaceOf(const Trial& trial, std::int32_t i) {
  return AbscissaStart(trial) + SampleToTime(trial, i);
}

}  // namespace velmora
