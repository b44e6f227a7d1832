#include "dsp/design/tap_runs.hpp"

#include <algorithm>
#include <cstddef>

#include "dsp/design/reflection.hpp"
#include "dsp/design/sliding_sums.hpp"

namespace velmora {
namespace {

struct Ends {
  std::vector<double> head;
  std::vector<double> tail;
};

Ends EndsOf(const ChannelView& x, const TapFilter& filter, RunDirection direction) {
  const std::int64_t n = x.size();
  const std::int64_t half = filter.Half();
  Ends ends;
  if (direction == RunDirection::Forward) {
    ends.head.assign(filter.taps.size() - 1, double{x[0]});
    return ends;
  }
  for (std::int64_t m = 1; m <= half; ++m) {
    ends.head.push_back(2 * double{x[0]} - x[half + 1 - m]);
    ends.tail.push_back(2 * double{x[n - 1]} - x[n - 1 - m]);
  }
  return ends;
}

// Results are worked off in blocks of rows that stay in the cache, all channels of one before the next.
constexpr std::int64_t kTapBlock = 1024;

// One channel on its way through the blocks: the samples a block needs, of which the last taps - 1 are the
// first of the next, so that results may overwrite their samples.
class TapChannel {
 public:
  TapChannel(const ChannelView& x, const TapFilter& filter, RunDirection direction)
      : x_(x),
        taps_(filter.taps),
        keep_(static_cast<std::int64_t>(filter.taps.size()) - 1),
        ends_(EndsOf(x, filter, direction)),
        samples_(static_cast<std::size_t>(kTapBlock + keep_)) {
    Take(samples_.data(), keep_);
  }

  void Run(std::int64_t first, std::int64_t n, std::vector<double>& results, SimdLevel level) {
    Take(samples_.data() + keep_, n);
    SumTaps(samples_.data(), taps_, n, results.data(), level);
    for (std::int64_t i = 0; i < n; ++i) {
      x_[first + i] = static_cast<float>(results[static_cast<std::size_t>(i)]);
    }
    std::copy_n(samples_.data() + n, keep_, samples_.data());
  }

 private:
  // The next n samples of the channel as it goes on at both ends.
  void Take(double* to, std::int64_t n) {
    const auto head = static_cast<std::int64_t>(ends_.head.size());
    for (; n > 0 && taken_ < head; --n) {
      *to++ = ends_.head[static_cast<std::size_t>(taken_++)];
    }
    for (; n > 0 && taken_ < head + x_.size(); --n) {
      *to++ = x_[taken_++ - head];
    }
    for (; n > 0; --n) {
      *to++ = ends_.tail[static_cast<std::size_t>(taken_++ - head - x_.size())];
    }
  }

  ChannelView x_;
  std::span<const double> taps_;
  std::int64_t keep_;
  Ends ends_;
  std::vector<double> samples_;
  std::int64_t taken_ = 0;
};

}  // namespace

void RunTaps(Trial& trial, const ChannelList& channels, const TapFilter& filter, RunDirection direction,
             SimdLevel level, const Turn& turn) {
  std::vector<TapChannel> all;
  for (const int c : channels) {
    all.emplace_back(trial.Channel(c), filter, direction);
  }
  std::vector<double> results(static_cast<std::size_t>(kTapBlock));
  for (std::int64_t at = 0; at < trial.NData; at += kTapBlock) {
    const std::int64_t n = std::min<std::int64_t>(kTapBlock, trial.NData - at);
    for (TapChannel& channel : all) {
      channel.Run(at, n, results, level);
      Give(turn);
    }
  }
}

void RunTapsPlain(std::span<double> x, const TapFilter& filter, RunDirection direction) {
  const std::size_t n = x.size();
  std::vector<double> all;
  if (direction == RunDirection::Forward) {
    all.assign(filter.taps.size() - 1, x.front());
    all.insert(all.end(), x.begin(), x.end());
  } else {
    all = ContinuedByReflection(x, filter.Half());
  }
  for (std::size_t i = 0; i < n; ++i) {
    x[i] = SumTapsPlain(all.data() + i, filter.taps);
  }
}

}  // namespace velmora
