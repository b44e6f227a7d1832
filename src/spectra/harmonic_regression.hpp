#pragma once

#include <cstdint>

#include "core/command_memory.hpp"
#include "core/trial/trial.hpp"
#include "spectra/auto_power_spectrum.hpp"
#include "spectra/fourier_coefficients.hpp"
#include "spectra/power_summary.hpp"

namespace velmora {

/// Samples of one channel, 1 to NData, both included.
struct Epoch {
  int channel = 1;
  std::int32_t first = 1;
  std::int32_t last = 1;

  [[nodiscard]] std::int32_t Samples() const { return last - first + 1; }
};

/// The step of the frequency scale of an epoch of n samples in hertz: 1 over its duration, which counts
/// intervals while the transform divides the circle by samples. 0 for a single sample.
double FundamentalFrequency(std::int32_t samples, double rate);

/// The largest number of harmonics that HarmonicRegression uses of those asked for.
std::int32_t UsableHarmonics(std::int32_t harmonics, std::int32_t samples);

enum class SeriesOutcome {
  Done,
  NoSpectrum,  // constant, or a sample is not finite: the powers are 0
  Cancelled    // the coefficients that were done are stored, the others are 0, and so are the powers
};

/// Fourier series of an epoch without its mean, under the spectrum's window. `harmonics` becomes
/// UsableHarmonics. Sets everything in the spectrum; of an epoch without a spectrum the four frequencies
/// stay. Throws std::bad_alloc.
SeriesOutcome HarmonicRegression(const Trial& trial, const Epoch& epoch, std::int32_t& harmonics,
                                 SpectrumMemory& spectrum, const HarmonicsDone& done = {});

/// The same without a window and with coefficients of its own: sets NHarm, HarmFreq and the power lists
/// alone and returns the frequencies in single precision, zeros without a spectrum. More harmonics than half
/// of the samples are halved, however many samples there are. With `done` returning false it ends with zeros.
FourFrequencies HarmonicRegressionPlain(const Trial& trial, const Epoch& epoch, std::int32_t& harmonics,
                                        SpectrumMemory& spectrum, const HarmonicsDone& done = {});

/// The same by the fast Fourier transform, under the spectrum's window and with the mean. `harmonics` are
/// halved as by HarmonicRegressionPlain, while NHarm is half of the samples whatever was asked. Line j of the
/// transform stands at harmonic j + 1, and the mean is in none. `transform` keeps its plan and the window's
/// weights from epoch to epoch.
class EpochTransform;
FourFrequencies SpectrumByFFT(const Trial& trial, const Epoch& epoch, std::int32_t& harmonics,
                              SpectrumMemory& spectrum, EpochTransform& transform);

/// The powers of windowed samples, with what epochs of one length share.
class EpochTransform {
 public:
  /// Powers as SpectrumByFFT places them, in PowerNorm 0 to `last`; sets WindowName.
  void TakePowers(const Trial& trial, const Epoch& epoch, std::int32_t last, SpectrumMemory& spectrum);

 private:
  AutoPowerSpectrum transform_;
  std::vector<double> weights_;
  std::int16_t windowType_ = -1;  // of the weights
};

}  // namespace velmora
