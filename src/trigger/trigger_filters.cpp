#include "trigger/trigger_filters.hpp"

#include <cmath>

namespace velmora {
namespace {

bool HasSign(double integral, const TriggerFilters& filters) {
  if (filters.PositiveOnly || filters.NegativeOnly) {
    return integral != 0 && !(integral > 0 && filters.NegativeOnly) &&
           !(integral < 0 && filters.PositiveOnly);
  }
  return true;
}

// Keeps the first and those of the others for which `stays` holds, which gets each with the one before it.
template <typename Stays>
void KeepWhere(std::vector<Trigger>& triggers, const Stays& stays) {
  std::vector<Trigger> kept;
  for (std::size_t k = 0; k < triggers.size(); ++k) {
    if (k == 0 || stays(triggers[k], triggers[k - 1])) {
      kept.push_back(triggers[k]);
    }
  }
  triggers = std::move(kept);
}

}  // namespace

std::vector<Trigger> MeasureTriggers(const SampleMatrix& matrix, int channel,
                                     std::span<const std::int32_t> samples) {
  std::vector<Trigger> triggers;
  triggers.reserve(samples.size());
  for (const std::int32_t sample : samples) {
    Trigger trigger{.sample = sample, .value = matrix.At(sample, channel)};
    if (!triggers.empty()) {
      const float* at = matrix.Frame(triggers.back().sample) + channel;
      for (std::int32_t i = triggers.back().sample; i < sample; ++i, at += matrix.Stride()) {
        trigger.integral += *at;
      }
    }
    triggers.push_back(trigger);
  }
  return triggers;
}

void FilterTriggers(std::vector<Trigger>& triggers, const TriggerFilters& filters, double rate) {
  if (filters.MinIntegral > 0 || filters.PositiveOnly || filters.NegativeOnly) {
    KeepWhere(triggers, [&](const Trigger& trigger, const Trigger& /*before*/) {
      return HasSign(trigger.integral, filters) && std::fabs(trigger.integral) / rate >= filters.MinIntegral;
    });
  }
  if (filters.RefractoryPeriod > 0) {
    KeepWhere(triggers, [&](const Trigger& trigger, const Trigger& before) {
      return (trigger.sample - before.sample) / rate >= filters.RefractoryPeriod;
    });
  }
}

}  // namespace velmora
