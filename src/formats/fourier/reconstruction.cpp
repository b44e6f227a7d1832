#include "formats/fourier/reconstruction.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/portable_sine.hpp"
#include "core/text/numbers.hpp"

namespace velmora {
namespace {

/// A stretch of samples, counted from `first`.
struct Stretch {
  const Harmonic& harmonic;
  double step;
  double omega;
  std::int32_t first;
  std::int32_t count;
  float* samples;
};

// The compiler turns it into vectors of the target it is inlined for.
[[gnu::always_inline]] inline void AddInRange(const Stretch& stretch) {
  const double cosine = stretch.harmonic.cosine;
  const double sine = stretch.harmonic.sine;
  for (std::int32_t i = 0; i < stretch.count; ++i) {
    const double t = (stretch.first + i) * stretch.step;
    const SineAndCosine at = PortableSineAndCosine(t * stretch.omega);
    const double sum = (at.cosine * cosine + stretch.samples[i]) + at.sine * sine;
    stretch.samples[i] = static_cast<float>(sum);
  }
}

void AddSse2(const Stretch& stretch) {
  AddInRange(stretch);
}
[[gnu::target("avx2")]] void AddAvx2(const Stretch& stretch) {
  AddInRange(stretch);
}
[[gnu::target("avx512f,avx512bw,avx512dq,avx512vl")]] void AddAvx512(const Stretch& stretch) {
  AddInRange(stretch);
}

// Beyond the angles that the portable sine reduces exactly.
void AddFar(const Stretch& stretch) {
  for (std::int32_t i = 0; i < stretch.count; ++i) {
    const double t = (stretch.first + i) * stretch.step;
    const SineAndCosine at = SineAndCosineOf(t * stretch.omega);
    const double sum =
        (at.cosine * stretch.harmonic.cosine + stretch.samples[i]) + at.sine * stretch.harmonic.sine;
    stretch.samples[i] = static_cast<float>(sum);
  }
}

}  // namespace

void AddHarmonic(const Harmonic& harmonic, double step, std::span<float> samples, SimdLevel level) {
  constexpr std::int32_t kStretch = 1 << 16;
  const auto add = level == SimdLevel::Avx512 ? AddAvx512 : level == SimdLevel::Avx2 ? AddAvx2 : AddSse2;
  const double omega = 2.0 * Pi * harmonic.frequency;
  const auto all = static_cast<std::int32_t>(samples.size());
  for (std::int32_t first = 0; first < all; first += kStretch) {
    const std::int32_t count = std::min(kStretch, all - first);
    const bool near = std::abs((first + count) * step * omega) <= kLargestPortableAngle;
    (near ? add : AddFar)({harmonic, step, omega, first, count, samples.data() + first});
  }
}

}  // namespace velmora
