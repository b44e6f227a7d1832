#include "formats/recording/scale_samples.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

#include "support/trials.hpp"

namespace velmora::test {
namespace {

template <typename Word>
void ExpectSameBits(SimdLevel level, int channels, std::mt19937& random) {
  constexpr int kFrames = 5;
  constexpr int kWordsApart = 70;
  std::vector<Word> words(kFrames * kWordsApart);
  for (Word& word : words) {
    word = static_cast<Word>(static_cast<std::int32_t>(random()) / 65536);
  }
  std::vector<double> offset;
  std::vector<double> gain;
  for (int c = 0; c < channels; ++c) {
    offset.push_back(static_cast<double>(random()) / 1e5 - 2e4);
    gain.push_back(static_cast<double>(random()) / 1e12 - 1e-3);
  }
  std::vector<float> out(static_cast<std::size_t>(kFrames * (channels + 1)), 7.0F);
  ScaleFrames(FramesToScale<Word>{.words = reinterpret_cast<const char*>(words.data()),
                                  .wordStride = kWordsApart * sizeof(Word),
                                  .frames = kFrames,
                                  .channels = channels,
                                  .offset = offset.data(),
                                  .gain = gain.data(),
                                  .general = -0.3,
                                  .out = out.data(),
                                  .outStride = channels + 1},
              level);
  std::vector<float> expected;
  for (std::size_t k = 0; k < kFrames; ++k) {
    for (std::size_t c = 0; c < offset.size(); ++c) {
      expected.push_back(
          static_cast<float>((static_cast<double>(words[k * kWordsApart + c]) + offset[c]) * gain[c] * -0.3));
    }
    expected.push_back(7.0F);
  }
  EXPECT_TRUE(SameBits(out, expected)) << channels;
}

TEST(ScaleSamples, EveryLevelGivesTheBitsOfThePlainLoop) {
  std::mt19937 random(5);
  for (const SimdLevel level : MachineSimdLevels()) {
    for (const int channels : {1, 2, 3, 7, 8, 15, 16, 17, 31, 33, 64}) {
      ExpectSameBits<std::int16_t>(level, channels, random);
      ExpectSameBits<std::uint16_t>(level, channels, random);
      ExpectSameBits<float>(level, channels, random);
      ExpectSameBits<double>(level, channels, random);
    }
    std::vector<std::int16_t> counts(1003);
    std::vector<float> expected;
    int atLimit = 0;
    for (std::int16_t& count : counts) {
      count = static_cast<std::int16_t>(random());
      expected.push_back(static_cast<float>((count + 0.25) * 0.1));
      atLimit += count <= -30000 || count >= 30000 ? 1 : 0;
    }
    std::vector<float> out(counts.size());
    EXPECT_EQ(ScaleRun({.counts = reinterpret_cast<const char*>(counts.data()),
                        .samples = 1003,
                        .offset = 0.25,
                        .gain = 0.1,
                        .lowest = -30000,
                        .highest = 30000,
                        .out = out.data()},
                       level),
              atLimit);
    EXPECT_TRUE(SameBits(out, expected));
  }
}

TEST(ScaleSamples, WhatIsNoNumberIsFoundWhereverItIs) {
  std::vector<float> values(67, std::numeric_limits<float>::max());
  for (const SimdLevel level : MachineSimdLevels()) {
    EXPECT_TRUE(AreFinite(values.data(), 67, level));
    for (std::size_t k = 0; k < values.size(); ++k) {
      for (const float wrong :
           {std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::infinity()}) {
        values[k] = wrong;
        EXPECT_FALSE(AreFinite(values.data(), 67, level)) << k;
      }
      values[k] = -0.0F;
    }
  }
}

}  // namespace
}  // namespace velmora::test
