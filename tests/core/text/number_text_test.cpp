#include "core/text/number_text.hpp"

#include <bit>
#include <charconv>
#include <limits>
#include <random>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

std::string Shortest(float value) {
  char text[kLongestNumber];
  return {text, PutShortest(text, value)};
}

std::string Library(float value) {
  char text[kLongestNumber];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string Fixed(float value, int decimals, int width) {
  char text[kLongestNumber];
  return {text, PutFixed(text, value, decimals, width)};
}

// Values where an algorithm of this kind goes wrong: powers of two (an uneven interval), powers of
// ten, both ends of the fast range, and their neighbours.
std::vector<float> HardValues() {
  std::vector<float> values = {0.0F, std::numeric_limits<float>::infinity(),
                               std::numeric_limits<float>::quiet_NaN()};
  for (int e = -149; e < 128; ++e) {
    values.push_back(std::ldexp(1.0F, e));
  }
  for (int e = -45; e < 39; ++e) {
    for (const double digits : {1.0, 2.0, 1.2, 9.0, 9.99, 1.25, 1.6777216}) {
      values.push_back(static_cast<float>(digits * std::pow(10.0, e)));
    }
  }
  const std::size_t count = values.size();
  for (std::size_t i = 0; i < count; ++i) {
    for (int step = 1; step < 9; ++step) {
      values.push_back(
          std::bit_cast<float>(std::bit_cast<std::uint32_t>(values[i]) + static_cast<std::uint32_t>(step)));
      values.push_back(
          std::bit_cast<float>(std::bit_cast<std::uint32_t>(values[i]) - static_cast<std::uint32_t>(step)));
    }
  }
  return values;
}

TEST(PutShortest, TheBytesOfTheLibrary) {
  for (const float value : HardValues()) {
    ASSERT_EQ(Shortest(value), Library(value));
    ASSERT_EQ(Shortest(-value), Library(-value));
  }
  std::mt19937 random(7);
  for (int i = 0; i < 200000; ++i) {
    // Any bits; a sample of ordinary size; one with few decimals, as converters of old give.
    const auto bits = static_cast<std::uint32_t>(random());
    const float any = std::bit_cast<float>(bits);
    const float ordinary =
        std::bit_cast<float>((bits & 0x80FFFFFFU) | ((0x72U + (bits >> 24U & 0x1FU)) << 23U));
    const float few = static_cast<float>(static_cast<int>(bits % 2000001U) - 1000000) / 1000.0F;
    for (const float value : {any, ordinary, few}) {
      ASSERT_EQ(Shortest(value), Library(value)) << std::bit_cast<std::uint32_t>(value);
    }
  }
}

TEST(PutFixed, TheBytesOfTheNumberPattern) {
  EXPECT_EQ(Fixed(-1.5F, 4, 10), "   -1.5000");
  EXPECT_EQ(Fixed(0.00005F, 4, 10), "    0.0000") << "a little less than half";
  EXPECT_EQ(Fixed(0.03125F, 4, 0), "0.0312") << "an exact half goes to the even digit";
  EXPECT_EQ(Fixed(0.09375F, 4, 0), "0.0938");
  EXPECT_EQ(Fixed(123456.789F, 4, 10), "123456.7891") << "never cut";
  std::vector<float> values = HardValues();
  std::mt19937 random(8);
  for (int i = 0; i < 100000; ++i) {
    values.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
    values.push_back(static_cast<float>(random()) / 0x1p22F - 512.0F);
  }
  for (const float value : values) {
    ASSERT_EQ(Fixed(value, 4, 10), PadLeft(FormatNumber(value, "0.0000"), 10));
    ASSERT_EQ(Fixed(-value, 5, 0), FormatNumber(-value, "0.00000"));
  }
}

}  // namespace
}  // namespace velmora
