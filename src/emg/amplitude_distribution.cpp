#include "emg/amplitude_distribution.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "core/cores.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr long kBlock = 1024;
using Block = std::array<float, kBlock>;

#define SIMD_KERNEL "emg/amplitude_lanes.inc"
#include "core/simd_widths.inc"

struct Lanes {
  void (*raiseLargest)(const float* block, std::int32_t* largest);
  void (*placeAmplitudes)(const float* block, float width, float last, std::int32_t* places);
};

Lanes LanesOf(SimdLevel level) {
  return AtLevel<Lanes>(level, {sse2::RaiseLargest, sse2::PlaceAmplitudes},
                        {avx2::RaiseLargest, avx2::PlaceAmplitudes},
                        {avx512::RaiseLargest, avx512::PlaceAmplitudes});
}

// Calls take(block, count) for the samples in turn, side by side; behind the last ones the block holds zeros.
template <typename Take>
void ForBlocks(const ChannelView& samples, const Take& take) {
  Block block{};
  const float* at = samples.data();
  for (std::int64_t first = 0; first < samples.size(); first += kBlock) {
    const auto count = static_cast<std::size_t>(std::min<std::int64_t>(kBlock, samples.size() - first));
    for (std::size_t k = 0; k < count; ++k, at += samples.stride()) {
      block[k] = *at;
    }
    std::fill(block.begin() + static_cast<std::ptrdiff_t>(count), block.end(), 0.0F);
    take(block, count);
  }
}

// For work whose order is nothing to its result.
std::vector<ChannelView> PartsOf(const ChannelView& samples) {
  constexpr std::size_t kFewest = std::size_t{1} << 17;  // of a part: fewer are counted before a thread runs
  const auto size = static_cast<std::size_t>(samples.size());
  const std::size_t count = std::clamp(size / kFewest, std::size_t{1}, PartsForCores());
  std::vector<ChannelView> parts;
  for (std::size_t k = 0; k < count; ++k) {
    const Share share = ShareOf(size, k, count);
    parts.emplace_back(samples.data() + static_cast<std::ptrdiff_t>(share.first) * samples.stride(),
                       samples.stride(), static_cast<std::int64_t>(share.end - share.first));
  }
  return parts;
}

// The bits of the largest magnitude: these are ordered as their bits are, those not finite last.
std::int32_t LargestBits(const ChannelView& samples, const Lanes& lanes) {
  std::array<std::int32_t, kBlock> largest{};
  ForBlocks(samples, [&](const Block& block, std::size_t /*count*/) {
    lanes.raiseLargest(block.data(), largest.data());
  });
  return *std::max_element(largest.begin(), largest.end());
}

// NaN when a sample is not finite.
float LargestAmplitude(const std::vector<ChannelView>& parts, const Lanes& lanes) {
  constexpr std::int32_t kInfinity = 0x7F800000;
  std::vector<std::int32_t> largest(parts.size());
  OnCores(parts.size(), [&](std::size_t k) { largest[k] = LargestBits(parts[k], lanes); });
  const std::int32_t most = *std::max_element(largest.begin(), largest.end());
  return most < kInfinity ? std::bit_cast<float>(most) : std::numeric_limits<float>::quiet_NaN();
}

// Neighbours mostly fall into neighbouring bins: in four tables by turns none waits for the one before.
std::vector<std::int32_t> CountPart(const ChannelView& samples, float width, std::int16_t bins,
                                    const Lanes& lanes) {
  constexpr std::size_t kTables = 4;
  const auto size = static_cast<std::size_t>(bins);
  std::vector<std::int32_t> tables(kTables * size);
  const auto last = static_cast<float>(bins - 1);
  std::array<std::int32_t, kBlock> places{};
  ForBlocks(samples, [&](const Block& block, std::size_t count) {
    lanes.placeAmplitudes(block.data(), width, last, places.data());
    std::fill(places.begin() + static_cast<std::ptrdiff_t>(count), places.end(), -1);
    std::int32_t* table = tables.data();
    for (std::size_t k = 0; k < count; k += kTables) {
      for (std::size_t t = 0; t < kTables && places[k + t] >= 0; ++t) {
        ++table[t * size + static_cast<std::size_t>(places[k + t])];
      }
    }
  });
  for (std::size_t i = size; i < tables.size(); ++i) {
    tables[i % size] += tables[i];
  }
  tables.resize(size);
  return tables;
}

// By bin, from 1.
std::vector<double> CountAmplitudes(const std::vector<ChannelView>& parts, float width, std::int16_t bins,
                                    const Lanes& lanes) {
  std::vector<std::vector<std::int32_t>> counted(parts.size());
  OnCores(parts.size(), [&](std::size_t k) { counted[k] = CountPart(parts[k], width, bins, lanes); });
  std::vector<double> counts(static_cast<std::size_t>(bins) + 1);
  for (const std::vector<std::int32_t>& part : counted) {
    for (std::size_t b = 0; b < part.size(); ++b) {
      counts[b + 1] += part[b];
    }
  }
  return counts;
}

// The place of a level in bins. `reached` says whether a bin ends the search, which each level does in
// its own way.
template <typename Reached>
double PlaceOfLevel(const std::vector<float>& capdf, double level, const Reached& reached) {
  double place = 0.0;
  for (std::size_t b = 1; b < capdf.size(); ++b) {
    const double before = capdf[b - 1];
    const double step = capdf[b] - before;
    if (reached(capdf[b]) || step == 0.0) {
      break;
    }
    place = (level - before) / step + static_cast<double>(b - 1);
  }
  return place;
}

}  // namespace

std::optional<AmplitudeDistribution> ComputeAmplitudeDistribution(Trial& trial, int channel,
                                                                  std::int16_t bins, SimdLevel level) {
  const ChannelView samples = trial.Channel(channel);
  const std::vector<ChannelView> parts = PartsOf(samples);
  const Lanes lanes = LanesOf(level);
  AmplitudeDistribution made;
  made.ApdfBinPercent = 100.0 / bins;
  const auto width = static_cast<float>(LargestAmplitude(parts, lanes) / (made.ApdfBinPercent * 100));
  if (!(width > 0)) {
    return std::nullopt;
  }
  made.ApdfCounts = CountAmplitudes(parts, width, bins, lanes);
  made.Apdf.assign(made.ApdfCounts.size(), 0.0F);
  made.Capdf = made.Apdf;
  for (std::size_t b = 1; b < made.Apdf.size(); ++b) {
    made.Apdf[b] = static_cast<float>(100 * (made.ApdfCounts[b] / static_cast<double>(samples.size())));
    made.Capdf[b] = made.Capdf[b - 1] + made.Apdf[b];
  }
  made.Apdf10 = made.ApdfBinPercent * PlaceOfLevel(made.Capdf, 10, [](float c) { return c >= 10; });
  made.Apdf50 = made.ApdfBinPercent * PlaceOfLevel(made.Capdf, 50, [](float c) { return c > 50; });
  made.Apdf90 = made.ApdfBinPercent * PlaceOfLevel(made.Capdf, 90, [](float c) { return c > 90; });
  return made;
}

std::string DistributionText(const Trial& trial, int channel, const AmplitudeDistribution& distribution,
                             std::string_view pattern) {
  std::string text =
      "Channel: (" + std::to_string(channel - 1) + ")  " + Trim(trial.ChanLabel[channel].Text()) + "\n";
  const auto line = [&](const char* level, double amplitude) {
    text +=
        std::string(" Amplitude of ") + level + "th percentile is " + FormatNumber(amplitude, pattern) + "\n";
  };
  line("10", distribution.Apdf10);
  line("50", distribution.Apdf50);
  line("90", distribution.Apdf90);
  return text;
}

}  // namespace velmora
