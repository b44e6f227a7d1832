#include "statistics/descriptive.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace velmora {
namespace {

constexpr double kLargest = std::numeric_limits<float>::max();
constexpr double kBeyond = std::numeric_limits<double>::infinity();

// One number a channel; channel 1 is the first.
using Lane = std::array<double, kMaxChannels>;

/// Frames of neighbouring channels.
struct Shape {
  long stride;
  long channels;
  long frames;
};

struct Sums {
  Lane missing{};  // samples that are no numbers
  Lane sum{};
  Lane squares{};
  Lane low;
  Lane lowAt{};
  Lane high;
  Lane highAt{};

  Sums() {
    low.fill(kBeyond);
    high.fill(-kBeyond);
  }
};

/// Of deviations from the mean.
struct PowerSums {
  Lane first{};
  Lane second{};
  Lane third{};
  Lane fourth{};
};

// What a sample that is no number adds nothing to, channel by channel; and what the fast way is held against.
namespace plain {

bool IsNumber(double x) {
  return std::fabs(x) <= kLargest;
}

/// Calls `add(c, x)` for every sample of channels `from` to the last, frame by frame; c from 0.
template <typename Add>
void EachSample(const float* frame, const Shape& shape, long from, const Add& add) {
  for (long i = 0; i < shape.frames; ++i, frame += shape.stride) {
    for (long c = from; c < shape.channels; ++c) {
      add(static_cast<std::size_t>(c), static_cast<double>(frame[c]), i);
    }
  }
}

void AddSums(const float* frame, const Shape& shape, long from, double first, Sums& to) {
  EachSample(frame, shape, from, [&](std::size_t c, double x, long i) {
    if (!IsNumber(x)) {
      to.missing[c] += 1.0;
      return;
    }
    to.sum[c] += x;
    to.squares[c] += x * x;
    if (x < to.low[c]) {
      to.low[c] = x;
      to.lowAt[c] = first + static_cast<double>(i);
    }
    if (x > to.high[c]) {
      to.high[c] = x;
      to.highAt[c] = first + static_cast<double>(i);
    }
  });
}

void AddDeviations(const float* frame, const Shape& shape, long from, const Lane& mean, PowerSums& to) {
  EachSample(frame, shape, from, [&](std::size_t c, double x, long /*i*/) {
    const double d = IsNumber(x) ? x - mean[c] : 0.0;
    to.first[c] += d;
    to.second[c] += d * d;
  });
}

void AddHigherPowers(const float* frame, const Shape& shape, long from, const Lane& mean, PowerSums& to) {
  EachSample(frame, shape, from, [&](std::size_t c, double x, long /*i*/) {
    const double d = IsNumber(x) ? x - mean[c] : 0.0;
    const double square = d * d;
    to.second[c] += square;
    to.third[c] += square * d;
    to.fourth[c] += square * square;
  });
}

}  // namespace plain

// The same, as vectors write them.
struct SumLanes {
  double* sum;
  double* squares;
  double* low;
  double* lowAt;
  double* high;
  double* highAt;
};

struct PowerLanes {
  double* first;
  double* second;
  double* third;
  double* fourth;
};

#define SIMD_KERNEL "statistics/descriptive_lanes.inc"
#include "core/simd_widths.inc"

/// The fast ways of a vector width, for channels up to a multiple of it; the plain ones do the rest.
struct Adders {
  decltype(&sse2::AddSums) sums;
  decltype(&sse2::AddDeviations) deviations;
  decltype(&sse2::AddHigherPowers) powers;
  long width;
};

Adders AddersOf(SimdLevel level) {
  return AtLevel<Adders>(level, {sse2::AddSums, sse2::AddDeviations, sse2::AddHigherPowers, sse2::kDoubles},
                         {avx2::AddSums, avx2::AddDeviations, avx2::AddHigherPowers, avx2::kDoubles},
                         {avx512::AddSums, avx512::AddDeviations, avx512::AddHigherPowers, avx512::kDoubles});
}

bool AllNumbers(const Lane& lane, long channels) {
  return std::all_of(lane.begin(), lane.begin() + channels, [](double x) { return std::isfinite(x); });
}

/// Passes over the frames of a range, a few of them at a time so that they stay in the nearest cache. Frames
/// in which the fast way met what is no number are added anew by the plain one.
class Passes {
 public:
  Passes(const Trial& trial, SampleRange range, const GoesOn& goesOn, std::optional<SimdLevel> level)
      : trial_(trial), range_(range), goesOn_(goesOn) {
    if (level) {
      adders_ = AddersOf(*level);
      fast_ = trial.NChan / adders_.width * adders_.width;
    }
  }

  /// Sums of samples and their squares, extremes, and from them the means. False: ended.
  bool TakeSums() {
    return Walk(0.0, 0.5,
                [this](const float* frame, const Shape& shape, double sample) {
                  if (fast_ > 0) {
                    Sums tried = sums;
                    adders_.sums(frame, {shape.stride, fast_, shape.frames}, sample,
                                 {tried.sum.data(), tried.squares.data(), tried.low.data(),
                                  tried.lowAt.data(), tried.high.data(), tried.highAt.data()});
                    if (AllNumbers(tried.sum, fast_)) {
                      sums = tried;
                      plain::AddSums(frame, shape, fast_, sample, sums);
                      return;
                    }
                  }
                  plain::AddSums(frame, shape, 0, sample, sums);
                }) &&
           TakeMeans();
  }

  bool TakeDeviations() {
    return Walk(0.5, 1.0, [this](const float* frame, const Shape& shape, double /*sample*/) {
      AddPowers(frame, shape, adders_.deviations, plain::AddDeviations, &PowerSums::first);
    });
  }

  bool TakeHigherPowers() {
    return Walk(0.5, 1.0, [this](const float* frame, const Shape& shape, double /*sample*/) {
      AddPowers(frame, shape, adders_.powers, plain::AddHigherPowers, &PowerSums::second);
    });
  }

  [[nodiscard]] double Count(std::size_t c) const { return Frames() - sums.missing[c]; }

  Sums sums;
  Lane mean{};
  PowerSums powers;

 private:
  [[nodiscard]] double Frames() const { return static_cast<double>(range_.hi) - range_.lo + 1; }

  bool TakeMeans() {
    for (std::size_t c = 0; c < mean.size(); ++c) {
      mean[c] = Count(c) > 0 ? sums.sum[c] / Count(c) : 0.0;
    }
    return true;
  }

  template <typename Fast, typename Plain>
  void AddPowers(const float* frame, const Shape& shape, Fast fast, Plain plain, Lane PowerSums::*witness) {
    if (fast_ > 0) {
      PowerSums tried = powers;
      fast(frame, {shape.stride, fast_, shape.frames}, mean.data(),
           {tried.first.data(), tried.second.data(), tried.third.data(), tried.fourth.data()});
      if (AllNumbers(tried.*witness, fast_)) {
        powers = tried;
        plain(frame, shape, fast_, mean, powers);
        return;
      }
    }
    plain(frame, shape, 0, mean, powers);
  }

  // From `from` to `to` are the parts of the whole work.
  template <typename Add>
  bool Walk(double from, double to, const Add& add) {
    constexpr std::int64_t kAtOnce = 64;
    constexpr std::int64_t kBetweenTurns = 256;  // of these
    std::int64_t blocks = 0;
    for (std::int64_t i = range_.lo; i <= range_.hi; i += kAtOnce) {
      const Shape shape{static_cast<long>(trial_.matrix.Stride()), trial_.NChan,
                        static_cast<long>(std::min(kAtOnce, range_.hi - i + 1))};
      add(trial_.matrix.Frame(i) + 1, shape, static_cast<double>(i));
      if (++blocks % kBetweenTurns == 0 &&
          !Goes(goesOn_, from + (to - from) * static_cast<double>(i - range_.lo) / Frames())) {
        return false;
      }
    }
    return true;
  }

  const Trial& trial_;
  SampleRange range_;
  const GoesOn& goesOn_;
  Adders adders_{};
  long fast_ = 0;  // channels that the fast way does
};

}  // namespace

std::optional<double> Descriptive::StandardError() const {
  return deviation ? std::optional(*deviation / std::sqrt(static_cast<double>(count))) : std::nullopt;
}

std::optional<double> Descriptive::Variation() const {
  return deviation && mean != 0.0 ? std::optional(*deviation / std::fabs(mean))
         : deviation              ? std::optional(0.0)
                                  : std::nullopt;
}

std::vector<Descriptive> DescribeChannels(const Trial& trial, const ChannelList& channels, SampleRange range,
                                          const GoesOn& goesOn, std::optional<SimdLevel> level) {
  Passes passes(trial, range, goesOn, level);
  std::vector<Descriptive> all;
  if (!passes.TakeSums() || !passes.TakeDeviations()) {
    return all;
  }
  const Sums& sums = passes.sums;
  const PowerSums& powers = passes.powers;
  for (const int channel : channels) {
    const auto c = static_cast<std::size_t>(channel - 1);
    const double n = passes.Count(c);
    Descriptive of{.count = static_cast<std::int64_t>(n)};
    if (n > 0) {
      of.mean = passes.mean[c];
      of.minimum = sums.low[c];
      of.maximum = sums.high[c];
      of.minimumAt = static_cast<std::int32_t>(sums.lowAt[c]);
      of.maximumAt = static_cast<std::int32_t>(sums.highAt[c]);
      of.rms = std::sqrt(sums.squares[c] / n);
    }
    if (n > 1) {
      const double variance = (powers.second[c] - powers.first[c] * powers.first[c] / n) / (n - 1);
      of.deviation = std::sqrt(std::max(variance, 0.0));
    }
    all.push_back(of);
  }
  return all;
}

std::optional<double> Moments::Skewness() const {
  return second > 0 ? std::optional(third / std::pow(second, 1.5)) : std::nullopt;
}

std::optional<double> Moments::Kurtosis() const {
  return second > 0 ? std::optional(fourth / (second * second) - 3) : std::nullopt;
}

std::vector<Moments> MomentsOf(const Trial& trial, const ChannelList& channels, SampleRange range,
                               const GoesOn& goesOn, std::optional<SimdLevel> level) {
  Passes passes(trial, range, goesOn, level);
  std::vector<Moments> all;
  if (!passes.TakeSums() || !passes.TakeHigherPowers()) {
    return all;
  }
  const PowerSums& powers = passes.powers;
  for (const int channel : channels) {
    const auto c = static_cast<std::size_t>(channel - 1);
    const double n = passes.Count(c);
    // A mean that is not quite the value of a constant channel gives it no spread.
    const bool varies = passes.sums.low[c] < passes.sums.high[c];
    all.push_back(
        varies ? Moments{passes.mean[c], powers.second[c] / n, powers.third[c] / n, powers.fourth[c] / n}
               : Moments{.mean = passes.mean[c]});
  }
  return all;
}

}  // namespace velmora
