#include "spectra/fourier_coefficients.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "core/simd.hpp"
#include "core/text/numbers.hpp"

namespace velmora {
namespace {

#define SIMD_KERNEL "spectra/fourier_lanes.inc"
#include "core/simd_widths.inc"

void RunPlainly(const double* x, long n, const double* twice, double* near, double* far) {
  double u1 = 0.0;
  double u2 = 0.0;
  for (long i = n; i >= 2; --i) {
    const double next = *twice * u1 + x[i - 1] - u2;
    u2 = u1;
    u1 = next;
  }
  *near = u1;
  *far = u2;
}

/// How many harmonics run side by side, and the procedure that runs them.
struct Runner {
  long group;
  void (*run)(const double* x, long n, const double* twice, double* near, double* far);
};

Runner RunnerOf(SimdLevel level) {
  return AtLevel<Runner>(level, {sse2::kGroup, sse2::RunGroup}, {avx2::kGroup, avx2::RunGroup},
                         {avx512::kGroup, avx512::RunGroup});
}

constexpr std::size_t kWidest = 64;
using Lanes = std::array<double, kWidest>;

/// cos and sin of k q, turned on from harmonic to harmonic.
class Turning {
 public:
  explicit Turning(double step) : c1_(std::cos(step)), s1_(std::sin(step)) {}

  void Next() {
    const double t = c1_ * ck_ - s1_ * sk_;
    sk_ = s1_ * ck_ + c1_ * sk_;
    ck_ = t;
  }
  [[nodiscard]] double Cosine() const { return ck_; }
  [[nodiscard]] double Sine() const { return sk_; }

 private:
  double c1_;
  double s1_;
  double ck_ = 1.0;
  double sk_ = 0.0;
};

bool Compute(std::span<const double> x, std::span<double> cosines, std::span<double> sines,
             const HarmonicsDone& done, const Runner& runner) {
  const auto n = static_cast<long>(x.size());
  const auto harmonics = static_cast<long>(cosines.size()) - 1;
  if (n == 0) {
    return true;
  }
  const double perSample = 2.0 / static_cast<double>(n);
  Turning turning(2.0 * Pi / static_cast<double>(n));
  Lanes ck{};
  Lanes sk{};
  Lanes twice{};  // of lanes behind the last harmonic something that stays finite
  Lanes near;
  Lanes far;
  for (long first = 1; first <= harmonics; first += runner.group) {
    const auto count = static_cast<std::size_t>(std::min(runner.group, harmonics - first + 1));
    for (std::size_t lane = 0; lane < count; ++lane) {
      turning.Next();
      ck[lane] = turning.Cosine();
      sk[lane] = turning.Sine();
      twice[lane] = 2.0 * ck[lane];
    }
    runner.run(x.data(), n, twice.data(), near.data(), far.data());
    for (std::size_t lane = 0; lane < count; ++lane) {
      const std::size_t k = static_cast<std::size_t>(first) + lane;
      cosines[k] = ((near[lane] * ck[lane] + x[0]) - far[lane]) * perSample;
      sines[k] = near[lane] * (sk[lane] * perSample);
    }
    if (done && !done(static_cast<std::int32_t>(first - 1 + static_cast<long>(count)))) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool FourierCoefficients(std::span<const double> x, std::span<double> cosines, std::span<double> sines,
                         const HarmonicsDone& done, SimdLevel level) {
  return Compute(x, cosines, sines, done, RunnerOf(level));
}

bool FourierCoefficientsPlainly(std::span<const double> x, std::span<double> cosines, std::span<double> sines,
                                const HarmonicsDone& done) {
  return Compute(x, cosines, sines, done, {1, RunPlainly});
}

}  // namespace velmora
