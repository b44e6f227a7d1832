#include "dsp/time_base/shannon_resample.hpp"

#include <cmath>
#include <cstddef>
#include <utility>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

// Ideal low-pass at half the sampling rate, u seconds from its centre.
double Weight(double u, double step, double angularCutoff) {
  return std::abs(u) <= 1e-7 ? 1.0 / step : std::sin(angularCutoff * u) / (Pi * u);
}

// One new sample of all channels. A weight is the same for every channel, so each is worked out once;
// every channel's own sum still runs over the old samples in ascending order.
void Reconstruct(const SampleMatrix& old, double t, double step, double angularCutoff, float* to) {
  const int channels = old.Channels();
  PerChannel<double> sums{};
  double* __restrict sum = sums.data();
  for (std::int64_t j = 1; j <= old.Samples(); ++j) {
    const double weight = Weight(t - static_cast<double>(j - 1) * step, step, angularCutoff);
    const float* x = old.Frame(j);
    for (int c = 1; c <= channels; ++c) {
      sum[c] = sum[c] + x[c] * weight;
    }
  }
  to[0] = static_cast<float>(t);
  for (int c = 1; c <= channels; ++c) {
    to[c] = static_cast<float>(sum[c] * step);
  }
}

}  // namespace

bool ShannonResample(Trial& trial, std::int64_t intervals, const std::function<bool(std::int64_t)>& goOn) {
  const double duration = (static_cast<double>(trial.NData) - 1) / trial.Rate;
  const double step = 1.0 / trial.Rate;
  const double angularCutoff = 2.0 * Pi * (1.0 / (2.0 * step));
  const double newStep = duration / static_cast<double>(intervals);
  SampleMatrix fresh;
  fresh.Allocate(trial.NChan, intervals + 1, SampleMatrix::Fill::None);
  for (std::int64_t i = 1; i <= intervals + 1; ++i) {
    Reconstruct(trial.matrix, static_cast<double>(i - 1) * newStep, step, angularCutoff, fresh.Frame(i));
    if (!goOn(i)) {
      return false;
    }
  }
  trial.matrix = std::move(fresh);
  trial.NData = static_cast<std::int32_t>(intervals + 1);
  trial.Duration = duration;
  trial.Rate = static_cast<double>(intervals) / duration;
  return true;
}

}  // namespace velmora
