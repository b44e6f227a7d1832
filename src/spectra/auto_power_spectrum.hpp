#pragma once

#include <memory>
#include <span>
#include <vector>

namespace velmora {

/// One-sided power spectra by the fast Fourier transform (FFTW; Frigo and Johnson 2005), of any length. The
/// transform is planned when the length changes, so that many epochs of one length share a plan. The plan
/// is an estimated one without vector instructions: others give other last bits from machine to machine.
class AutoPowerSpectrum {
 public:
  AutoPowerSpectrum();
  AutoPowerSpectrum(const AutoPowerSpectrum&) = delete;
  AutoPowerSpectrum& operator=(const AutoPowerSpectrum&) = delete;
  ~AutoPowerSpectrum();

  /// Room for n samples, n >= 1, to be filled in before Take. Throws std::bad_alloc.
  std::span<double> Samples(std::size_t n);

  /// The power S(j) of the samples, j = 0 to n/2, at the frequency j times the rate over n: mean squares, so
  /// that a sine of amplitude 2 on a line has power 2. The samples are used up. Stays until the next call.
  std::span<const double> Take();

 private:
  struct Plan;

  std::unique_ptr<Plan> plan_;
  std::vector<double> power_;
};

}  // namespace velmora
