#include "statistics/order_statistics.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>

#include "core/trial/transpose.hpp"

namespace velmora {
namespace {

constexpr std::array kPercentiles = {0.05, 0.25, 0.5, 0.75, 0.95};

// Values in the order of their bits: what is smaller as a number is smaller as a whole number; zeros are
// equal.
std::uint32_t KeyOf(float value) {
  const auto bits = std::bit_cast<std::uint32_t>(value + 0.0F);
  return (bits >> 31) != 0 ? ~bits : bits | 0x80000000U;
}

std::uint64_t KeyOf(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value + 0.0);
  return (bits >> 63) != 0 ? ~bits : bits | 0x8000000000000000U;
}

/// A wanted place in ascending order, and the value that stands there.
template <typename Value>
struct Place {
  std::size_t rank;  // among the values at hand, from 0
  Value* value;
};

// Values are told apart by `kBits` of their key at a time; only those that share the digits of a wanted rank
// are looked at again. `places` ascend by rank.
template <typename Value>
void SelectPlaces(std::span<const Value> values, int digit, std::span<const Place<Value>> places) {
  constexpr int kBits = 16;
  constexpr std::size_t kFew = 4096;
  if (values.size() <= kFew || digit < 0) {
    std::vector<Value> sorted(values.begin(), values.end());
    std::sort(sorted.begin(), sorted.end());
    for (const Place<Value>& place : places) {
      *place.value = sorted[place.rank];
    }
    return;
  }
  const int shift = digit * kBits;
  const auto binOf = [shift](Value value) { return (KeyOf(value) >> shift) & ((1U << kBits) - 1); };
  std::vector<std::uint32_t> counts(1U << kBits);
  for (const Value value : values) {
    ++counts[binOf(value)];
  }
  std::size_t before = 0;
  std::size_t bin = 0;
  for (std::size_t k = 0; k < places.size();) {
    while (before + counts[bin] <= places[k].rank) {
      before += counts[bin++];
    }
    std::vector<Place<Value>> inside;
    for (; k < places.size() && places[k].rank < before + counts[bin]; ++k) {
      inside.push_back({places[k].rank - before, places[k].value});
    }
    std::vector<Value> sharing;
    sharing.reserve(counts[bin]);
    for (const Value value : values) {
      if (binOf(value) == bin) {
        sharing.push_back(value);
      }
    }
    SelectPlaces<Value>(sharing, digit - 1, inside);
  }
}

constexpr int kHighestOfFloat = 1;  // digits of 16 bits, from 0
constexpr int kHighestOfDouble = 3;

/// The two order statistics between which a percentile lies.
struct Between {
  std::size_t rank;
  double part;
};

Between BetweenOf(std::size_t count, double p) {
  const double h = static_cast<double>(count - 1) * p;
  const double k = std::floor(h);
  return {static_cast<std::size_t>(k), h - k};
}

double Interpolated(double lower, double upper, double part) {
  return lower + part * (upper - lower);
}

OrderStatistics FromPercentiles(std::size_t count, const std::array<double, kPercentiles.size()>& values) {
  return {.count = static_cast<std::int64_t>(count),
          .median = values[2],
          .p25 = values[1],
          .p75 = values[3],
          .p5 = values[0],
          .p95 = values[4]};
}

double MedianBySelection(std::span<const double> values) {
  const Between at = BetweenOf(values.size(), 0.5);
  double lower = 0.0;
  double upper = 0.0;
  const std::array<Place<double>, 2> places{
      {{at.rank, &lower}, {std::min(at.rank + 1, values.size() - 1), &upper}}};
  SelectPlaces<double>(values, kHighestOfDouble, places);
  return Interpolated(lower, upper, at.part);
}

}  // namespace

double PercentileOf(std::span<const float> ascending, double p) {
  const Between at = BetweenOf(ascending.size(), p);
  const std::size_t next = std::min(at.rank + 1, ascending.size() - 1);
  return Interpolated(ascending[at.rank], ascending[next], at.part);
}

OrderStatistics OrderBySorting(std::vector<float> samples) {
  if (samples.empty()) {
    return {};
  }
  std::sort(samples.begin(), samples.end());
  std::array<double, kPercentiles.size()> values{};
  std::transform(kPercentiles.begin(), kPercentiles.end(), values.begin(),
                 [&](double p) { return PercentileOf(samples, p); });
  OrderStatistics of = FromPercentiles(samples.size(), values);
  std::vector<double> away(samples.size());
  std::transform(samples.begin(), samples.end(), away.begin(),
                 [&](float x) { return std::fabs(static_cast<double>(x) - of.median); });
  std::sort(away.begin(), away.end());
  const Between middle = BetweenOf(away.size(), 0.5);
  of.medianDeviation =
      Interpolated(away[middle.rank], away[std::min(middle.rank + 1, away.size() - 1)], middle.part);
  return of;
}

OrderStatistics OrderBySelection(std::span<const float> samples) {
  if (samples.empty()) {
    return {};
  }
  std::array<std::array<float, 2>, kPercentiles.size()> found{};
  std::vector<Place<float>> places;
  for (std::size_t k = 0; k < kPercentiles.size(); ++k) {
    const std::size_t rank = BetweenOf(samples.size(), kPercentiles[k]).rank;
    places.push_back({rank, found[k].data()});
    places.push_back({std::min(rank + 1, samples.size() - 1), found[k].data() + 1});
  }
  std::stable_sort(places.begin(), places.end(),
                   [](const auto& a, const auto& b) { return a.rank < b.rank; });
  SelectPlaces<float>(samples, kHighestOfFloat, places);
  std::array<double, kPercentiles.size()> values{};
  for (std::size_t k = 0; k < kPercentiles.size(); ++k) {
    values[k] = Interpolated(found[k][0], found[k][1], BetweenOf(samples.size(), kPercentiles[k]).part);
  }
  OrderStatistics of = FromPercentiles(samples.size(), values);
  std::vector<double> away(samples.size());
  std::transform(samples.begin(), samples.end(), away.begin(),
                 [&](float x) { return std::fabs(static_cast<double>(x) - of.median); });
  of.medianDeviation = MedianBySelection(away);
  return of;
}

std::vector<OrderStatistics> OrderChannels(const Trial& trial, const ChannelList& channels, SampleRange range,
                                           const GoesOn& goesOn) {
  constexpr int kAtOnce = 16;  // channels: a cache line of each frame
  const std::int64_t frames = std::int64_t{range.hi} - range.lo + 1;
  std::vector<float> rows(static_cast<std::size_t>(frames) * kAtOnce);
  std::vector<OrderStatistics> all;
  int first = 0;  // channels first + 1 to first + width lie in rows
  int width = 0;
  for (const int c : channels) {
    if (c > first + width) {
      first = c - 1;
      width = std::min<int>(kAtOnce, trial.NChan - first);
      FramesToRows(trial.matrix.Frame(range.lo) + c, trial.matrix.Stride(), width, frames, rows.data(),
                   frames);
    }
    float* row = rows.data() + (c - 1 - first) * frames;
    float* end = std::remove_if(row, row + frames, [](float x) { return !std::isfinite(x); });
    all.push_back(OrderBySelection({row, end}));
    if (!Goes(goesOn, static_cast<double>(all.size()) / static_cast<double>(channels.size()))) {
      return {};
    }
  }
  return all;
}

}  // namespace velmora
