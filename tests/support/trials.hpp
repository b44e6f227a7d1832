#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <numeric>
#include <random>
#include <vector>

#include "core/questions/picker.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/trial.hpp"

namespace velmora::test {

using Samples = std::vector<float>;

/// Makes `trial` a finished load of these channels at `rate` Hz.
inline void SetChannels(Trial& trial, const std::vector<std::vector<float>>& channels, double rate = 100.0) {
  const auto samples = static_cast<std::int64_t>(channels.at(0).size());
  trial.Rate = rate;
  trial.AllocateData(static_cast<int>(channels.size()), samples);
  trial.SetChannelDefaults(0);
  for (int c = 1; c <= trial.NChan; ++c) {
    trial.SetChannelDefaults(c);
    for (std::int64_t i = 1; i <= samples; ++i) {
      trial.Data(i, c) = channels[static_cast<std::size_t>(c - 1)][static_cast<std::size_t>(i - 1)];
    }
  }
  trial.RebuildTimeColumn();
  trial.Duration = static_cast<double>(samples - 1) / rate;
  trial.CursorLo = trial.CursorHi = 0;
  NormaliseCursors(trial);
}

inline std::vector<float> Channel(Trial& trial, int c) {
  const ChannelView view = trial.Channel(c);
  std::vector<float> samples;
  for (std::int64_t i = 0; i < view.size(); ++i) {
    samples.push_back(view[i]);
  }
  return samples;
}

inline std::vector<int> SelectedChannels(const ChooserState& chooser) {
  std::vector<int> channels;
  for (int c = 1; c <= kMaxChannels; ++c) {
    if (chooser.ChanSelected[static_cast<std::size_t>(c)]) {
      channels.push_back(c);
    }
  }
  return channels;
}

/// The whole matrix with its time column, as bits.
inline std::vector<std::uint32_t> Bits(const Trial& trial) {
  std::vector<std::uint32_t> bits;
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    for (int c = 0; c <= trial.NChan; ++c) {
      bits.push_back(std::bit_cast<std::uint32_t>(trial.Data(i, c)));
    }
  }
  return bits;
}

/// Whether two vectors are the same bit by bit, NaN and signs of zero included.
inline bool SameBits(const std::vector<float>& a, const std::vector<float>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

/// 1, 2, 3, ...
inline Samples CountingUp(std::size_t samples) {
  Samples up(samples);
  std::iota(up.begin(), up.end(), 1.0F);
  return up;
}

/// Uniform noise in -1..1, the same on every machine.
inline std::vector<std::vector<float>> NoiseChannels(int channels, std::int64_t samples, unsigned seed = 1) {
  std::mt19937 random(seed);
  std::vector<std::vector<float>> all(static_cast<std::size_t>(channels));
  for (auto& channel : all) {
    for (std::int64_t i = 0; i < samples; ++i) {
      channel.push_back(static_cast<float>(random()) / 0x1p31F - 1.0F);
    }
  }
  return all;
}

}  // namespace velmora::test
