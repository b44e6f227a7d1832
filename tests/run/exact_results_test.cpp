// A whole recipe against numbers worked out from the bytes of its files alone.
#include <cstring>

#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/recipe_run.hpp"
#include "support/command_test.hpp"
#include "support/native_file.hpp"

namespace velmora::test {
namespace {

constexpr std::size_t kSamples = 3001;
constexpr std::size_t kChannels = 5;

float SampleAt(const std::string& file, std::size_t channel, std::size_t i) {
  float value = 0;
  std::memcpy(&value, file.data() + kSamplesAt + 4 * (channel * kSamples + i), sizeof value);
  return value;
}

TEST(ExactResults, DerivativesAndScalingSavedToTheBit) {
  const TemporaryDirectory directory;
  const std::string source = directory.Path("source.vmb");
  const std::string result = directory.Path("result.vmb");
  WriteTrialFile(source,
                 [](Trial& trial) { SetChannels(trial, NoiseChannels(kChannels, kSamples, 11), 960.0); });
  const Outcome outcome = RecipeRun({}).Run(ReadRecipe(R"(velmora2: 1
steps:
  - do: file.load
    file: "${in}"
  - do: math.differentiate
    answers: [pick: {channels: [2, 5]}]
  - do: analysis.scaling
    answers: [pick: {values: {3: 9.80665}}]
  - do: save.vmb
    answers: [file: "${out}"]
)",
                                                       "r.yaml", {{"in", source}, {"out", result}}));
  ASSERT_FALSE(outcome.failure) << outcome.failure->why;

  const std::string before = ReadFile(source);
  const std::string after = ReadFile(result);
  ASSERT_EQ(after.size(), kSamplesAt + 4 * kSamples * (kChannels + 1));
  const double step = 1.0 / 960.0;
  for (std::size_t c = 0; c <= kChannels; ++c) {
    for (std::size_t i = 0; i < kSamples; ++i) {
      const auto x = [&](std::size_t k) { return static_cast<double>(SampleAt(before, c, k)); };
      double expected = x(i);
      if (c == 2 || c == 5) {
        const std::size_t left = i == 0 ? 0 : i - 1;
        const std::size_t right = i + 1 == kSamples ? i : i + 1;
        expected = (x(right) - x(left)) / (right - left == 2 ? step + step : step);
      } else if (c == 3) {
        expected = x(i) * static_cast<double>(9.80665F);
      }
      const auto rounded = static_cast<float>(expected);
      const float saved = SampleAt(after, c, i);
      ASSERT_EQ(std::memcmp(&saved, &rounded, sizeof rounded), 0) << "channel " << c << ", sample " << i;
    }
  }
  double gain = 0;
  std::memcpy(&gain, after.data() + 982 + 8 * 3, sizeof gain);
  EXPECT_EQ(gain, static_cast<double>(9.80665F));
}

}  // namespace
}  // namespace velmora::test
