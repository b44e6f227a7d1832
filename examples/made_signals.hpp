#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/trial/trial.hpp"

namespace velmora::examples {

// What the made trials are made of.

/// SplitMix64 (Steele, Lea and Flood 2014).
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  /// 0 up to, not including, 1.
  double Uniform() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    z ^= z >> 31U;
    return static_cast<double>(z >> 11U) * 0x1p-53;
  }

  /// Close to normal, mean 0 and standard deviation 1: the sum of twelve uniform numbers.
  double Normal() {
    double sum = -6.0;
    for (int i = 0; i < 12; ++i) {
      sum += Uniform();
    }
    return sum;
  }

 private:
  std::uint64_t state_;
};

struct ChannelName {
  const char* label;  // ten characters survive the native binary file
  const char* units;
};

inline void Prepare(Trial& trial, const char* title, double rate, double seconds,
                    const std::vector<ChannelName>& names) {
  trial.TrialTitle = title;
  trial.Rate = rate;
  const auto samples = static_cast<std::int64_t>(rate * seconds) + 1;
  trial.AllocateData(static_cast<int>(names.size()), samples);
  trial.Duration = seconds;
  trial.SetChannelDefaults(0);
  for (int c = 1; c <= trial.NChan; ++c) {
    trial.SetChannelDefaults(c);
    const auto k = static_cast<std::size_t>(c);
    trial.ChanLabel[k] = names[k - 1].label;
    trial.ChanUnits[k] = names[k - 1].units;
    trial.ChanNumber[k] = static_cast<std::int16_t>(c - 1);
  }
  trial.RebuildTimeColumn();
  trial.CursorLo = 1;
  trial.CursorHi = trial.NData;
}

inline double TimeOf(const Trial& trial, std::int64_t i) {
  return static_cast<double>(i) / trial.Rate;
}

/// 1 in the middle of the interval, 0 outside, with smooth flanks.
inline double Hump(double t, double from, double to) {
  if (t <= from || t >= to) {
    return 0.0;
  }
  const double s = std::sin(Pi * (t - from) / (to - from));
  return s * s;
}

/// Noise through a resonator: most of its power lies around the frequency at which EMG is strongest.
class MuscleNoise {
 public:
  MuscleNoise(std::uint64_t seed, double rate) : random_(seed), rate_(rate) { Resonate(90.0); }
  /// From now on around so many hertz.
  void Resonate(double frequency) {
    const double radius = 0.85;
    a1_ = 2 * radius * std::cos(2 * Pi * frequency / rate_);
    a2_ = -radius * radius;
  }
  double Next() {
    const double y = 0.35 * random_.Normal() + a1_ * before_ + a2_ * beforeThat_;
    beforeThat_ = before_;
    before_ = y;
    return y;
  }

 private:
  Random random_;
  double rate_;
  double a1_ = 0;
  double a2_ = 0;
  double before_ = 0;
  double beforeThat_ = 0;
};

}  // namespace velmora::examples
