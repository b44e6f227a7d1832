#include "graph/sample_times.hpp"

#include <algorithm>
#include <cmath>

namespace velmora {

void SampleTimes::Take(const Trial& trial) {
  matrix_ = &trial.matrix;
  samples_ = trial.matrix.Samples();
  rate_ = trial.Rate;
  uniform_ = rate_ > 0;
  sorted_ = true;
  float last = samples_ > 0 ? *matrix_->Frame(1) : 0.0F;
  for (std::int64_t i = 1; i <= samples_ && sorted_; ++i) {
    const float time = *matrix_->Frame(i);
    uniform_ = uniform_ && time == static_cast<float>(static_cast<double>(i - 1) / rate_);
    sorted_ = time >= last && std::isfinite(time);
    last = time;
  }
  uniform_ = uniform_ && sorted_;
}

// Exact but for a sample or so while the times are evenly spaced.
std::int64_t SampleTimes::Guess(double time) const {
  const double first = At(1);
  const double last = At(samples_);
  if (!(last > first)) {
    return 1;
  }
  const double part = (time - first) / (last - first);
  return std::clamp<std::int64_t>(1 + std::llround(part * static_cast<double>(samples_ - 1)), 1, samples_);
}

// From the guess in steps that double until the answer lies between, then halving.
std::int64_t SampleTimes::FirstFrom(double time) const {
  if (samples_ == 0 || time <= At(1)) {
    return 1;
  }
  if (!(time <= At(samples_))) {
    return samples_ + 1;
  }
  std::int64_t before = Guess(time);  // At(before) < time <= At(from) in the end
  std::int64_t from = before;
  for (std::int64_t step = 1; At(from) < time; step *= 2) {
    before = from;
    from = std::min(from + step, samples_);
  }
  for (std::int64_t step = 1; At(before) >= time; step *= 2) {
    from = before;
    before = std::max<std::int64_t>(before - step, 1);
  }
  while (from - before > 1) {
    const std::int64_t middle = before + (from - before) / 2;
    (At(middle) < time ? before : from) = middle;
  }
  return from;
}

}  // namespace velmora
