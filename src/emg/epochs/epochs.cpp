#include "emg/epochs/epochs.hpp"

#include <cmath>

namespace velmora {

std::vector<EpochIntegral> IntegrateEpochs(const Trial& trial, int channel, SampleRange range,
                                           std::int32_t width, double timeStep) {
  std::vector<EpochIntegral> epochs;
  for (std::int64_t first = range.lo; first + width - 1 <= range.hi; first += width) {
    double sum = 0.0;
    double magnitudes = 0.0;
    double squares = 0.0;
    const float* at = trial.matrix.Frame(first) + channel;
    for (std::int32_t k = 0; k < width; ++k, at += trial.matrix.Stride()) {
      const double x = *at;
      sum += x;
      magnitudes += std::abs(x);
      squares += x * x;
    }
    epochs.push_back({.first = static_cast<std::int32_t>(first),
                      .last = static_cast<std::int32_t>(first + width - 1),
                      .integral = sum * timeStep,
                      .absoluteIntegral = magnitudes * timeStep,
                      .mean = sum / width,
                      .absoluteMean = magnitudes / width,
                      .rms = std::sqrt(squares / width)});
  }
  return epochs;
}

std::vector<IntegratorReset> IntegrateAndReset(Trial& trial, int channel, const ResetRule& rule, bool rectify,
                                               double timeStep) {
  const ChannelView x = trial.Channel(channel);
  std::vector<IntegratorReset> resets;
  double sum = 0.0;
  std::int32_t since = 0;
  for (std::int64_t i = 0; i < x.size(); ++i) {
    const double value = x[i];
    sum += (rectify ? std::abs(value) : value) * timeStep;
    x[i] = static_cast<float>(sum);
    ++since;
    if (rule.atLevel ? sum >= rule.level : since == rule.width) {
      resets.push_back({.sample = static_cast<std::int32_t>(i + 1), .integral = sum, .samples = since});
      sum = 0.0;
      since = 0;
    }
  }
  return resets;
}

}  // namespace velmora
