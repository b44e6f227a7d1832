#include "spectra/decimal_number.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>
#include <vector>

namespace velmora::test {
namespace {

TEST(DecimalNumbers, AreWhatTheShortestTextsReadAs) {
  std::vector<float> values = {0.1F, -2.0F,     16777216.0F, 0.0F,   -0.0F, 1e-9F,  99999.99F,
                               1e5F, -INFINITY, 1e30F,       1e-40F, 0.01F, 0.001F, 9.9999e-5F};
  std::mt19937 random(3);
  for (int i = 0; i < 400'000; ++i) {
    const auto any = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    values.push_back(std::isnan(any) ? 0.0F : any);
    values.push_back(static_cast<float>(random()) / 0x1p31F - 1.0F);
    values.push_back(static_cast<float>(static_cast<int>(random() % 65536) - 32768) * 0.00030517578125F);
    values.push_back(static_cast<float>(static_cast<int>(random() % 200'000) - 100'000) / 10'000.0F);
    values.push_back(std::ldexp(static_cast<float>(random()), static_cast<int>(random() % 60) - 70));
  }
  std::vector<double> numbers(values.size());
  for (const SimdLevel level : MachineSimdLevels()) {
    DecimalNumbers(values, numbers, level);
    EXPECT_EQ(numbers[0], 0.1);
    EXPECT_EQ(numbers[2], 16777216.0);
    for (std::size_t i = 0; i < values.size(); ++i) {
      const double exact = DecimalNumberPlainly(values[i]);
      ASSERT_EQ(std::bit_cast<std::uint64_t>(numbers[i]), std::bit_cast<std::uint64_t>(exact))
          << std::hexfloat << values[i];
    }
  }
  const float none[] = {NAN};
  DecimalNumbers(none, numbers);
  EXPECT_TRUE(std::isnan(numbers[0]));
}

}  // namespace
}  // namespace velmora::test
