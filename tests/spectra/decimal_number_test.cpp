#include "spectra/decimal_number.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace velmora::test {
namespace {

TEST(DecimalNumber, IsWhatTheShortestTextReadsAs) {
  EXPECT_EQ(DecimalNumber(0.1F), 0.1);
  EXPECT_EQ(DecimalNumber(-2.0F), -2.0);
  EXPECT_EQ(DecimalNumber(16777216.0F), 16777216.0);
  EXPECT_TRUE(std::isnan(DecimalNumber(NAN)));
  EXPECT_EQ(DecimalNumber(-INFINITY), -INFINITY);
  std::mt19937 random(3);
  for (int i = 0; i < 400'000; ++i) {
    const auto any = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    const float noise = static_cast<float>(random()) / 0x1p31F - 1.0F;
    const float volts = static_cast<float>(static_cast<int>(random() % 65536) - 32768) * 0.00030517578125F;
    const float text = static_cast<float>(static_cast<int>(random() % 200'000) - 100'000) / 10'000.0F;
    for (const float value : {any, noise, volts, text}) {
      if (std::isfinite(value)) {
        ASSERT_EQ(DecimalNumber(value), DecimalNumberPlainly(value)) << std::hexfloat << value;
      }
    }
  }
}

}  // namespace
}  // namespace velmora::test
