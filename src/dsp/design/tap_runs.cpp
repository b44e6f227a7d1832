#include "dsp/design/tap_runs.hpp"

#include <algorithm>
#include <cstddef>

#include "core/trial/transpose.hpp"
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

// Results are worked off in blocks of rows that stay in the cache.
constexpr std::int64_t kTapBlock = 512;
// No power of two from one channel's row to the next: rows would push each other out of the cache.
constexpr std::int64_t kRowStride = kTapBlock + 16;

// Rows of the matrix as channels behind each other, and back.
class ChannelRows {
 public:
  ChannelRows(Trial& trial, const ChannelList& channels)
      : trial_(trial), runs_(RunsOf(channels)), rows_(channels.size() * kRowStride) {}

  [[nodiscard]] float* Of(std::size_t k) { return rows_.data() + k * kRowStride; }

  void Take(std::int64_t first, std::int64_t n) {
    ForRuns([&](const ChannelRun& run, float* rows) {
      FramesToRows(trial_.matrix.Frame(first + 1) + run.first, trial_.matrix.Stride(),
                   run.last - run.first + 1, n, rows, kRowStride);
    });
  }
  void Put(std::int64_t first, std::int64_t n) {
    ForRuns([&](const ChannelRun& run, float* rows) {
      RowsToFrames(rows, kRowStride, run.last - run.first + 1, n, trial_.matrix.Frame(first + 1) + run.first,
                   trial_.matrix.Stride());
    });
  }

 private:
  template <typename Work>
  void ForRuns(const Work& work) {
    float* rows = rows_.data();
    for (const ChannelRun& run : runs_) {
      work(run, rows);
      rows += (run.last - run.first + 1) * kRowStride;
    }
  }

  Trial& trial_;
  std::vector<ChannelRun> runs_;
  std::vector<float> rows_;
};

// One channel on its way through the blocks: the samples a block needs, of which the last taps - 1 are the
// first of the next, so that results may overwrite their samples.
class TapChannel {
 public:
  TapChannel(const ChannelView& x, const TapFilter& filter, RunDirection direction)
      : taps_(filter.taps),
        keep_(filter.taps.size() - 1),
        ends_(EndsOf(x, filter, direction)),
        samples_(static_cast<std::size_t>(kTapBlock) + keep_) {
    std::copy(ends_.head.begin(), ends_.head.end(), samples_.begin());
    for (std::size_t k = ends_.head.size(); k < keep_; ++k) {
      samples_[k] = x[static_cast<std::int64_t>(k - ends_.head.size())];
    }
  }

  // `row` holds the next `inside` samples, which end the channel where they are fewer than n; it takes n
  // results.
  void Run(float* row, std::int64_t inside, std::int64_t n, std::vector<double>& results, SimdLevel level) {
    double* to = std::copy_n(row, inside, samples_.data() + keep_);
    for (std::int64_t k = inside; k < n; ++k) {
      *to++ = ends_.tail[fromTail_++];
    }
    SumTaps(samples_.data(), taps_, n, results.data(), level);
    for (std::int64_t i = 0; i < n; ++i) {
      row[i] = static_cast<float>(results[static_cast<std::size_t>(i)]);
    }
    std::copy_n(samples_.data() + n, keep_, samples_.data());
  }

 private:
  std::span<const double> taps_;
  std::size_t keep_;
  Ends ends_;
  std::vector<double> samples_;
  std::size_t fromTail_ = 0;
};

}  // namespace

void RunTaps(Trial& trial, const ChannelList& channels, const TapFilter& filter, RunDirection direction,
             SimdLevel level, const Turn& turn) {
  std::vector<TapChannel> all;
  for (const int c : channels) {
    all.emplace_back(trial.Channel(c), filter, direction);
  }
  ChannelRows rows(trial, channels);
  std::vector<double> results(static_cast<std::size_t>(kTapBlock));
  const std::int64_t ahead = direction == RunDirection::Forward ? 0 : filter.Half();
  for (std::int64_t at = 0; at < trial.NData; at += kTapBlock) {
    const std::int64_t n = std::min<std::int64_t>(kTapBlock, trial.NData - at);
    const std::int64_t inside = std::clamp<std::int64_t>(trial.NData - at - ahead, 0, n);
    if (inside > 0) {
      rows.Take(at + ahead, inside);
    }
    for (std::size_t k = 0; k < all.size(); ++k) {
      all[k].Run(rows.Of(k), inside, n, results, level);
      Give(turn);
    }
    rows.Put(at, n);
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
