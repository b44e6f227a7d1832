#include "dsp/filters/recursive_filter.hpp"

#include <cmath>
#include <complex>
#include <numbers>

#include "support/number_rows.hpp"
#include "support/recordings.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

using Outcome = FilterVerdict::Outcome;
using ChannelRoutine = FilterVerdict (*)(Trial&, int, SampleRange, const FilterSettings&);

// A critically damped section at a quarter of the rate has the tangent 1, so b1 and b2 vanish and
// a0 is 1/4: y = (x0 + 2 x1 + x2) / 4 for low-pass, (x0 - 2 x1 + x2) / 4 for high-pass. These are
// the rates that put an 8 Hz cut-off there, for n sections in all.
constexpr float kQuarterCutoff = 8.0F;
double QuarterRate(PassType type, int n) {
  const double correction = std::sqrt(std::exp2(1.0 / (2 * n)) - 1);
  return type == PassType::Low ? 4.0 * static_cast<float>(static_cast<float>(1 / correction) * 8.0)
                               : 4.0 * (static_cast<float>(correction) * 8.0);
}

// Both the channel and the array routine, which must agree.
Samples RunQuarter(const Samples& x, PassType type, FilterSettings settings) {
  settings.Cutoff = kQuarterCutoff;
  settings.IsCritical = true;
  const double rate = QuarterRate(type, settings.Passes * (settings.IsZeroLag ? 2 : 1));
  Trial trial;
  SetChannels(trial, {x, x, x}, rate);
  const bool low = type == PassType::Low;
  const SampleRange all{1, trial.NData};
  EXPECT_TRUE((low ? LowPassChannel : HighPassChannel)(trial, 2, all, settings).Accepted());
  EXPECT_EQ(Channel(trial, 1), x);
  EXPECT_EQ(Channel(trial, 3), x);
  Samples values = x;
  EXPECT_TRUE((low ? LowPassArray : HighPassArray)(values, rate, settings).Accepted());
  EXPECT_EQ(values, Channel(trial, 2));
  return values;
}

TEST(RecursiveFilter, PassesAndPaddingsByHand) {
  const Samples x = {4, 8, 0, 16, 12};
  const auto low = [&x](FilterSettings settings) { return RunQuarter(x, PassType::Low, settings); };
  // The first two samples are the initial condition; backward, so are the last two.
  EXPECT_EQ(low({}), (Samples{4, 8, 5, 6, 11}));
  EXPECT_EQ(low({.Passes = 2}), (Samples{4, 8, 6.25F, 6, 7}));
  EXPECT_EQ(low({.IsZeroLag = true}), (Samples{6.25F, 6, 7, 6, 11}));
  // Reflected: 8 0 | 4 8 0 16 12 | 8 24, forward 8 0 | 3 4 5 6 11 | 12 13.
  EXPECT_EQ(low({.Padding = 2}), (Samples{3, 4, 5, 6, 11}));
  EXPECT_EQ(low({.Padding = 2, .IsZeroLag = true}), (Samples{4, 5, 7, 10, 12}));
  // Zeros, forward 0 0 | 1 4 5 6 11 | 10 3.
  EXPECT_EQ(low({.Padding = 2, .IsZeroLag = true, .PadZeros = true}), (Samples{3.5F, 5, 7, 9.5F, 8.5F}));
  // Means: (4 + 8) / 2 in front and (0 + 16 + 12) / 2 behind; forward 6 6 | 5.5 5.5 5 6 11 | 13.5 13.5.
  const Samples means = {5.375F, 5.375F, 7, 10.375F, 12.875F};
  EXPECT_EQ(low({.Padding = -2, .IsZeroLag = true}), means);
  EXPECT_EQ(low({.Padding = -2, .IsZeroLag = true, .PadZeros = true}), means);

  EXPECT_EQ(RunQuarter(x, PassType::High, {}), (Samples{4, 8, -3, 6, -5}));
  EXPECT_EQ(RunQuarter(x, PassType::High, {.IsZeroLag = true}), (Samples{-3.75F, 5, -5, 6, -5}));
}

TEST(RecursiveFilter, RangesMeansAndRectification) {
  Trial trial;
  const double rate = QuarterRate(PassType::Low, 1);
  FilterSettings settings{.Cutoff = kQuarterCutoff, .Padding = -1, .IsCritical = true};
  // The mean in front is that of the first samples of the channel: 4 | 8 0 16 | 16.
  SetChannels(trial, {{4, 8, 0, 16, 12}}, rate);
  LowPassChannel(trial, 1, {2, 4}, settings);
  EXPECT_EQ(Channel(trial, 1), (Samples{4, 8, 5, 6, 12}));

  // 2^24 + 1 + 1 in 32 bits is 2^24, a third of it 5592405.5 (a 64-bit sum would give 5592406).
  SetChannels(trial, {{16777216, 1, 1, 0, 0, 0, 0}}, rate);
  settings.Padding = -3;
  LowPassChannel(trial, 1, {4, 100}, settings);
  EXPECT_EQ(Channel(trial, 1), (Samples{16777216, 1, 1, 4194304, 1398101.375F, 0, 0}));

  SetChannels(trial, {{-4, 8, 0, -16, -12}}, rate);
  LowPassChannel(trial, 1, {1, 5}, {.Cutoff = kQuarterCutoff, .IsCritical = true, .Rectify = true});
  EXPECT_EQ(Channel(trial, 1), (Samples{4, 8, 5, 6, 11}));
  // A refused cut-off leaves the channel rectified.
  SetChannels(trial, {{-4, 8, 0, -16, -12}}, rate);
  EXPECT_FALSE(LowPassChannel(trial, 1, {1, 3}, {.Cutoff = 1e6F, .Rectify = true}).Accepted());
  EXPECT_EQ(Channel(trial, 1), (Samples{4, 8, 0, -16, -12}));

  EXPECT_THROW(LowPassChannel(trial, 1, {0, 3}, settings), std::out_of_range);
  EXPECT_THROW(LowPassChannel(trial, 1, {3, 4}, {.Cutoff = 1, .Padding = 4}), std::out_of_range);
  EXPECT_THROW(LowPassChannel(trial, 2, {1, 3}, settings), std::out_of_range);
}

TEST(RecursiveFilter, PaddingIsCutToTheTrialAndInChannelsToTwoHundred) {
  const Samples x = NoiseChannels(1, 500)[0];
  const auto channel = [&x](std::int32_t padding, std::size_t samples) {
    Trial trial;
    SetChannels(trial, {Samples(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(samples))});
    LowPassChannel(trial, 1, {1, trial.NData}, {.Cutoff = 0.1F, .Padding = padding, .IsZeroLag = true});
    return Channel(trial, 1);
  };
  const auto array = [&x](std::int32_t padding) {
    Samples values = x;
    LowPassArray(values, 100.0, {.Cutoff = 0.1F, .Padding = padding, .IsZeroLag = true});
    return values;
  };
  EXPECT_EQ(channel(300, 500), channel(200, 500));
  EXPECT_EQ(channel(-201, 500), channel(-200, 500));
  EXPECT_NE(channel(199, 500), channel(200, 500));
  EXPECT_EQ(array(200), channel(200, 500));
  EXPECT_NE(array(300), array(200));
  EXPECT_EQ(array(30000), array(499));
  EXPECT_EQ(channel(150, 100), channel(99, 100));
  // Too short for a single step of the recursion.
  for (const std::size_t samples : {1U, 2U}) {
    EXPECT_EQ(channel(0, samples), Samples(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(samples)));
  }
  EXPECT_EQ(channel(10, 1), Samples{x[0]});
}

// The response to an impulse, transformed at one frequency (cycles per sample).
std::complex<double> ResponseAt(double frequency, const Samples& impulseResponse, std::size_t origin) {
  std::complex<double> sum;
  for (std::size_t i = 0; i < impulseResponse.size(); ++i) {
    const double angle =
        -2 * std::numbers::pi * frequency * (static_cast<double>(i) - static_cast<double>(origin));
    sum += static_cast<double>(impulseResponse[i]) * std::polar(1.0, angle);
  }
  return sum;
}

TEST(RecursiveFilter, EveryCascadeIsThreeDecibelsDownAtItsCutoff) {
  struct Design {
    const char* name;
    ChannelRoutine low;
    ChannelRoutine high;
    bool critical;
  };
  const Design designs[] = {{"Butterworth", LowPassChannel, HighPassChannel, false},
                            {"critically damped", LowPassChannel, HighPassChannel, true},
                            {"Bessel", LowPassBesselChannel, HighPassBesselChannel, false}};
  // The correction is one of the analog filter; what the bilinear transform adds at a hundredth of the
  // rate stays below 4e-3.
  constexpr std::size_t size = 8192;
  constexpr std::size_t middle = size / 2;
  Samples impulse(size);
  impulse[middle] = 1.0F;
  for (const Design& design : designs) {
    for (const int passes : {1, 2, 4}) {
      for (const bool zeroLag : {false, true}) {
        SCOPED_TRACE(testing::Message() << design.name << ", " << passes << (zeroLag ? ", zero lag" : ""));
        const FilterSettings settings{.Cutoff = 10.0F,
                                      .Passes = static_cast<std::int16_t>(passes),
                                      .IsZeroLag = zeroLag,
                                      .IsCritical = design.critical};
        Trial trial;
        SetChannels(trial, {impulse, impulse}, 1000.0);
        design.low(trial, 1, {1, size}, settings);
        design.high(trial, 2, {1, size}, settings);
        const Samples low = Channel(trial, 1);
        const Samples high = Channel(trial, 2);
        EXPECT_NEAR(std::abs(ResponseAt(0.01, low, middle)), std::numbers::sqrt2 / 2, 4e-3);
        EXPECT_NEAR(std::abs(ResponseAt(0.01, high, middle)), std::numbers::sqrt2 / 2, 4e-3);
        EXPECT_NEAR(std::abs(ResponseAt(0.0, low, middle)), 1.0, 1e-3);
        EXPECT_NEAR(std::abs(ResponseAt(0.0, high, middle)), 0.0, 1e-3);
        EXPECT_LT(std::abs(ResponseAt(0.3, low, middle)), 2e-3);
        EXPECT_NEAR(std::abs(ResponseAt(0.5, high, middle)), 1.0, 1e-3);
        const double phase = std::arg(ResponseAt(0.01, low, middle));
        if (zeroLag) {
          EXPECT_NEAR(phase, 0.0, 1e-3);
        } else {
          EXPECT_GT(std::abs(phase), 0.3);
        }
        EXPECT_NEAR(low.back(), 0.0F, 1e-6F);
        EXPECT_NEAR(high.back(), 0.0F, 1e-6F);
      }
    }
  }
}

// Bits of an implementation of its own in another language, with every store rounded as here.
TEST(RecursiveFilter, BitsOfAnIndependentCalculation) {
  const Samples x = {1.25F, -0.5F, 3.75F, 2.0F, 0.125F, -4.5F, -1.0F, 0.75F};
  struct Case {
    ChannelRoutine routine;
    FilterSettings settings;
    Samples expected;
  };
  const Case cases[] = {
      {LowPassChannel,
       {.Cutoff = 6.0F, .Padding = 4, .IsZeroLag = true},
       {0x1.6e7a6cp+0F, 0x1.bb24a6p+0F, 0x1.aafbb0p+0F, 0x1.bd6e6ap-1F, -0x1.e09f92p-2F, -0x1.59f260p+0F,
        -0x1.e28c42p-1F, 0x1.20f458p-1F}},
      {LowPassChannel,
       {.Cutoff = 4.5F, .Passes = 2, .Padding = 4, .IsZeroLag = true, .IsCritical = true},
       {0x1.3f6ab4p+0F, 0x1.7ba2c8p+0F, 0x1.cb02a4p+0F, 0x1.3f49d0p+0F, -0x1.74c408p-2F, -0x1.9465eep+0F,
        -0x1.12c57cp+0F, 0x1.797f9cp-1F}},
      {LowPassBesselChannel,
       {.Cutoff = 7.0F, .Passes = 3, .Padding = 4},
       {0x1.02cf8cp-1F, 0x1.7dd59ap-1F, 0x1.37f636p+0F, 0x1.66fd3ap+0F, 0x1.927324p+0F, 0x1.b7f61ep+0F,
        0x1.a4d15ap-1F, -0x1.076484p+0F}},
      {HighPassChannel,
       {.Cutoff = 3.0F, .Passes = 2, .Padding = 4, .IsZeroLag = true},
       {0x1.f17b94p-3F, -0x1.92aac8p+0F, 0x1.492efcp+1F, 0x1.5d5450p-1F, -0x1.5dabb2p+0F, -0x1.8ca81ep+2F,
        -0x1.762c48p+1F, -0x1.601cd6p+0F}},
      {HighPassBesselChannel,
       {.Cutoff = 2.0F, .Padding = 4, .IsZeroLag = true},
       {0x1.14b922p-7F, -0x1.b5d88cp+0F, 0x1.489712p+1F, 0x1.bcd34ap-1F, -0x1.ddae4ep-1F, -0x1.60b4aap+2F,
        -0x1.0343c0p+1F, -0x1.4f2e3ep-2F}},
  };
  for (const Case& one : cases) {
    Trial trial;
    SetChannels(trial, {x}, 50.0);
    one.routine(trial, 1, {1, 8}, one.settings);
    EXPECT_EQ(Channel(trial, 1), one.expected) << one.settings.Cutoff;
  }
}

TEST(RecursiveFilter, LimitsOfTheCutoff) {
  // One pass without zero lag leaves the cut-off as it is, so half the rate itself passes, and there
  // the section is the identity: a0 = 1, b1 = -2, b2 = -1.
  Samples values = {3, 1, 4, 1, 5, 9, 2, 6};
  const Samples before = values;
  EXPECT_TRUE(LowPassArray(values, 100.0, {.Cutoff = 50.0F}).Accepted());
  EXPECT_EQ(values, before);
  FilterVerdict verdict = LowPassArray(values, 100.0, {.Cutoff = std::nextafter(50.0F, 51.0F)});
  EXPECT_EQ(verdict.outcome, Outcome::LowPassTooHigh);
  verdict = LowPassArray(values, 100.0, {.Cutoff = 45.0F, .IsZeroLag = true});
  EXPECT_EQ(verdict.outcome, Outcome::LowPassTooHigh);
  const double correction = std::pow(std::numbers::sqrt2 - 1, 0.25);  // 0.802, two passes
  EXPECT_NEAR(verdict.number, 45.0 / correction, 1e-5);
  EXPECT_NEAR(verdict.limit, 50.0 * correction, 1e-5);

  // High-pass: the factor multiplies, so up to rate / 2 / 0.802.
  EXPECT_TRUE(HighPassArray(values, 100.0, {.Cutoff = 62.0F, .IsZeroLag = true}).Accepted());
  values = before;
  verdict = HighPassArray(values, 100.0, {.Cutoff = 63.0F, .IsZeroLag = true});
  EXPECT_EQ(verdict.outcome, Outcome::HighPassTooHigh);
  EXPECT_NEAR(verdict.number, 0.5 - 0.63 * correction, 1e-6);
  EXPECT_NEAR(verdict.limit, 50.0 / correction, 1e-5);
  EXPECT_EQ(HighPassArray(values, 0.5, {.Cutoff = 0.1F}).outcome, Outcome::HighPassAdjustedTooHigh);

  EXPECT_FALSE(HighPassArray(values, 14597.0, {.Cutoff = 1.0F}).lowestUseful);
  verdict = HighPassArray(values, 14597.0, {.Cutoff = std::nextafter(1.0F, 0.0F)});
  EXPECT_TRUE(verdict.Accepted());
  EXPECT_EQ(verdict.lowestUseful, 1.0);
  EXPECT_NE(values, before) << "a warning does not stop the filter";

  values = before;
  EXPECT_EQ(LowPassArray(values, 100.0, {.Cutoff = 1e-30F}).outcome, Outcome::CutoffTooLow);
  EXPECT_EQ(LowPassArray(values, 100.0, {.Cutoff = 5.0F, .Passes = 0}).outcome, Outcome::TooFewPasses);
  EXPECT_EQ(LowPassArray(values, 100.0, {.Cutoff = 5.0F, .Passes = -3}).outcome, Outcome::TooFewPasses);
  EXPECT_EQ(LowPassArray(values, 100.0, {.Cutoff = 5.0F, .Passes = 20000, .IsZeroLag = true}).outcome,
            Outcome::TooManyPasses);
  EXPECT_EQ(LowPassArray(values, 0.0, {.Cutoff = 5.0F}).outcome, Outcome::LowPassTooHigh);
  EXPECT_EQ(values, before);
  EXPECT_TRUE(LowPassArray({}, 100.0, {.Cutoff = 5.0F}).Accepted());
}

// Vint and Hinrichs (J. Biomechanics 29, 1996) smoothed the arm's angle of Pezzack, Norman and Winter with a
// Butterworth filter run forward and backward and held its second difference against the acceleration
// measured at the same time.
TEST(RecursiveFilter, PublishedErrorsOfAFilmedAcceleration) {
  const auto path = Recording("reference/Pezzack.txt");
  if (!path) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  Samples angle;
  std::vector<double> measured;
  for (const auto& row : NumbersOf(*path)) {  // time, raw, noisy, acceleration
    angle.push_back(static_cast<float>(row.at(1)));
    measured.push_back(row.at(3));
  }
  ASSERT_EQ(angle.size(), 142U);
  const double step = 0.0201;
  const auto errorAt = [&](float cutoff) {
    Samples smooth = angle;
    LowPassArray(smooth, 1 / step, {.Cutoff = cutoff, .Padding = 28, .IsZeroLag = true});
    double squares = 0;
    for (std::size_t i = 1; i + 1 < smooth.size(); ++i) {
      const double second =
          (double{smooth[i + 1]} - 2.0 * double{smooth[i]} + double{smooth[i - 1]}) / (step * step);
      squares += (second - measured[i]) * (second - measured[i]);
    }
    return std::sqrt(squares / static_cast<double>(smooth.size() - 2));
  };
  EXPECT_NEAR(errorAt(9.0F), 4.45, 0.005);
  EXPECT_NEAR(errorAt(5.59F), 4.22, 0.005);
}

}  // namespace
}  // namespace velmora::test
