#include "spectra/fourier_coefficients.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>

#include "core/portable_sine.hpp"
#include "core/text/numbers.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

std::vector<double> Noise(std::size_t n, unsigned seed) {
  const auto channels = NoiseChannels(1, static_cast<std::int64_t>(n), seed);
  return {channels.front().begin(), channels.front().end()};
}

struct Series {
  explicit Series(std::size_t harmonics) : cosines(harmonics + 1), sines(harmonics + 1) {}
  bool operator==(const Series&) const = default;
  std::vector<double> cosines;
  std::vector<double> sines;
};

TEST(FourierCoefficients, EveryLevelGivesTheBitsOfThePlainLoop) {
  for (const std::size_t n : {1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 100U, 501U, 1000U}) {
    for (const std::size_t harmonics : {1U, 2U, 7U, 8U, 15U, 64U, 65U, 133U}) {
      const std::vector<double> x = Noise(n, static_cast<unsigned>(n));
      Series plain(harmonics);
      FourierCoefficientsPlainly(x, plain.cosines, plain.sines);
      for (const SimdLevel level : MachineSimdLevels()) {
        Series lanes(harmonics);
        FourierCoefficients(x, lanes.cosines, lanes.sines, {}, level);
        EXPECT_EQ(lanes, plain) << n << " samples, " << harmonics << " harmonics, level "
                                << static_cast<int>(level);
      }
    }
  }
}

// Against the sums that define them.
TEST(FourierCoefficients, AreThoseOfTheDefinition) {
  for (const std::size_t n : {2U, 9U, 250U}) {
    const std::vector<double> x = Noise(n, 7);
    Series series(n / 2);
    FourierCoefficients(x, series.cosines, series.sines);
    for (std::size_t k = 1; k <= n / 2; ++k) {
      std::complex<double> sum;
      for (std::size_t i = 0; i < n; ++i) {
        sum += x[i] * std::polar(2.0 / static_cast<double>(n),
                                 2 * Pi * static_cast<double>(k * i % n) / static_cast<double>(n));
      }
      EXPECT_NEAR(series.cosines[k], sum.real(), 1e-11) << n << ", " << k;
      EXPECT_NEAR(series.sines[k], sum.imag(), 1e-11) << n << ", " << k;
    }
  }
}

TEST(FourierCoefficients, EndWhereTheyAreToldTo) {
  const std::vector<double> x = Noise(100, 3);
  Series whole(50);
  FourierCoefficients(x, whole.cosines, whole.sines);
  Series part(50);
  std::int32_t at = 0;
  EXPECT_FALSE(FourierCoefficients(
      x, part.cosines, part.sines,
      [&](std::int32_t done) {
        at = done;
        return done < 16;
      },
      SimdLevel::Sse2));
  EXPECT_EQ(at, 16);
  EXPECT_EQ(part.cosines[16], whole.cosines[16]);
  EXPECT_EQ(part.cosines[17], 0.0);
  EXPECT_EQ(part.sines[50], 0.0);
}

TEST(PortableSine, LiesWithinALastPlaceOfTheTruth) {
  for (const double scale : {1e-8, 0.01, 1.0, 100.0, 1e5, 7.9e5}) {
    for (int i = -2000; i <= 2000; ++i) {
      const double angle = scale * i / 2000.0;
      const SineAndCosine got = SineAndCosineOf(angle);
      const long double sine = std::sin(static_cast<long double>(angle));
      const long double cosine = std::cos(static_cast<long double>(angle));
      EXPECT_LE(std::abs(got.sine - sine), std::abs(sine) * 2.3e-16L) << angle;
      EXPECT_LE(std::abs(got.cosine - cosine), std::abs(cosine) * 2.3e-16L) << angle;
    }
  }
  EXPECT_EQ(SineAndCosineOf(0.0).cosine, 1.0);
  EXPECT_EQ(SineAndCosineOf(1e9).sine, std::sin(1e9));
}

}  // namespace
}  // namespace velmora::test
