#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "forceplate/amti_reduction.hpp"
#include "forceplate/kistler_reduction.hpp"
#include "forceplate/published_reduction.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// A trial of one sample a row.
void SetRows(Trial& trial, const std::vector<Samples>& rows) {
  std::vector<Samples> channels(rows.front().size());
  for (const Samples& row : rows) {
    for (std::size_t c = 0; c < row.size(); ++c) {
      channels[c].push_back(row[c]);
    }
  }
  SetChannels(trial, channels);
}

Samples Row(const Trial& trial, std::int64_t i) {
  Samples row;
  for (int c = 1; c <= trial.NChan; ++c) {
    row.push_back(trial.Data(i, c));
  }
  return row;
}

// Sensors at 12 and 20 cm, 5 cm deep, a newton a unit: S1 = 1, S2 = -1, S3 = 1.
const ForcePlate kUnitPlate{
    .a = 12, .b = 20, .az0 = -5, .XYRange = 1, .ZRange = 1, .XSens = -1, .YSens = -1, .ZSens = -1};

// Worked by hand: Fx = 3 + 1, Fy = -2 - 4, Fz = 100, Ax = (4 (-5) + 12 (20 + 30 - 10 - 40)) / 100,
// Ay = (-6 (-5) - 20 (30 + 40 - 10 - 20)) / 100, Tz = 4 (-7.7) + (-6) (-0.2) - (12 (-2) + 20 (-2)).
const Samples kRaw = {3, 1, 2, 4, 10, 20, 30, 40};
const Samples kReduced = {4, 6, 100, -0.2F, -7.7F, 0.344F, 7.2111025509F, 0.072111025509F};
const Samples kUnloaded = {0, -0.0F, 0, 0, 0, 0, 0, 0};

TEST(KistlerReductionTest, ForcesAndCentreOfPressureAreThoseWorkedByHand) {
  Trial trial;
  Samples turned = kRaw;
  Samples minus = kReduced;
  for (std::size_t k = 0; k < 8; ++k) {
    turned[k] = -turned[k];
  }
  for (std::size_t force = 0; force < 3; ++force) {
    minus[force] = -minus[force];
  }
  minus[5] = -minus[5];  // the moment turns, the point and the friction stay
  SetRows(trial, {kRaw, turned});
  ReduceKistlerForces(trial, 0, KistlerFactorsOf(kUnitPlate), 25.0F);
  EXPECT_EQ(Row(trial, 1), kReduced);
  EXPECT_EQ(Row(trial, 2), minus);
}

TEST(KistlerReductionTest, FactorsAreRangesOverSensitivitiesIn32Bits) {
  const ForcePlate plate{
      .a = 0.1, .XYRange = 5000, .ZRange = 10000, .XSens = -7.86, .YSens = -7.87, .ZSens = -3.5};
  const KistlerFactors factors = KistlerFactorsOf(plate);
  EXPECT_EQ(factors.S1, 636.132315521628F);
  EXPECT_EQ(factors.S2, -635.324015247776F);
  EXPECT_EQ(factors.S3, 2857.14285714286F);
  EXPECT_EQ(factors.a, 0.1F);
  // What names a unit comes out in centimetres.
  const std::vector<float> centimetres = {120.0F, 12.0F, 120.0F, 12000.0F};
  for (std::int32_t unit = 0; unit < 4; ++unit) {
    EXPECT_EQ(KistlerFactorsOf({.a = 120, .XSens = -1, .optDistance = unit}).a,
              centimetres[static_cast<std::size_t>(unit)]);
  }
}

TEST(KistlerReductionTest, TheThresholdIsReachedFromBothSidesAndByNoOtherThanNumbers) {
  const auto vertical = [](float fz) { return Samples{1, 1, 1, 1, fz, 0, 0, 0}; };
  Trial trial;
  const float below = std::nextafter(25.0F, 0.0F);
  SetRows(trial, {vertical(25),
                  vertical(below),
                  vertical(-25),
                  vertical(-below),
                  vertical(kNaN),
                  vertical(kInfinity),
                  {kNaN, 1, 1, 1, 100, 0, 0, 0}});
  ReduceKistlerForces(trial, 0, KistlerFactorsOf(kUnitPlate), 25.0F);
  EXPECT_EQ(trial.Data(1, 3), 25);
  EXPECT_EQ(trial.Data(3, 3), -25);
  for (const int i : {2, 4, 5}) {
    EXPECT_TRUE(SameBits(Row(trial, i), kUnloaded)) << i;
  }
  EXPECT_EQ(trial.Data(6, 3), kInfinity);
  EXPECT_TRUE(std::isnan(trial.Data(6, 4)));
  EXPECT_TRUE(std::isnan(trial.Data(7, 1)));
  EXPECT_EQ(trial.Data(7, 2), 2);
}

// Loaded and unloaded samples at random, sums that cancel, forces on the threshold, what is no number.
void FillMixed(Trial& trial, int base, unsigned seed) {
  std::mt19937 random(seed);
  const auto uniform = [&random] { return static_cast<float>(random()) / 0x1p31F - 1.0F; };
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    const unsigned kind = random() % 8;
    for (int k = 1; k <= 8; ++k) {
      trial.Data(i, base + k) = uniform() * (kind == 0 ? 1e-3F : kind == 1 ? 1e30F : 100.0F);
    }
    if (kind == 2) {
      trial.Data(i, base + 6) = -trial.Data(i, base + 5);
      trial.Data(i, base + 8) = -trial.Data(i, base + 7);
    } else if (kind == 3) {
      trial.Data(i, base + 5) = 25.0F;
      trial.Data(i, base + 6) = trial.Data(i, base + 7) = trial.Data(i, base + 8) = 0.0F;
    } else if (kind == 4) {
      trial.Data(i, base + 1 + static_cast<int>(random() % 8)) = random() % 2 == 0 ? kNaN : kInfinity;
    }
  }
}

// All bits of numbers; of what is no number that it is none, since processors choose its bits by the
// order of operands.
std::vector<std::uint32_t> ComparableBits(const Trial& trial) {
  std::vector<std::uint32_t> bits = Bits(trial);
  for (std::uint32_t& b : bits) {
    b = std::isnan(std::bit_cast<float>(b)) ? 0x7FC00000U : b;
  }
  return bits;
}

TEST(KistlerReductionTest, FourSamplesAtOnceGiveTheBitsOfOneAfterTheOther) {
  const KistlerFactors factors = KistlerFactorsOf({.a = 12.3,
                                                   .b = 20.1,
                                                   .az0 = -4.7,
                                                   .XYRange = 1000,
                                                   .ZRange = 1000,
                                                   .XSens = -997,
                                                   .YSens = -1003,
                                                   .ZSens = -1000});
  for (const SimdLevel level : MachineSimdLevels()) {
    for (const auto& [channels, base] : {std::pair{8, 0}, {9, 1}, {21, 12}}) {
      for (const std::int64_t samples : {1, 2, 3, 4, 5, 99, 100, 101, 2003}) {
        Trial plain;
        SetChannels(plain, NoiseChannels(channels, samples));
        FillMixed(plain, base, static_cast<unsigned>(samples));
        for (int c = 0; c <= channels; ++c) {
          plain.ChanOffset[c] = 0.01 * c;
        }
        Trial fast;
        SetChannels(fast, NoiseChannels(channels, samples));
        FillMixed(fast, base, static_cast<unsigned>(samples));
        fast.ChanOffset = plain.ChanOffset;
        ReduceKistlerForcesPlainly(plain, base, factors, 25.0F);
        ReduceKistlerForces(fast, base, factors, 25.0F, {}, level);
        ASSERT_EQ(ComparableBits(fast), ComparableBits(plain)) << samples << " samples of " << channels;
      }
    }
  }
}

TEST(KistlerReductionTest, ATurnIsGivenAtEveryHundredthSample) {
  Trial trial;
  SetChannels(trial, NoiseChannels(8, 350));
  int turns = 0;
  ReduceKistlerForces(trial, 0, KistlerFactorsOf(kUnitPlate), 25.0F, [&turns] { ++turns; });
  EXPECT_EQ(turns, 3);
  EXPECT_THROW(ReduceKistlerForces(trial, 1, KistlerFactorsOf(kUnitPlate), 25.0F), std::out_of_range);
}

// h = 0.0413 m: Ax = -(10 h - 40) / 500, Ay = (-20 h + 30) / 500, Tz = Ax (-20) - (Ay 10 + 5).
TEST(AmtiReductionTest, ForcesAndCentreOfPressureAreThoseWorkedByHand) {
  const Samples raw = {10, -20, 500, 30, -40, 5};
  const std::array<float, 6> none = {1, 1, 1, 1, 1, 1};
  Trial trial;
  SetRows(trial, {raw, {1, 1, 24, 1, 1, 1}});
  ReduceAmtiForces(trial, 0, none, 25.0F, MomentUnit::NewtonMetres);
  const Samples expected = {10, -20, 500, 7.9174F, 5.8348F, -7.16696F};
  for (std::size_t k = 0; k < 6; ++k) {
    EXPECT_FLOAT_EQ(Row(trial, 1)[k], expected[k]);
  }
  EXPECT_EQ(Row(trial, 2), Samples(6, 0.0F));
  // Moments in another unit leave the point as it is and divide the free moment; sensitivities go first.
  SetRows(trial, {{20, -40, 1000, 60, -80, 10}});
  ReduceAmtiForces(trial, 0, {0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F}, 25.0F, MomentUnit::NewtonCentimetres);
  EXPECT_FLOAT_EQ(trial.Data(1, 4), 0.079174F);
  EXPECT_FLOAT_EQ(trial.Data(1, 6), -0.0716696F);
  // The height is a 32-bit number: what is left of 1e6 x 0.0413F - 41300.
  SetRows(trial, {{1e6F, 0, 1, 0, -41300, 0}});
  ReduceAmtiForces(trial, 0, none, 0.1F, MomentUnit::NewtonMetres);
  EXPECT_FLOAT_EQ(trial.Data(1, 4), static_cast<float>(100 * (41300 - 1e6 * 0.041299998760223388671875)));
}

TEST(PublishedReductionTest, AForceAtAPointComesOutAtThatPoint) {
  // 10, -20, 500 N at (0.03, -0.07) m of the top, with a free moment of 2 N.m; sensors 0.05 m below it.
  const double x = 0.03;
  const double y = -0.07;
  const double h = 0.05;
  const double Mx = y * 500 + h * -20;
  const double My = -x * 500 - h * 10;
  const double Mz = x * -20 - y * 10 + 2;
  const Samples expected = {10, -20, 500, 3, -7, 2};
  Trial trial;
  SetRows(trial, {{10, -20, 500, static_cast<float>(Mx), static_cast<float>(My), static_cast<float>(Mz)},
                  {10, -20, kNaN, 1, 1, 1}});
  ReduceAmtiAsPublished(trial, 0, {.PlateType = 5, .az0 = 50, .optDistance = 1}, 25.0F);
  for (std::size_t k = 0; k < 6; ++k) {
    EXPECT_NEAR(Row(trial, 1)[k], expected[k], 1e-5);
  }
  EXPECT_EQ(Row(trial, 2), Samples(6, 0.0F));
  // The same load on four sensors: the horizontal pairs and the corners that give these moments.
  const double a = 0.12;
  const double b = 0.2;
  const double fx34 = 10.0 / 2 + Mz / 2 / b;
  const double fx12 = 10.0 / 2 - Mz / 2 / b;
  const double p = Mx / b;  // fz1 + fz2 - fz3 - fz4
  const double q = My / a;  // -fz1 + fz2 + fz3 - fz4
  SetRows(trial, {{static_cast<float>(fx12), static_cast<float>(fx34), -10, -10,
                   static_cast<float>((500 + p - q) / 4), static_cast<float>((500 + p + q) / 4),
                   static_cast<float>((500 - p + q) / 4), static_cast<float>((500 - p - q) / 4)}});
  ForcePlate plate = kUnitPlate;
  ReduceKistlerAsPublished(trial, 0, plate, 25.0F);
  for (std::size_t k = 0; k < 6; ++k) {
    EXPECT_NEAR(Row(trial, 1)[k], expected[k], 1e-4);
  }
  EXPECT_NEAR(trial.Data(1, 7), std::sqrt(500.0), 1e-4);
  EXPECT_NEAR(trial.Data(1, 8), std::sqrt(500.0) / 500, 1e-6);
}

}  // namespace
}  // namespace velmora::test
