#include "emg/amplitude_distribution.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

// NaN when a sample is not finite. Magnitudes are ordered as their bits are, those not finite last.
float LargestAmplitude(ChannelView samples) {
  constexpr std::uint32_t kMagnitude = 0x7FFFFFFFU;
  constexpr std::uint32_t kInfinity = 0x7F800000U;
  std::uint32_t largest = 0;
  const float* at = samples.data();
  for (std::int64_t i = 0; i < samples.size(); ++i, at += samples.stride()) {
    largest = std::max(largest, std::bit_cast<std::uint32_t>(*at) & kMagnitude);
  }
  return largest < kInfinity ? std::bit_cast<float>(largest) : std::numeric_limits<float>::quiet_NaN();
}

// Neighbours mostly fall into neighbouring bins: in four tables by turns none waits for the one before.
std::vector<double> CountAmplitudes(ChannelView samples, float width, std::int16_t bins) {
  constexpr std::int64_t kAtOnce = 1024;
  constexpr std::size_t kTables = 4;
  const auto last = static_cast<float>(bins - 1);
  std::array<std::vector<std::int64_t>, kTables> tables;
  for (std::vector<std::int64_t>& table : tables) {
    table.resize(static_cast<std::size_t>(bins));
  }
  std::array<std::int32_t, kAtOnce> places{};
  const float* at = samples.data();
  for (std::int64_t first = 0; first < samples.size(); first += kAtOnce) {
    const auto count = static_cast<std::size_t>(std::min(kAtOnce, samples.size() - first));
    for (std::size_t k = 0; k < count; ++k, at += samples.stride()) {
      places[k] = static_cast<std::int32_t>(std::min(std::fabs(*at) / width, last));
    }
    for (std::size_t k = 0; k < count; ++k) {
      ++tables[k % kTables][static_cast<std::size_t>(places[k])];
    }
  }
  std::vector<double> counts(static_cast<std::size_t>(bins) + 1);
  for (std::size_t b = 1; b < counts.size(); ++b) {
    for (const std::vector<std::int64_t>& table : tables) {
      counts[b] += static_cast<double>(table[b - 1]);
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
                                                                  std::int16_t bins) {
  const ChannelView samples = trial.Channel(channel);
  AmplitudeDistribution made;
  made.ApdfBinPercent = 100.0 / bins;
  const auto width = static_cast<float>(LargestAmplitude(samples) / (made.ApdfBinPercent * 100));
  if (!(width > 0)) {
    return std::nullopt;
  }
  made.ApdfCounts = CountAmplitudes(samples, width, bins);
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
