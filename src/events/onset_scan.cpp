#include "events/onset_scan.hpp"

#include <algorithm>

namespace velmora {
namespace {

constexpr std::int32_t kScanFrames = 256;  // frames that stay in the second-level cache
constexpr std::int32_t kStretch = 16;      // samples that are tested without a branch

/// The first of n strided samples for which the test holds; n when there is none.
template <typename Test>
std::int32_t FindFirst(const float* samples, std::ptrdiff_t stride, std::int32_t n, const Test& test) {
  std::int32_t i = 0;
  for (; i + kStretch <= n; i += kStretch) {
    int any = 0;
    for (std::int32_t k = 0; k < kStretch; ++k) {
      any |= static_cast<int>(test(samples[(i + k) * stride]));
    }
    if (any != 0) {
      break;
    }
  }
  while (i < n && !test(samples[i * stride])) {
    ++i;
  }
  return i;
}

/// A channel on its way through the range.
struct Scan {
  ScannedChannel of;
  Burst burst;

  [[nodiscard]] bool Done() const { return burst.offset != 0; }
};

std::int32_t FindAbove(const float* samples, std::ptrdiff_t stride, std::int32_t n, float level) {
  return FindFirst(samples, stride, n, [level](float x) { return x > level; });
}

std::int32_t FindBelow(const float* samples, std::ptrdiff_t stride, std::int32_t n, float level) {
  return FindFirst(samples, stride, n, [level](float x) { return x < level; });
}

// Frames i to i + n - 1.
void Advance(Scan& scan, const SampleMatrix& matrix, std::int32_t i, std::int32_t n) {
  const bool upwards = scan.of.threshold >= 0;
  const std::ptrdiff_t stride = matrix.Stride();
  const float* samples = matrix.Frame(i) + scan.of.channel;
  std::int32_t from = 0;
  if (scan.burst.onset == 0) {
    from = (upwards ? FindAbove : FindBelow)(samples, stride, n, scan.of.threshold);
    if (from == n) {
      return;
    }
    scan.burst.onset = i + from;
    ++from;
  }
  const std::int32_t left = n - from;
  const std::int32_t at =
      left > 0 ? (upwards ? FindBelow : FindAbove)(samples + from * stride, stride, left, scan.of.threshold)
               : 0;
  if (at < left) {
    scan.burst.offset = i + from + at;
  }
}

void EndWithRange(Burst& burst, SampleRange range) {
  if (burst.onset != 0 && burst.offset == 0) {
    burst.offset = range.hi;
  }
}

}  // namespace

std::vector<Burst> FindBursts(const Trial& trial, std::span<const ScannedChannel> channels,
                              SampleRange range) {
  std::vector<Scan> scans;
  std::transform(channels.begin(), channels.end(), std::back_inserter(scans),
                 [](const ScannedChannel& of) { return Scan{.of = of, .burst = {}}; });
  bool busy = !scans.empty();
  for (std::int64_t i = range.lo; i <= range.hi && busy; i += kScanFrames) {
    const auto n = static_cast<std::int32_t>(std::min<std::int64_t>(kScanFrames, range.hi - i + 1));
    busy = false;
    for (Scan& scan : scans) {
      if (!scan.Done()) {
        Advance(scan, trial.matrix, static_cast<std::int32_t>(i), n);
        busy = busy || !scan.Done();
      }
    }
  }
  std::vector<Burst> bursts;
  for (Scan& scan : scans) {
    EndWithRange(scan.burst, range);
    bursts.push_back(scan.burst);
  }
  return bursts;
}

Burst FindBurstPlain(const Trial& trial, ScannedChannel scanned, SampleRange range) {
  const float threshold = scanned.threshold;
  const bool upwards = threshold >= 0;
  Burst burst;
  for (std::int64_t i = range.lo; i <= range.hi && burst.offset == 0; ++i) {
    const float x = trial.Data(i, scanned.channel);
    const auto sample = static_cast<std::int32_t>(i);
    if (burst.onset == 0) {
      burst.onset = (upwards ? x > threshold : x < threshold) ? sample : 0;
    } else if (upwards ? x < threshold : x > threshold) {
      burst.offset = sample;
    }
  }
  EndWithRange(burst, range);
  return burst;
}

}  // namespace velmora
