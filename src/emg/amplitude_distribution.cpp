#include "emg/amplitude_distribution.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

// NaN when a sample is not finite.
float LargestAmplitude(ChannelView samples) {
  float largest = samples[0];
  bool finite = true;
  for (std::int64_t i = 0; i < samples.size(); ++i) {
    const float a = std::fabs(samples[i]);
    finite = finite && std::isfinite(a);
    largest = a > largest ? a : largest;
  }
  return finite ? largest : std::numeric_limits<float>::quiet_NaN();
}

std::vector<double> CountAmplitudes(ChannelView samples, float width, std::int16_t bins) {
  std::vector<double> counts(static_cast<std::size_t>(bins) + 1);
  const auto last = static_cast<float>(bins - 1);
  for (std::int64_t i = 0; i < samples.size(); ++i) {
    const float below = std::min(std::fabs(samples[i]) / width, last);
    counts[static_cast<std::size_t>(below) + 1] += 1;
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
