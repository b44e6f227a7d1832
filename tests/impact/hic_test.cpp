#include "impact/hic.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include "support/signals.hpp"
#include "support/trials.hpp"

namespace velmora {
namespace {

using Samples = std::vector<float>;

Samples Filled(std::size_t count, float value) {
  return Samples(count, value);
}

// The published example a = sin(20 pi t) g over 0 to 0.05 s, sampled every 0.1 ms.
Samples SineImpact() {
  return test::Sampled(501, [](int i) { return std::sin(20 * std::numbers::pi * i * 1e-4); });
}

TEST(Hic, ClosedForms) {
  // A plateau of a g over T s: a^2.5 T, from its first sample on.
  Samples plateau = Filled(1000, 0.0F);
  std::fill(plateau.begin() + 400, plateau.begin() + 436, 80.0F);
  const Hic flat = FindHic(plateau, 36, 1e-3);
  EXPECT_NEAR(flat.value, std::pow(80.0, 2.5) * 0.036, 0.01);
  EXPECT_EQ(flat.start, 401);
  EXPECT_FLOAT_EQ(flat.spanMilliseconds, 36.0F);

  // The mean of the sine over the window around its crest is (2/w) sin(w T/2), w = 20 pi, T = 30 ms.
  const double mean = 2 / (20 * std::numbers::pi * 0.03) * std::sin(10 * std::numbers::pi * 0.03);
  const Hic sine = FindHic(SineImpact(), 300, 1e-4);
  EXPECT_NEAR(sine.value, std::pow(mean, 2.5) * 0.03, 1e-6);
  EXPECT_NEAR(static_cast<double>(sine.start), 101, 1);  // 0.0100 s

  const Hic short_ = FindHic(Filled(10, 2.0F), 99, 1e-3);  // the window is held to what there is
  EXPECT_NEAR(short_.value, std::pow(2.0, 2.5) * 0.01, 1e-6);
  EXPECT_EQ(short_.start, 1);
  EXPECT_EQ(FindHic({}, 5, 1e-3).start, 0);
  EXPECT_EQ(FindHic(Filled(50, 0.0F), 5, 1e-3).start, 0);
  EXPECT_EQ(HicWindow(36, 20000), 720);
  EXPECT_EQ(HicWindow(2.5, 1000), 2);  // an exact half goes to the even neighbour
  EXPECT_EQ(HicWindow(3, 100), 1);
}

struct Case {
  std::string name;
  Samples a;
};

std::vector<Case> Cases() {
  std::vector<Case> cases = {
      {"constant", Filled(777, 0.3F)},    {"tiny", Filled(300, 1e-20F)},
      {"denormal", Filled(300, 3e-42F)},  {"near the largest number", Filled(300, 2e38F)},
      {"below zero", Filled(200, -1.0F)}, {"sine", SineImpact()},
  };
  Samples noise = test::NoiseChannels(1, 5000, 7)[0];
  cases.push_back({"noise of both signs", noise});
  for (float& x : noise) {
    x = std::fabs(x);
  }
  cases.push_back({"noise", noise});
  Samples impact = noise;
  for (int i = 0; i < 90; ++i) {
    impact[static_cast<std::size_t>(2000 + i)] +=
        150 * std::sin(std::numbers::pi_v<float> * static_cast<float>(i) / 90);
  }
  cases.push_back({"impact", impact});
  Samples ties = Filled(2000, 0.0F);
  for (std::size_t i = 100; i < ties.size(); i += 300) {
    std::fill_n(ties.begin() + static_cast<std::ptrdiff_t>(i), 40, 5.0F);
  }
  cases.push_back({"ties", ties});
  Samples overflow = ties;
  overflow[150] = 1e30F;
  overflow[1200] = 3e30F;  // a larger total, the same infinite criterion: the first one counts
  cases.push_back({"overflow", overflow});
  Samples broken = impact;
  broken[3000] = std::numeric_limits<float>::quiet_NaN();
  cases.push_back({"no number", broken});
  broken[3000] = std::numeric_limits<float>::infinity();
  cases.push_back({"infinite", broken});
  return cases;
}

TEST(Hic, EveryVectorWidthFindsWhatThePlainLoopFinds) {
  for (const Case& tried : Cases()) {
    for (const std::int64_t window : {1, 2, 7, 63, 64, 65, 199, 5000}) {
      const Hic plain = FindHicPlain(tried.a, window, 5e-5);
      for (const SimdLevel level : MachineSimdLevels()) {
        const Hic fast = FindHic(tried.a, window, 5e-5, level);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(fast.value), std::bit_cast<std::uint32_t>(plain.value))
            << tried.name << ", window " << window;
        EXPECT_EQ(fast.start, plain.start) << tried.name << ", window " << window;
        EXPECT_EQ(fast.spanMilliseconds, plain.spanMilliseconds) << tried.name;
      }
    }
  }
}

}  // namespace
}  // namespace velmora
