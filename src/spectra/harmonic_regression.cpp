#include "spectra/harmonic_regression.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "spectra/windows.hpp"

namespace velmora {
namespace {

std::size_t Lines(std::int32_t last) {
  return static_cast<std::size_t>(last) + 1;
}

void SetHarmonics(SpectrumMemory& spectrum, std::int32_t harmonics, double step) {
  spectrum.NHarm = harmonics;
  spectrum.HarmFreq.resize(Lines(harmonics));
  for (std::size_t k = 0; k < spectrum.HarmFreq.size(); ++k) {
    spectrum.HarmFreq[k] = static_cast<double>(k) * step;
  }
}

std::int32_t HalvedHarmonics(std::int32_t harmonics, std::int32_t samples) {
  return samples / 2.0 < harmonics ? RoundHalfEven32(harmonics / 2.0) : harmonics;
}

/// An epoch in double precision without its mean.
struct Centred {
  Centred(const Trial& trial, const Epoch& epoch) {
    const float* at = trial.matrix.Frame(epoch.first) + epoch.channel;
    samples.resize(static_cast<std::size_t>(epoch.Samples()));
    double sum = 0.0;
    for (double& sample : samples) {
      sample = *at;
      sum += sample;
      at += trial.matrix.Stride();
    }
    mean = sum / static_cast<double>(samples.size());
    for (double& sample : samples) {
      sample -= mean;
    }
  }

  std::vector<double> samples;
  double mean = 0.0;
};

void TakePowers(const std::vector<double>& cosines, const std::vector<double>& sines,
                std::vector<double>& powers) {
  for (std::size_t k = 1; k < powers.size(); ++k) {
    powers[k] = cosines[k] * cosines[k] + sines[k] * sines[k];
  }
}

}  // namespace

double FundamentalFrequency(std::int32_t samples, double rate) {
  return samples > 1 && rate > 0 ? 1.0 / ((samples - 1) / rate) : 0.0;
}

std::int32_t UsableHarmonics(std::int32_t harmonics, std::int32_t samples) {
  return samples / 2.0 < harmonics ? RoundHalfEven32(samples / 2.0) : harmonics;
}

SeriesOutcome HarmonicRegression(const Trial& trial, const Epoch& epoch, std::int32_t& harmonics,
                                 SpectrumMemory& spectrum, const HarmonicsDone& done) {
  harmonics = UsableHarmonics(harmonics, epoch.Samples());
  const double step = FundamentalFrequency(epoch.Samples(), trial.Rate);
  const SpectralWindow& window = WindowOf(spectrum.WindowType);
  SetHarmonics(spectrum, harmonics, step);
  ClearPowers(spectrum, harmonics);
  spectrum.CosCoef.assign(Lines(harmonics), 0.0);
  spectrum.SinCoef.assign(Lines(harmonics), 0.0);
  spectrum.WindowName = window.shortName;
  Centred x(trial, epoch);
  spectrum.SinCoef[0] = x.mean;
  ApplyWindow(window, x.samples);
  if (!FourierCoefficients(x.samples, spectrum.CosCoef, spectrum.SinCoef, done)) {
    return SeriesOutcome::Cancelled;
  }
  TakePowers(spectrum.CosCoef, spectrum.SinCoef, spectrum.PowerNorm);
  FourFrequencies frequencies;
  if (!SummarisePowers(spectrum, harmonics, step, PowerSum::Double, frequencies)) {
    return SeriesOutcome::NoSpectrum;
  }
  KeepFrequencies(spectrum, frequencies);
  return SeriesOutcome::Done;
}

FourFrequencies HarmonicRegressionPlain(const Trial& trial, const Epoch& epoch, std::int32_t& harmonics,
                                        SpectrumMemory& spectrum, const HarmonicsDone& done) {
  harmonics = std::max(HalvedHarmonics(harmonics, epoch.Samples()), 0);
  const double step = FundamentalFrequency(epoch.Samples(), trial.Rate);
  SetHarmonics(spectrum, harmonics, step);
  ClearPowers(spectrum, harmonics);
  std::vector<double> cosines(Lines(harmonics));
  std::vector<double> sines(Lines(harmonics));
  FourFrequencies frequencies;
  if (FourierCoefficients(Centred(trial, epoch).samples, cosines, sines, done)) {
    TakePowers(cosines, sines, spectrum.PowerNorm);
    SummarisePowers(spectrum, harmonics, step, PowerSum::Single, frequencies);
  }
  return InSingles(frequencies);
}

FourFrequencies SpectrumByFFT(const Trial& trial, const Epoch& epoch, std::int32_t& harmonics,
                              SpectrumMemory& spectrum, EpochTransform& transform) {
  harmonics = HalvedHarmonics(harmonics, epoch.Samples());
  const std::int32_t last = RoundHalfEven32(epoch.Samples() / 2.0);
  const double step = FundamentalFrequency(epoch.Samples(), trial.Rate);
  SetHarmonics(spectrum, last, step);
  transform.TakePowers(trial, epoch, last, spectrum);
  FourFrequencies frequencies;
  SummarisePowers(spectrum, last, step, PowerSum::Single, frequencies);
  return InSingles(frequencies);
}

void EpochTransform::TakePowers(const Trial& trial, const Epoch& epoch, std::int32_t last,
                                SpectrumMemory& spectrum) {
  const auto n = static_cast<std::size_t>(epoch.Samples());
  const SpectralWindow& window = WindowOf(spectrum.WindowType);
  if (window.weight != nullptr && (weights_.size() != n || windowType_ != spectrum.WindowType)) {
    weights_ = WindowWeights(window, static_cast<std::int64_t>(n));
    windowType_ = spectrum.WindowType;
  }
  spectrum.WindowName = window.name;
  ClearPowers(spectrum, last);
  const std::span<double> x = transform_.Samples(n);
  const float* at = trial.matrix.Frame(epoch.first) + epoch.channel;
  for (std::size_t i = 0; i < n; ++i, at += trial.matrix.Stride()) {
    x[i] = window.weight != nullptr ? *at * weights_[i] : *at;
  }
  const std::span<const double> powers = transform_.Take();
  for (std::size_t k = 2; k < Lines(last); ++k) {
    spectrum.PowerNorm[k] = powers[k - 1];
  }
}

}  // namespace velmora
