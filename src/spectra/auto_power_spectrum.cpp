#include "spectra/auto_power_spectrum.hpp"

#include <fftw3.h>

#include <limits>
#include <mutex>
#include <new>

namespace velmora {
namespace {

std::mutex planner;  // FFTW's, which is one for all threads

}  // namespace

struct AutoPowerSpectrum::Plan {
  explicit Plan(std::size_t n) : count(n), samples(fftw_alloc_real(n)), lines(fftw_alloc_complex(n / 2 + 1)) {
    if (samples != nullptr && lines != nullptr && n <= std::numeric_limits<int>::max()) {
      const std::lock_guard lock(planner);
      plan = fftw_plan_dft_r2c_1d(static_cast<int>(n), samples, lines, FFTW_ESTIMATE | FFTW_NO_SIMD);
    }
    if (plan == nullptr) {
      Free();
      throw std::bad_alloc();
    }
  }
  Plan(const Plan&) = delete;
  Plan& operator=(const Plan&) = delete;
  ~Plan() { Free(); }

  void Free() const {
    const std::lock_guard lock(planner);
    fftw_destroy_plan(plan);
    fftw_free(lines);
    fftw_free(samples);
  }

  std::size_t count;
  double* samples;
  fftw_complex* lines;
  fftw_plan plan = nullptr;
};

AutoPowerSpectrum::AutoPowerSpectrum() = default;
AutoPowerSpectrum::~AutoPowerSpectrum() = default;

std::span<double> AutoPowerSpectrum::Samples(std::size_t n) {
  if (plan_ == nullptr || plan_->count != n) {
    plan_.reset();
    plan_ = std::make_unique<Plan>(n);
  }
  return {plan_->samples, n};
}

std::span<const double> AutoPowerSpectrum::Take() {
  fftw_execute(plan_->plan);
  const std::size_t n = plan_->count;
  const double all = static_cast<double>(n) * static_cast<double>(n);
  power_.resize(n / 2 + 1);
  for (std::size_t j = 0; j < power_.size(); ++j) {
    const double re = plan_->lines[j][0];
    const double im = plan_->lines[j][1];
    const bool single = j == 0 || 2 * j == n;  // has no partner among the negative frequencies
    power_[j] = (single ? 1.0 : 2.0) * (re * re + im * im) / all;
  }
  return power_;
}

}  // namespace velmora
