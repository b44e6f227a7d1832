#include "formats/recording/columns_in_memory.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

#include "core/files/files.hpp"
#include "core/text/text.hpp"
#include "formats/recording/interleaved.hpp"
#include "formats/recording/usable_rate.hpp"
#include "formats/text_table/text_table.hpp"

namespace velmora {

void ColumnsInMemory::AddColumn(RecordedChannel channel, std::vector<float> samples) {
  channel.rate = UsableRate(channel.rate);
  channel.samples = static_cast<std::int64_t>(samples.size());
  found_.channels.push_back(std::move(channel));
  columns_.push_back(std::move(samples));
}

std::int64_t ColumnsInMemory::ReadSamples(const SampleTarget& target) {
  constexpr std::int64_t kSamplesAtOnce =
      256;  // samples, whose frames stay in a cache while the columns go in
  constexpr std::int64_t kPortionsInATurn = 64;
  const std::int64_t wanted = target.matrix.Samples();
  for (std::int64_t first = 0; first < wanted; first += kSamplesAtOnce) {
    if (first / kSamplesAtOnce % kPortionsInATurn == 0 &&
        target.turn(static_cast<double>(first) / static_cast<double>(wanted))) {
      return 0;
    }
    int column = 0;
    for (const int c : target.channels) {
      const std::vector<float>& from = columns_[static_cast<std::size_t>(c)];
      const ChannelView to = target.matrix.Channel(++column);
      const auto end = std::min({first + kSamplesAtOnce, wanted, static_cast<std::int64_t>(from.size())});
      for (std::int64_t i = first; i < end; ++i) {
        to[i] = from[static_cast<std::size_t>(i)];
      }
    }
  }
  StoreTimes(1, wanted, target);
  return wanted;
}

std::vector<float> SamplesOf(const std::vector<double>& values, const std::string& name,
                             std::int64_t& missing) {
  constexpr double kLargest = std::numeric_limits<float>::max();
  std::vector<float> samples;
  samples.reserve(values.size());
  for (const double value : values) {
    missing += std::isnan(value) ? 1 : 0;
    if (std::abs(value) > kLargest) {
      throw FileError("a value of " + name + " is infinite or too large");
    }
    samples.push_back(std::isnan(value) ? 0.0F : static_cast<float>(value));
  }
  return samples;
}

double RateOfTimes(const std::vector<double>& times) {
  if (times.size() < 2 || !std::isfinite(times.front()) || !std::isfinite(times.back())) {
    return 0.0;
  }
  for (std::size_t i = 1; i < times.size(); ++i) {
    if (!(times[i] > times[i - 1])) {
      return 0.0;
    }
  }
  return RateFromTimes(static_cast<double>(times.size() - 1) / (times.back() - times.front()));
}

bool NamesRate(const std::string& name) {
  constexpr std::array<std::string_view, 13> kNames = {"fs",
                                                       "fsamp",
                                                       "rate",
                                                       "sf",
                                                       "samplerate",
                                                       "sample_rate",
                                                       "sample rate",
                                                       "framerate",
                                                       "sampling rate",
                                                       "sampling_rate",
                                                       "samplingrate",
                                                       "frequency",
                                                       "sfreq"};
  return std::any_of(kNames.begin(), kNames.end(),
                     [&name](std::string_view known) { return EqualNoCase(name, known); });
}

bool IsTooLargeFor(std::int64_t arrayBytes, std::int64_t fileBytes) {
  constexpr std::int64_t kMostPacked = 1100;  // of the usual compression, a little more than its most
  return arrayBytes < 0 || arrayBytes / kMostPacked > fileBytes;
}

}  // namespace velmora
