#include "impact/phases/moment_power.hpp"

#include <cmath>
#include <stdexcept>
#include <string>

#include "core/text/numbers.hpp"
#include "dsp/math/channel_math.hpp"

namespace velmora {
namespace {

// The command of the derivative, on a trial of this channel alone.
Trial DerivativeOf(const Trial& trial, int channel) {
  Trial copy;
  copy.AllocateData(1, trial.NData);
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    copy.Data(i, 1) = trial.Data(i, channel);
  }
  Differentiate(copy, {1}, 1.0 / trial.Rate);
  return copy;
}

}  // namespace

std::vector<float> MomentPower(const Trial& trial, const MomentPowerRule& rule) {
  const Trial derivative = rule.isAngle ? DerivativeOf(trial, rule.motion) : Trial();
  const double toRadians = rule.inDegrees ? Pi / 180 : 1.0;
  std::vector<float> power;
  power.reserve(static_cast<std::size_t>(trial.NData));
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    const double moment = trial.Data(i, rule.moment);
    const double velocity = rule.isAngle ? derivative.Data(i, 1) : trial.Data(i, rule.motion);
    const auto product = static_cast<float>(moment * (velocity * toRadians));
    if (!std::isfinite(product) && std::isfinite(moment) && std::isfinite(velocity)) {
      throw std::range_error("The power at sample " + std::to_string(i) +
                             " is not a number that data can hold.");
    }
    power.push_back(product);
  }
  return power;
}

}  // namespace velmora
