#include "dsp/filters/recursive_filter_lanes.hpp"

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

#include "core/simd.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/filters/filter_padding.hpp"
#include "dsp/filters/recursive_filter.hpp"

namespace velmora {
namespace {

constexpr int kMostLanes = 32;

// The recursion of the channels of one strip, one lane each, between two calls of a kernel.
struct alignas(64) StripState {
  double a0[kMostLanes] = {};
  double b1[kMostLanes] = {};
  double b2[kMostLanes] = {};
  double x1[kMostLanes] = {};
  double x2[kMostLanes] = {};
  double y1[kMostLanes] = {};
  double y2[kMostLanes] = {};
};

// Filtering waits for memory: all loops over rows fetch this far ahead, which may point past the end.
constexpr std::ptrdiff_t kRowsAhead = 32;
constexpr std::size_t kLineFloats = 16;

// Runs `rows` rows of neighbouring samples; `stride` floats lie between two rows, below 0 when the
// signal is run backward.
using StripProcedure = void (*)(float* row, std::ptrdiff_t stride, std::int64_t rows, StripState& state);

struct StripKernel {
  int lanes;
  StripProcedure low;
  StripProcedure high;
  StripProcedure lowOfMagnitudes;
};

// Conversions by name: from the vector extension alone the compiler makes two halves.
namespace sse2 {
#define LANES 2
#define WIDEN(floats) __builtin_convertvector(floats, Doubles)
#include "dsp/filters/recursive_filter_lanes.inc"
#undef WIDEN
#undef LANES
}  // namespace sse2

SIMD_BEGIN_AVX2
namespace avx2 {
#define LANES 4
#define WIDEN(floats) _mm256_cvtps_pd(floats)
#include "dsp/filters/recursive_filter_lanes.inc"
#undef WIDEN
#undef LANES
}  // namespace avx2
SIMD_END

SIMD_BEGIN_AVX512
namespace avx512 {
#define LANES 8
#define WIDEN(floats) _mm512_maskz_cvtps_pd(0xFF, floats)
#include "dsp/filters/recursive_filter_lanes.inc"
#undef WIDEN
#undef LANES
}  // namespace avx512
SIMD_END

// A lone channel: every sample may be a cache line of its own.
template <PassType type, bool rectifies = false>
void RunOne(float* row, std::ptrdiff_t stride, std::int64_t rows, StripState& state) {
  const double a0 = state.a0[0];
  const double b1 = state.b1[0];
  const double b2 = state.b2[0];
  double x1 = state.x1[0];
  double x2 = state.x2[0];
  double y1 = state.y1[0];
  double y2 = state.y2[0];
  for (std::int64_t i = 0; i < rows; ++i, row += stride) {
    __builtin_prefetch(row + kRowsAhead * stride, 1);
    const double x0 = rectifies ? std::abs(*row) : *row;
    const double sum = type == PassType::Low ? x1 + x0 + x1 + x2 : (x2 + x0) - (x1 + x1);
    *row = static_cast<float>(a0 * sum + b1 * y1 + b2 * y2);
    x2 = x1;
    x1 = x0;
    y2 = y1;
    y1 = *row;
  }
  state.x1[0] = x1;
  state.x2[0] = x2;
  state.y1[0] = y1;
  state.y2[0] = y2;
}

constexpr StripKernel kOne = {1, RunOne<PassType::Low>, RunOne<PassType::High>, RunOne<PassType::Low, true>};
constexpr std::array kSse2 = {kOne, sse2::Kernel<1>(), sse2::Kernel<2>(), sse2::Kernel<4>()};
constexpr std::array kAvx2 = {kOne, avx2::Kernel<1>(), avx2::Kernel<2>(), avx2::Kernel<4>()};
constexpr std::array kAvx512 = {kOne, avx512::Kernel<1>(), avx512::Kernel<2>(), avx512::Kernel<4>()};

// Narrowest first.
std::span<const StripKernel> KernelsOf(SimdLevel level) {
  switch (level) {
    case SimdLevel::Avx512:
      return kAvx512;
    case SimdLevel::Avx2:
      return kAvx2;
    case SimdLevel::Sse2:
      break;
  }
  return kSse2;
}

// A run of rows that hold all channels, in the direction of the sweep; `first` is channel 0.
struct Rows {
  float* first;
  std::ptrdiff_t stride;
  std::int64_t count;

  [[nodiscard]] float* Row(std::int64_t i) const { return first + i * stride; }
  [[nodiscard]] Rows Reversed() const { return {count > 0 ? Row(count - 1) : first, -stride, count}; }
};

// The padded signal of all channels: head, data, tail. The data are filtered where they lie.
using Signal = std::array<Rows, 3>;

Signal Reversed(const Signal& signal) {
  return {signal[2].Reversed(), signal[1].Reversed(), signal[0].Reversed()};
}

// As many rows as stay in the first-level cache.
constexpr std::int64_t kTileRows = 32;

using Tile = std::array<float, kTileRows * kMostLanes>;

// Channels that a kernel runs together, in the lanes 0, 1, ...; lanes without a channel hold zeros.
class Strip {
 public:
  Strip(const StripKernel& kernel, PassType type, std::span<const int> channels,
        const PerChannel<FilterSection>& sections)
      : channels_(channels.begin(), channels.end()),
        lanes_(kernel.lanes),
        run_(type == PassType::Low ? kernel.low : kernel.high),
        runMagnitudes_(kernel.lowOfMagnitudes),
        neighbours_(channels.back() - channels.front() + 1 == static_cast<int>(channels.size())) {
    for (std::size_t lane = 0; lane < channels_.size(); ++lane) {
      const FilterSection& section = sections[channels_[lane]];
      state_.a0[lane] = section.a0;
      state_.b1[lane] = section.b1;
      state_.b2[lane] = section.b2;
    }
  }

  // The first two samples of a sweep stay as they are.
  void Start(const float* first, const float* second) {
    for (std::size_t lane = 0; lane < channels_.size(); ++lane) {
      state_.x2[lane] = state_.y2[lane] = first[channels_[lane]];
      state_.x1[lane] = state_.y1[lane] = second[channels_[lane]];
    }
  }

  // `rectified`: of the samples' magnitudes, which a low-pass can be.
  void Run(const Rows& rows, Tile& tile, bool rectified) {
    const StripProcedure run = rectified ? runMagnitudes_ : run_;
    if (neighbours_ && static_cast<int>(channels_.size()) == lanes_) {
      run(rows.first + channels_.front(), rows.stride, rows.count, state_);
      return;
    }
    tile.fill(0.0F);
    for (std::int64_t i = 0; i < rows.count; ++i) {
      Gather(rows.Row(i), rows.Row(i + kRowsAhead), tile.data() + i * lanes_);
    }
    run(tile.data(), lanes_, rows.count, state_);
    for (std::int64_t i = 0; i < rows.count; ++i) {
      Scatter(tile.data() + i * lanes_, rows.Row(i));
    }
  }

 private:
  void Gather(const float* row, const float* ahead, float* staged) const {
    for (const float* line = ahead + channels_.front(); line <= ahead + channels_.back();
         line += kLineFloats) {
      __builtin_prefetch(line, 1);
    }
    if (neighbours_) {
      std::copy_n(row + channels_.front(), channels_.size(), staged);
      return;
    }
    for (const int c : channels_) {
      *staged++ = row[c];
    }
  }

  void Scatter(const float* staged, float* row) const {
    if (neighbours_) {
      std::copy_n(staged, channels_.size(), row + channels_.front());
      return;
    }
    for (const int c : channels_) {
      row[c] = *staged++;
    }
  }

  std::vector<int> channels_;
  int lanes_;
  StripProcedure run_;
  StripProcedure runMagnitudes_;
  bool neighbours_;  // the channels lie side by side
  StripState state_;
};

// As few strips as possible: a kernel takes about as long for an empty lane as for a full one, and
// about as long for a wide strip as for a narrow one.
std::vector<Strip> MakeStrips(std::span<const StripKernel> kernels, PassType type,
                              std::span<const int> channels, const PerChannel<FilterSection>& sections) {
  std::vector<Strip> strips;
  while (!channels.empty()) {
    const auto left = static_cast<int>(channels.size());
    const auto fitting = std::find_if(kernels.begin(), kernels.end() - 1,
                                      [left](const StripKernel& kernel) { return kernel.lanes >= left; });
    const auto taken = static_cast<std::size_t>(std::min(left, fitting->lanes));
    strips.emplace_back(*fitting, type, channels.first(taken), sections);
    channels = channels.subspan(taken);
  }
  return strips;
}

// Rows of a signal of at least three, counted from 0 over all its parts.
float* RowOf(const Signal& signal, std::int64_t i) {
  for (const Rows& part : signal) {
    if (i < part.count) {
      return part.Row(i);
    }
    i -= part.count;
  }
  return nullptr;
}

void Rectify(const Rows& rows, const ChannelList& channels) {
  for (std::int64_t i = 0; i < rows.count && !channels.empty(); ++i) {
    float* row = rows.Row(i);
    for (const int c : channels) {
      row[c] = std::abs(row[c]);
    }
  }
}

// `rectifies`: of the data the magnitudes are filtered.
void Sweep(const Signal& signal, std::vector<Strip> strips, bool rectifies, Tile& tile, const Turn& turn) {
  constexpr std::int64_t tilesATurn = 1024;
  for (Strip& strip : strips) {
    strip.Start(RowOf(signal, 0), RowOf(signal, 1));
  }
  std::int64_t skipped = 2;
  for (const Rows& part : signal) {
    const std::int64_t start = std::min(skipped, part.count);
    skipped -= start;
    for (std::int64_t i = start; i < part.count; i += kTileRows) {
      const Rows rows{part.Row(i), part.stride, std::min(kTileRows, part.count - i)};
      for (Strip& strip : strips) {
        strip.Run(rows, tile, rectifies && &part == &signal[1]);
      }
      if (i / kTileRows % tilesATurn == 0) {
        Give(turn);
      }
    }
  }
}

// Every channel with a cut-off, whether it can be filtered or not.
ChannelList RectifiedChannels(const ChannelsFilter& filter, int channels) {
  ChannelList rectified;
  if (filter.Rectify && filter.type == PassType::Low && filter.design != FilterDesign::Bessel) {
    for (int c = 1; c <= channels; ++c) {
      if (filter.Cutoffs[c] > 0) {
        rectified.push_back(c);
      }
    }
  }
  return rectified;
}

// Everything that one call needs once the sections are known.
class LanesRun {
 public:
  LanesRun(Trial& trial, const ChannelsFilter& filter, const PerChannel<FilterSection>& sections,
           std::vector<int> channels, SimdLevel level, const Turn& turn)
      : filter_(filter),
        sections_(sections),
        channels_(std::move(channels)),
        rectified_(RectifiedChannels(filter, trial.NChan)),
        kernels_(KernelsOf(level)),
        turn_(turn) {
    const FilterPadding padding =
        MakePadding(filter.Padding, filter.PadZeros, trial.NData, kHighestChannelPadding);
    const std::ptrdiff_t stride = trial.matrix.Stride();
    const std::ptrdiff_t count = padding.count;
    // A frame more than needed, so that there is an address without padding too.
    padding_.resize(static_cast<std::size_t>((2 * count + 1) * stride));
    float* head = padding_.data();
    float* tail = head + count * stride;
    const Rows data{trial.matrix.Frame(1), stride, trial.NData};
    RectifyEnds(data, count);
    for (const int c : channels_) {
      FillPadding(trial.Channel(c), {1, trial.NData}, padding, {head + c, stride, count},
                  {tail + c, stride, count});
    }
    signal_ = {Rows{head, stride, count}, data, Rows{tail, stride, count}};
    size_ = trial.NData + 2 * count;
  }

  // Each pass takes the channels that still have one to go.
  void Run() {
    if (size_ < 3 || channels_.empty()) {
      Rectify(signal_[1], rectified_);
      return;
    }
    for (int pass = 1;; ++pass) {
      std::vector<int> forward;
      std::vector<int> backward;
      for (const int c : channels_) {
        if (filter_.Passes[c] >= pass) {
          forward.push_back(c);
          if (filter_.ZeroLag[c]) {
            backward.push_back(c);
          }
        }
      }
      if (forward.empty()) {
        return;
      }
      const bool rectifies = pass == 1 && !rectified_.empty();
      if (rectifies) {
        RectifyOthers(forward);
      }
      Sweep(signal_, MakeStrips(kernels_, filter_.type, forward, sections_), rectifies, tile_, turn_);
      Sweep(Reversed(signal_), MakeStrips(kernels_, filter_.type, backward, sections_), false, tile_, turn_);
    }
  }

 private:
  // What the padding reads, and the first two samples, which no sweep changes.
  void RectifyEnds(const Rows& data, std::int64_t padding) const {
    const std::int64_t ends = std::min(padding + 2, data.count);
    Rectify({data.first, data.stride, ends}, rectified_);
    Rectify({data.Row(data.count - ends), data.stride, ends}, rectified_);
  }

  // Those that are rectified and not filtered: all others are rectified on the way into the filter.
  void RectifyOthers(const std::vector<int>& filtered) const {
    ChannelList others;
    std::set_difference(rectified_.begin(), rectified_.end(), filtered.begin(), filtered.end(),
                        std::back_inserter(others));
    Rectify(signal_[1], others);
  }

  const ChannelsFilter& filter_;
  const PerChannel<FilterSection>& sections_;
  std::vector<int> channels_;
  ChannelList rectified_;
  std::span<const StripKernel> kernels_;
  const Turn& turn_;
  std::vector<float> padding_;
  Signal signal_{};
  std::int64_t size_ = 0;
  Tile tile_{};
};

}  // namespace

PerChannel<FilterVerdict> FilterChannels(Trial& trial, const ChannelsFilter& filter, SimdLevel level,
                                         const Turn& turn) {
  PerChannel<FilterVerdict> verdicts{};
  PerChannel<FilterSection> sections{};
  std::vector<int> accepted;
  for (int c = 1; c <= trial.NChan; ++c) {
    if (!(filter.Cutoffs[c] > 0)) {
      continue;
    }
    const DesignedSection designed = DesignSection(filter.type, filter.design, filter.Cutoffs[c], trial.Rate,
                                                   filter.Passes[c], filter.ZeroLag[c]);
    verdicts[c] = designed.verdict;
    sections[c] = designed.section;
    if (designed.verdict.Accepted()) {
      accepted.push_back(c);
    }
  }
  if (trial.NData < 1) {
    return verdicts;
  }
  LanesRun(trial, filter, sections, std::move(accepted), level, turn).Run();
  return verdicts;
}

}  // namespace velmora
