#include "channels/waveform.hpp"

#include <cmath>
#include <functional>
#include <optional>
#include <random>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

/// Numbers that any machine makes alike: the generator is that of the standard, what is made of it is ours.
/// They are those of numpy's RandomState.
class Noise {
 public:
  explicit Noise(std::uint32_t seed) : random_(seed) {}

  /// 0 to below 1, with 53 bits.
  double Uniform() {
    const auto a = static_cast<double>(random_() >> 5U);
    const auto b = static_cast<double>(random_() >> 6U);
    return (a * 67108864.0 + b) / 9007199254740992.0;
  }

  /// Of deviation 1, by the polar method (Marsaglia and Bray 1964), two at a time.
  double Gaussian() {
    if (kept_) {
      const double other = *kept_;
      kept_.reset();
      return other;
    }
    double x1 = 0.0;
    double x2 = 0.0;
    double q = 0.0;
    do {
      x1 = 2.0 * Uniform() - 1.0;
      x2 = 2.0 * Uniform() - 1.0;
      q = x1 * x1 + x2 * x2;
    } while (!(q > 0.0 && q < 1.0));
    const double f = std::sqrt(-2.0 * std::log(q) / q);
    kept_ = f * x1;
    return f * x2;
  }

 private:
  std::mt19937 random_;
  std::optional<double> kept_;
};

// Shapes that repeat, by the part of the period: 0 to below 1.
double Periodic(const Waveform& wave, double part) {
  const double duty = wave.duty / 100;
  const double a = wave.amplitude;
  switch (wave.shape) {
    case WaveShape::Square:
      return part < duty ? a : -a;
    case WaveShape::Triangle:
      return part < duty ? -a + 2 * a * part / duty : a - 2 * a * (part - duty) / (1 - duty);
    case WaveShape::Sawtooth:
      return -a + 2 * a * part;
    default:
      return a * std::sin(2 * Pi * part);
  }
}

// Shapes that happen once, by the time since their start.
double Single(const Waveform& wave, double since) {
  const double a = wave.amplitude;
  const bool inside = since >= 0 && since <= wave.width;
  const double half = inside ? std::sin(Pi * since / wave.width) : 0.0;
  switch (wave.shape) {
    case WaveShape::Pulse:
      return since >= 0 && since < wave.width ? a : 0.0;
    case WaveShape::HalfSine:
      return a * half;
    case WaveShape::Haversine:
      return a * (half * half);
    default:
      return since <= 0 ? 0.0 : since < wave.width ? a * since / wave.width : a;
  }
}

double PartOf(double periods) {
  return periods - std::floor(periods);
}

// The value at t seconds; `last` is the time of the last sample.
std::function<double(double t)> ValuesOf(const Waveform& wave, double last) {
  switch (wave.shape) {
    case WaveShape::Constant:
      return [&wave](double /*t*/) { return wave.amplitude; };
    case WaveShape::Pulse:
    case WaveShape::HalfSine:
    case WaveShape::Haversine:
    case WaveShape::Ramp:
      return [&wave](double t) { return Single(wave, t - wave.start); };
    case WaveShape::Chirp:
      return [&wave, last](double t) {
        const double sweep = last > 0 ? (wave.endFrequency - wave.frequency) * t * t / (2 * last) : 0.0;
        return Periodic(wave, PartOf(wave.frequency * t + sweep + wave.phase / 360));
      };
    case WaveShape::UniformNoise:
      return [&wave, noise = Noise(wave.seed)](double /*t*/) mutable {
        return wave.amplitude * (2 * noise.Uniform() - 1);
      };
    case WaveShape::GaussianNoise:
      return [&wave, noise = Noise(wave.seed)](double /*t*/) mutable {
        return wave.amplitude * noise.Gaussian();
      };
    default:
      return [&wave](double t) { return Periodic(wave, PartOf(wave.frequency * t + wave.phase / 360)); };
  }
}

}  // namespace

void AddWaveform(const Waveform& wave, double rate, std::vector<double>& sum) {
  const double last = sum.empty() ? 0.0 : static_cast<double>(sum.size() - 1) / rate;
  const std::function<double(double)> value = ValuesOf(wave, last);
  for (std::size_t i = 0; i < sum.size(); ++i) {
    sum[i] += value(static_cast<double>(i) / rate) + wave.offset;
  }
}

}  // namespace velmora
