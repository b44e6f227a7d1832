#include "spectra/harmonic_regression.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>

#include "core/text/numbers.hpp"
#include "support/signals.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

Samples SineOf(std::size_t n, double cycles, double amplitude = 1.0, double mean = 0.0) {
  return Sampled(static_cast<int>(n), [=](int i) {
    const double angle = 2 * Pi * cycles * static_cast<double>(i) / static_cast<double>(n);
    return mean + amplitude * std::sin(angle);
  });
}

struct Regression : testing::Test {
  Trial trial;
  SpectrumMemory spectrum;

  void Make(const Samples& samples, double rate = 100.0) { SetChannels(trial, {samples}, rate); }
  [[nodiscard]] Epoch All() const { return {1, 1, trial.NData}; }
  FourFrequencies Plainly(std::int32_t harmonics) {
    return HarmonicRegressionPlain(trial, All(), harmonics, spectrum);
  }
  FourFrequencies ByFft(std::int32_t harmonics = 1) {
    EpochTransform transform;
    return SpectrumByFFT(trial, All(), harmonics, spectrum, transform);
  }
};

TEST_F(Regression, ASineStandsAtItsCyclesOnTheScaleOfIntervals) {
  Make(SineOf(200, 10, 2.0, 5.0));
  std::int32_t harmonics = 300;
  EXPECT_EQ(HarmonicRegression(trial, All(), harmonics, spectrum), SeriesOutcome::Done);
  EXPECT_EQ(harmonics, 100);
  EXPECT_EQ(spectrum.NHarm, 100);
  EXPECT_NEAR(spectrum.SinCoef[0], 5.0, 1e-6);
  EXPECT_NEAR(spectrum.SinCoef[10], 2.0, 1e-6);
  EXPECT_NEAR(spectrum.CosCoef[10], 0.0, 1e-6);
  EXPECT_NEAR(spectrum.PowerAbs[10], 4.0, 1e-5);
  EXPECT_DOUBLE_EQ(spectrum.PowerNorm[10], 100.0);
  EXPECT_NEAR(spectrum.HarmFreq[10], 10 * 100.0 / 199, 1e-12);
  EXPECT_NEAR(spectrum.PowerAbsCum[100], 4.0, 1e-5);
  EXPECT_EQ(spectrum.WindowName, "Rectangular");
  // All of the power in the tenth: nine steps, and half a harmonic that is added as it stands.
  EXPECT_NEAR(spectrum.MedianFreq, 9 * 100.0 / 199 + 0.5, 1e-6);
  EXPECT_NEAR(spectrum.Percentile95Freq, 9 * 100.0 / 199 + 0.95, 1e-6);
  EXPECT_NEAR(spectrum.Percentile99Freq, 9 * 100.0 / 199 + 0.99, 1e-6);
  EXPECT_NEAR(spectrum.MeanFreq, 10 * 100.0 / 199, 1e-6);
  const FourFrequencies exact = ExactFrequencies(spectrum, 100.0 / 199);
  EXPECT_NEAR(exact.median, 9.5 * 100.0 / 199, 1e-6);
  EXPECT_NEAR(exact.p99, 9.99 * 100.0 / 199, 1e-6);
}

// Two lines of 0.9 and 0.1 of the power: the 95th lies in the second, the 99th goes on from its bracket.
TEST_F(Regression, The99thIsCarriedOnFromTheBracketOfThe95th) {
  Samples samples = SineOf(100, 4, 3.0);
  const Samples second = SineOf(100, 20, 0.6);  // 0.36 of 9.36 + 0.36: 3.7 %
  const Samples third = SineOf(100, 30, 0.6);
  for (std::size_t i = 0; i < 100; ++i) {
    samples[i] += second[i] + third[i];
  }
  Make(samples, 99.0);  // steps of 1 Hz
  std::int32_t harmonics = 50;
  HarmonicRegression(trial, All(), harmonics, spectrum);
  const double total = 9.0 + 0.36 + 0.36;
  const double atFour = 100 * 9.0 / total;
  const double line = 100 * 0.36 / total;
  EXPECT_NEAR(spectrum.Percentile95Freq, 19 + (95 - atFour) / line, 1e-4);
  EXPECT_NEAR(spectrum.Percentile99Freq, 19 + (99 - atFour) / line, 1e-4);
  EXPECT_NEAR(ExactFrequencies(spectrum, 1.0).p99, 29 + (99 - atFour - line) / line, 1e-4);
}

TEST_F(Regression, PowerInTheFirstHarmonicReadsAsFractions) {
  Make(SineOf(500, 1), 2000.0);
  std::int32_t harmonics = 250;
  HarmonicRegression(trial, All(), harmonics, spectrum);
  EXPECT_NEAR(spectrum.MedianFreq, 0.5, 1e-6);
  EXPECT_NEAR(spectrum.Percentile99Freq, 0.99, 1e-6);
  const FourFrequencies plain = Plainly(250);
  EXPECT_NEAR(plain.p95, 0.95, 1e-6);
  EXPECT_EQ(plain.mean, static_cast<double>(static_cast<float>(plain.mean)));
}

TEST_F(Regression, PlainOnesHalveWhatIsTooMuchAndKeepTheCoefficients) {
  Make(NoiseChannels(1, 400)[0]);
  std::int32_t harmonics = 300;
  HarmonicRegression(trial, All(), harmonics, spectrum);
  EXPECT_EQ(spectrum.NHarm, 200);
  const SpectrumMemory before = spectrum;
  harmonics = 300;
  spectrum.WindowType = 5;
  const FourFrequencies plain = HarmonicRegressionPlain(trial, All(), harmonics, spectrum);
  EXPECT_EQ(harmonics, 150);
  EXPECT_EQ(spectrum.NHarm, 150);
  EXPECT_EQ(spectrum.CosCoef, before.CosCoef);
  EXPECT_EQ(spectrum.SinCoef, before.SinCoef);
  EXPECT_EQ(spectrum.WindowName, "Rectangular");
  EXPECT_EQ(spectrum.MedianFreq, before.MedianFreq);
  EXPECT_EQ(spectrum.PowerAbs.size(), 151U);
  EXPECT_GT(plain.median, 0);
}

TEST_F(Regression, WhatHasNoSpectrumSaysSo) {
  const float inf = std::numeric_limits<float>::infinity();
  for (const Samples& samples :
       {Samples(50, 2.0F), Samples(1, 2.0F), Samples{1, 2, inf, 4}, Samples{1, NAN, 2}}) {
    Make(samples);
    std::int32_t harmonics = 20;
    spectrum.MedianFreq = 7;
    EXPECT_EQ(HarmonicRegression(trial, All(), harmonics, spectrum), SeriesOutcome::NoSpectrum);
    EXPECT_EQ(spectrum.MedianFreq, 7);
    for (const double power : spectrum.PowerCum) {
      EXPECT_EQ(power, 0.0);
    }
    const FourFrequencies plain = Plainly(1);
    EXPECT_EQ(plain.median + plain.mean + plain.p95 + plain.p99, 0.0);
    const FourFrequencies fft = ByFft();
    EXPECT_EQ(fft.median + fft.mean + fft.p95 + fft.p99, 0.0);
  }
  Make({1, NAN, 2, 3, 5, 4, 1});
  std::int32_t harmonics = 2;
  EXPECT_EQ(HarmonicRegression(trial, {1, 3, 7}, harmonics, spectrum),
            SeriesOutcome::Done);  // outside the epoch
  for (const float size : {3e38F, 1e-38F}) {
    Samples samples = SineOf(64, 3);
    for (float& sample : samples) {
      sample *= size;
    }
    Make(samples);
    harmonics = 32;
    EXPECT_EQ(HarmonicRegression(trial, All(), harmonics, spectrum), SeriesOutcome::Done) << size;
    EXPECT_NEAR(spectrum.PowerRel[3], 100, 1e-3) << size;
  }
}

TEST_F(Regression, CancelKeepsTheCoefficientsThatWereDone) {
  Make(NoiseChannels(1, 1000)[0]);
  std::int32_t harmonics = 500;
  EXPECT_EQ(HarmonicRegression(trial, All(), harmonics, spectrum, [](std::int32_t) { return false; }),
            SeriesOutcome::Cancelled);
  EXPECT_NE(spectrum.CosCoef[1], 0.0);
  EXPECT_EQ(spectrum.CosCoef[500], 0.0);
  EXPECT_EQ(std::accumulate(spectrum.PowerNorm.begin(), spectrum.PowerNorm.end(), 0.0), 0.0);
}

// The powers of a line, an impulse and noise; lines stand one step above their own frequency.
TEST_F(Regression, TheFastTransformPutsLineJAtHarmonicJPlusOne) {
  for (const std::size_t n : {64U, 100U, 101U, 7U, 5U}) {
    Make(SineOf(n, 2, 2.0, 3.0));
    ByFft(1000);
    EXPECT_EQ(spectrum.NHarm, RoundHalfEven32(static_cast<double>(n) / 2));
    if (n > 5) {
      EXPECT_NEAR(spectrum.PowerAbs[3], 2.0, 1e-6) << n;
      EXPECT_NEAR(spectrum.PowerRel[3], 100.0, 1e-5) << n;
    }
  }
  Samples impulse(1000, 0.0F);
  impulse[17] = 1.0F;
  Make(impulse);
  ByFft();
  EXPECT_EQ(spectrum.PowerAbs[1], 0.0);
  for (std::size_t k = 2; k <= 500; ++k) {
    ASSERT_NEAR(spectrum.PowerAbs[k], 2e-6, 1e-15);
  }
  // All of the variance but the last line, half the rate, which has no harmonic.
  const Samples noise = NoiseChannels(1, 1000)[0];
  Make(noise);
  ByFft();
  double sum = 0;
  double squares = 0;
  double alternating = 0;
  for (std::size_t i = 0; i < noise.size(); ++i) {
    sum += noise[i];
    squares += static_cast<double>(noise[i]) * noise[i];
    alternating += i % 2 == 0 ? noise[i] : -noise[i];
  }
  EXPECT_NEAR(spectrum.PowerAbsCum[500], squares / 1000 - sum * sum / 1e6 - alternating * alternating / 1e6,
              1e-9);
}

TEST_F(Regression, EpochsOfOneLengthShareTheirPlan) {
  Make(NoiseChannels(1, 3000)[0]);
  EpochTransform shared;
  for (const Epoch& epoch : {Epoch{1, 1, 1000}, Epoch{1, 501, 1500}, Epoch{1, 1, 777}, Epoch{1, 1, 1000}}) {
    for (const std::int16_t window : {std::int16_t{2}, std::int16_t{4}}) {
      spectrum.WindowType = window;
      std::int32_t harmonics = 10;
      const FourFrequencies got = SpectrumByFFT(trial, epoch, harmonics, spectrum, shared);
      const std::vector<double> powers = spectrum.PowerAbs;
      EpochTransform own;
      const FourFrequencies again = SpectrumByFFT(trial, epoch, harmonics, spectrum, own);
      EXPECT_EQ(got.median, again.median);
      EXPECT_EQ(powers, spectrum.PowerAbs);
    }
  }
}

}  // namespace
}  // namespace velmora::test
