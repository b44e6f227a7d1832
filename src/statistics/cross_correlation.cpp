#include "statistics/cross_correlation.hpp"

#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <new>

namespace velmora {
namespace {

struct FreeFftw {
  void operator()(void* memory) const { fftw_free(memory); }
  void operator()(fftw_plan plan) const { fftw_destroy_plan(plan); }
};
using Reals = std::unique_ptr<double, FreeFftw>;
using Complexes = std::unique_ptr<fftw_complex, FreeFftw>;
using Plan = std::unique_ptr<fftw_plan_s, FreeFftw>;

// Without instructions of the machine at hand: the bits are the same everywhere.
constexpr unsigned kPlan = FFTW_ESTIMATE | FFTW_NO_SIMD;

template <typename Pointer>
Pointer Checked(Pointer pointer) {
  if (pointer == nullptr) {
    throw std::bad_alloc();
  }
  return pointer;
}

std::vector<double> Deviations(std::span<const float> samples) {
  double sum = 0.0;
  for (const float x : samples) {
    sum += x;
  }
  const double mean = sum / static_cast<double>(samples.size());
  std::vector<double> d;
  d.reserve(samples.size());
  for (const float x : samples) {
    d.push_back(x - mean);
  }
  return d;
}

double SquareSum(std::span<const double> values) {
  double sum = 0.0;
  for (const double d : values) {
    sum += d * d;
  }
  return sum;
}

/// Sums of the first values and of their squares, so that those of any stretch are a difference.
struct RunningSums {
  explicit RunningSums(std::span<const double> values) {
    for (const double d : values) {
      sum.push_back(sum.back() + d);
      squares.push_back(squares.back() + d * d);
    }
  }
  [[nodiscard]] double Sum(std::size_t from, std::size_t count) const {
    return sum[from + count] - sum[from];
  }
  [[nodiscard]] double Spread(std::size_t from, std::size_t count) const {
    const double s = Sum(from, count);
    return squares[from + count] - squares[from] - s * s / static_cast<double>(count);
  }

  std::vector<double> sum{0.0};
  std::vector<double> squares{0.0};
};

// Pearson's r of the stretches that lie over each other, at every lag.
void DivideByOverlap(std::span<const double> dx, std::span<const double> dy, std::int32_t largestLag,
                     std::vector<double>& r) {
  constexpr double kNothing = 1e-12;  // of the whole spread: a stretch that does not vary
  const RunningSums x(dx);
  const RunningSums y(dy);
  for (std::int32_t k = -largestLag; k <= largestLag; ++k) {
    const std::size_t count = dx.size() - static_cast<std::size_t>(std::abs(k));
    const auto xFrom = static_cast<std::size_t>(std::max(-k, 0));
    const auto yFrom = static_cast<std::size_t>(std::max(k, 0));
    const double spreadX = x.Spread(xFrom, count);
    const double spreadY = y.Spread(yFrom, count);
    double& at = r[static_cast<std::size_t>(std::int64_t{largestLag} + k)];
    if (!(spreadX > kNothing * x.squares.back()) || !(spreadY > kNothing * y.squares.back())) {
      at = std::numeric_limits<double>::quiet_NaN();
      continue;
    }
    const double product = at - x.Sum(xFrom, count) * y.Sum(yFrom, count) / static_cast<double>(count);
    at = std::clamp(product / std::sqrt(spreadX * spreadY), -1.0, 1.0);
  }
}

}  // namespace

std::vector<double> LagSumsPlain(std::span<const double> dx, std::span<const double> dy,
                                 std::int32_t largestLag) {
  std::vector<double> sums;
  for (std::int32_t k = -largestLag; k <= largestLag; ++k) {
    const auto xFrom = static_cast<std::size_t>(std::max(-k, 0));
    const auto yFrom = static_cast<std::size_t>(std::max(k, 0));
    const std::size_t count = dx.size() - static_cast<std::size_t>(std::abs(k));
    double sum = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
      sum += dx[xFrom + i] * dy[yFrom + i];
    }
    sums.push_back(sum);
  }
  return sums;
}

// The product of one spectrum and the other's conjugate; zeros behind the samples keep the ends apart.
std::vector<double> LagSumsByTransform(std::span<const double> dx, std::span<const double> dy,
                                       std::int32_t largestLag, const GoesOn& goesOn) {
  constexpr double kOneOfThree = 1.0 / 3;
  const auto lags = static_cast<std::size_t>(largestLag);
  std::size_t size = 1;
  while (size < dx.size() + lags + 1) {
    size *= 2;
  }
  const std::size_t lines = size / 2 + 1;
  const Reals values(Checked(fftw_alloc_real(size)));
  const Complexes x(Checked(fftw_alloc_complex(lines)));
  const Complexes y(Checked(fftw_alloc_complex(lines)));
  const auto transform = [&](std::span<const double> from, fftw_complex* to) {
    const Plan plan(Checked(fftw_plan_dft_r2c_1d(static_cast<int>(size), values.get(), to, kPlan)));
    std::copy(from.begin(), from.end(), values.get());
    std::fill(values.get() + from.size(), values.get() + size, 0.0);
    fftw_execute(plan.get());
  };
  transform(dx, x.get());
  if (!Goes(goesOn, kOneOfThree)) {
    return {};
  }
  transform(dy, y.get());
  if (!Goes(goesOn, 2 * kOneOfThree)) {
    return {};
  }
  for (std::size_t k = 0; k < lines; ++k) {
    const double* a = x.get()[k];
    double* b = y.get()[k];
    const double real = a[0] * b[0] + a[1] * b[1];
    const double imaginary = a[0] * b[1] - a[1] * b[0];
    b[0] = real;
    b[1] = imaginary;
  }
  const Plan back(Checked(fftw_plan_dft_c2r_1d(static_cast<int>(size), y.get(), values.get(), kPlan)));
  fftw_execute(back.get());
  std::vector<double> sums(2 * lags + 1);
  const double* at = values.get();
  const auto scale = static_cast<double>(size);
  for (std::size_t k = 0; k <= lags; ++k) {
    sums[lags + k] = at[k] / scale;
    sums[lags - k] = at[k == 0 ? 0 : size - k] / scale;
  }
  return sums;
}

std::vector<double> CrossCorrelate(std::span<const float> x, std::span<const float> y,
                                   std::int32_t largestLag, LagNorm norm, const GoesOn& goesOn) {
  constexpr double kManyProducts = 1e6;
  const std::vector<double> dx = Deviations(x);
  const std::vector<double> dy = Deviations(y);
  const bool many = static_cast<double>(dx.size()) * largestLag > kManyProducts;
  if (!Goes(goesOn, 0.0)) {
    return {};
  }
  std::vector<double> r =
      many ? LagSumsByTransform(dx, dy, largestLag, goesOn) : LagSumsPlain(dx, dy, largestLag);
  if (r.empty() || !Goes(goesOn, 1.0)) {
    return {};
  }
  if (norm == LagNorm::Overlap) {
    DivideByOverlap(dx, dy, largestLag, r);
    return r;
  }
  const double spread = std::sqrt(SquareSum(dx) * SquareSum(dy));
  for (double& of : r) {
    of /= spread;
  }
  return r;
}

std::optional<BestLag> FindLag(std::span<const double> r) {
  constexpr double kRounding = 1e-12;  // what the two ways of summing may differ by tells no lag from another
  const auto largest = static_cast<std::ptrdiff_t>(r.size() / 2);
  const auto size = [&](std::ptrdiff_t k) { return std::fabs(r[static_cast<std::size_t>(largest + k)]); };
  double most = -1.0;
  for (std::ptrdiff_t k = -largest; k <= largest; ++k) {
    most = std::fmax(most, size(k));
  }
  std::optional<std::ptrdiff_t> best;
  for (std::ptrdiff_t k = 0; k <= largest && !best; ++k) {
    best = size(-k) >= most - kRounding  ? std::optional(-k)
           : size(k) >= most - kRounding ? std::optional(k)
                                         : std::nullopt;
  }
  if (!best) {
    return std::nullopt;
  }
  const auto at = static_cast<std::size_t>(largest + *best);
  BestLag of{static_cast<std::int32_t>(*best), static_cast<double>(*best), r[at]};
  if (at == 0 || at + 1 == r.size()) {
    return of;
  }
  const double sign = r[at] < 0 ? -1.0 : 1.0;
  const double a = sign * r[at - 1];
  const double b = sign * r[at];
  const double c = sign * r[at + 1];
  const double bend = a - 2 * b + c;
  if (std::isfinite(bend) && bend < 0) {
    const double part = (a - c) / (2 * bend);
    of.between += part;
    of.r = std::clamp(sign * (b - (a - c) * part / 4), -1.0, 1.0);
  }
  return of;
}

}  // namespace velmora
