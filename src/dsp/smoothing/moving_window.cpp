#include "dsp/smoothing/moving_window.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "core/simd.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/huge_block.hpp"

namespace velmora {
namespace {

constexpr long kLanes = 8;     // channels of a group, side by side as doubles
constexpr long kTogether = 8;  // windows summed at once

// The sums at each vector width. What differs is the instructions, never the order of additions.
#define SIMD_KERNEL "dsp/smoothing/moving_window_kernel.inc"
#include "core/simd_widths.inc"

struct Kernels {
  void (*means)(const double* rows, long width, long windows, bool root, double* means);
  void (*runningMeans)(double* rows, long stride, long width, long centre, long windows);
};

Kernels KernelsOf(SimdLevel level) {
  return AtLevel<Kernels>(level, {sse2::Means, sse2::RunningMeans}, {avx2::Means, avx2::RunningMeans},
                          {avx512::Means, avx512::RunningMeans});
}

bool HasWindows(const Trial& trial, std::int32_t width) {
  return width >= 1 && width < trial.NData;
}

enum class Input { Itself, Square, Magnitude };

template <Input input>
double Term(float sample) {
  const double x = sample;
  if constexpr (input == Input::Square) {
    return x * x;
  }
  return input == Input::Magnitude ? std::abs(x) : x;
}

// Rows of terms, one a sample, for a group of up to kLanes channels. Windows are worked off in pieces of
// kPiece, so that the rows in work stay in the cache and outputs overwrite only samples already taken.
constexpr std::int64_t kPiece = 512;

template <Input input>
void TakeRows(const Trial& trial, std::span<const int> channels, std::int64_t firstSample, std::int64_t n,
              double* rows, long stride) {
  const auto count = static_cast<long>(channels.size());
  const bool together = channels.back() - channels.front() == count - 1;
  for (std::int64_t i = 0; i < n; ++i, rows += stride) {
    const float* frame = trial.matrix.Frame(firstSample + i);
    if (together && count == kLanes) {
      const float* x = frame + channels.front();
      for (long lane = 0; lane < kLanes; ++lane) {
        rows[lane] = Term<input>(x[lane]);
      }
    } else {
      for (long lane = 0; lane < count; ++lane) {
        rows[lane] = Term<input>(frame[channels[static_cast<std::size_t>(lane)]]);
      }
    }
  }
}

void PutRows(Trial& trial, std::span<const int> channels, std::int64_t firstSample, std::int64_t n,
             const double* rows, long stride) {
  const auto count = static_cast<long>(channels.size());
  const bool together = channels.back() - channels.front() == count - 1;
  for (std::int64_t i = 0; i < n; ++i, rows += stride) {
    float* frame = trial.matrix.Frame(firstSample + i);
    if (together && count == kLanes) {
      float* x = frame + channels.front();
      for (long lane = 0; lane < kLanes; ++lane) {
        x[lane] = static_cast<float>(rows[lane]);
      }
    } else {
      for (long lane = 0; lane < count; ++lane) {
        frame[channels[static_cast<std::size_t>(lane)]] = static_cast<float>(rows[lane]);
      }
    }
  }
}

// Rows of a group while its windows move on: the last width-1 rows of a piece are the first of the next.
template <Input input>
class MovingRows {
 public:
  MovingRows(std::span<const int> channels, std::int64_t width, long stride)
      : channels_(channels),
        keep_(width - 1),
        stride_(stride),
        block_(static_cast<std::size_t>((kPiece + width + kTogether) * stride) * sizeof(double)) {}

  [[nodiscard]] double* Rows() const { return static_cast<double*>(block_.Get()); }

  // The rows of the windows that start at sample first, ..., first+windows-1, pieces in ascending order.
  void Take(const Trial& trial, std::int64_t first, std::int64_t windows) {
    if (first == 1) {
      TakeGroups(trial, 1, keep_, 0);
    } else {
      std::copy_n(Rows() + kPiece * stride_, keep_ * stride_, Rows());
    }
    TakeGroups(trial, first + keep_, windows, keep_);
  }

  void Put(Trial& trial, std::int64_t firstSample, std::int64_t n, const double* rows) const {
    for (std::size_t lane = 0; lane < channels_.size(); lane += kLanes) {
      PutRows(trial, Group(lane), firstSample, n, rows + lane, stride_);
    }
  }

 private:
  void TakeGroups(const Trial& trial, std::int64_t sample, std::int64_t n, std::int64_t row) {
    for (std::size_t lane = 0; lane < channels_.size(); lane += kLanes) {
      TakeRows<input>(trial, Group(lane), sample, n, Rows() + row * stride_ + lane, stride_);
    }
  }

  [[nodiscard]] std::span<const int> Group(std::size_t first) const {
    return channels_.subspan(first, std::min<std::size_t>(kLanes, channels_.size() - first));
  }

  std::span<const int> channels_;
  std::int64_t keep_;
  long stride_;
  HugeBlock block_;  // its rows begin on cache lines
};

template <Input input>
void SmoothGroups(Trial& trial, const ChannelList& channels, std::int32_t width, SimdLevel level,
                  const Turn& turn) {
  const Kernels kernels = KernelsOf(level);
  const std::int64_t windows = trial.NData - width;
  const std::int64_t centre = WindowCentre(width);
  std::vector<MovingRows<input>> groups;
  for (std::size_t first = 0; first < channels.size(); first += kLanes) {
    const std::size_t count = std::min<std::size_t>(kLanes, channels.size() - first);
    groups.emplace_back(std::span(channels).subspan(first, count), width, kLanes);
  }
  std::vector<double> means(static_cast<std::size_t>((kPiece + kTogether) * kLanes));
  for (std::int64_t done = 0; done < windows; done += kPiece) {
    const std::int64_t now = std::min(kPiece, windows - done);
    for (MovingRows<input>& group : groups) {
      group.Take(trial, done + 1, now);
      kernels.means(group.Rows(), width, now, input == Input::Square, means.data());
      group.Put(trial, done + 1 + centre, now, means.data());
      Give(turn);
    }
  }
}

// Running means of rows, a turn after every few.
struct RunningMeans {
  Kernels kernels;
  long stride;
  long width;
  long centre;
  const Turn& turn;

  void Run(double* rows, std::int64_t windows) const {
    constexpr std::int64_t windowsATurn = 64;
    for (std::int64_t done = 0; done < windows; done += windowsATurn) {
      kernels.runningMeans(rows + done * stride, stride, width, centre,
                           std::min(windowsATurn, windows - done));
      Give(turn);
    }
  }
};

void FillSamples(Trial& trial, int channel, std::int64_t first, std::int64_t last, float value) {
  const ChannelView x = trial.Channel(channel);
  for (std::int64_t i = first; i <= last; ++i) {
    x[i - 1] = value;
  }
}

// The ends of the root mean square, from outputs in the data.
void FillRmsEnds(Trial& trial, int channel, std::int32_t width) {
  const std::int64_t centre = WindowCentre(width);
  const std::int64_t behind = trial.NData - width;
  const float head = trial.Data(centre + 1, channel);
  const float tail = trial.Data(std::max(behind, centre + 1), channel);
  FillSamples(trial, channel, 1, centre, head);
  FillSamples(trial, channel, behind + 1, trial.NData, tail);
}

void FillMeanAbsoluteEnds(Trial& trial, int channel, std::int32_t width) {
  const std::int64_t centre = WindowCentre(width);
  const float head = trial.Data(centre + 1, channel);
  const float tail = trial.Data(trial.NData - width + centre, channel);
  FillSamples(trial, channel, 1, centre, head);
  FillSamples(trial, channel, trial.NData - width + 1, trial.NData, tail);
}

}  // namespace

std::int32_t WindowCentre(std::int32_t width) {
  return RoundHalfEven32((width - 1) / 2.0);
}

void MovingAverage(Trial& trial, const ChannelList& channels, std::int32_t width, SimdLevel level,
                   const Turn& turn) {
  if (HasWindows(trial, width)) {
    SmoothGroups<Input::Itself>(trial, channels, width, level, turn);
  }
}

void MovingRms(Trial& trial, const ChannelList& channels, std::int32_t width, SimdLevel level,
               const Turn& turn) {
  if (!HasWindows(trial, width)) {
    return;
  }
  SmoothGroups<Input::Square>(trial, channels, width, level, turn);
  for (const int c : channels) {
    FillRmsEnds(trial, c, width);
  }
}

void MovingMeanAbsolute(Trial& trial, const ChannelList& channels, std::int32_t width, SimdLevel level,
                        const Turn& turn) {
  if (!HasWindows(trial, width) || channels.empty()) {
    return;
  }
  const std::int64_t windows = trial.NData - width;
  const std::int64_t centre = WindowCentre(width);
  const auto count = static_cast<long>(channels.size());
  const long stride = (count + kLanes - 1) / kLanes * kLanes;
  const RunningMeans running{KernelsOf(level), stride, width, centre, turn};
  MovingRows<Input::Magnitude> all(channels, width, stride);
  for (std::int64_t done = 0; done < windows; done += kPiece) {
    const std::int64_t now = std::min(kPiece, windows - done);
    all.Take(trial, done + 1, now);
    double* rows = all.Rows();
    if (done == 0) {  // the first output goes to the samples before it too, which later windows read
      running.Run(rows, 1);
      for (std::int64_t k = 0; k < centre; ++k) {
        std::copy_n(rows + centre * stride, stride, rows + k * stride);
      }
      running.Run(rows + stride, now - 1);
    } else {
      running.Run(rows, now);
    }
    all.Put(trial, done + 1 + centre, now, all.Rows() + centre * stride);
  }
  for (const int c : channels) {
    FillMeanAbsoluteEnds(trial, c, width);
  }
}

void MovingAveragePlain(Trial& trial, const ChannelList& channels, std::int32_t width) {
  const std::int64_t centre = WindowCentre(width);
  for (const int c : channels) {
    const ChannelView x = trial.Channel(c);
    std::vector<float> copy;
    for (std::int64_t i = 0; i < x.size(); ++i) {
      copy.push_back(x[i]);
    }
    for (std::int64_t i = 0; HasWindows(trial, width) && i < x.size() - width; ++i) {
      double sum = 0.0;
      for (std::int64_t k = i; k < i + width; ++k) {
        sum = sum + copy[static_cast<std::size_t>(k)];
      }
      x[i + centre] = static_cast<float>(sum / width);
    }
  }
}

void MovingRmsPlain(Trial& trial, const ChannelList& channels, std::int32_t width) {
  if (!HasWindows(trial, width)) {
    return;
  }
  const std::int64_t centre = WindowCentre(width);
  std::vector<float> outputs(static_cast<std::size_t>(trial.NData));
  for (const int c : channels) {
    const ChannelView x = trial.Channel(c);
    for (std::int64_t i = 0; i < x.size() - width; ++i) {
      double sum = 0.0;
      for (std::int64_t k = i; k < i + width; ++k) {
        sum = sum + double{x[k]} * double{x[k]};
      }
      outputs[static_cast<std::size_t>(i + centre)] = static_cast<float>(std::sqrt(sum / width));
    }
    for (std::int64_t i = centre; i < x.size() - width + centre; ++i) {
      x[i] = outputs[static_cast<std::size_t>(i)];
    }
    FillRmsEnds(trial, c, width);
  }
}

void MovingMeanAbsolutePlain(Trial& trial, const ChannelList& channels, std::int32_t width) {
  if (!HasWindows(trial, width)) {
    return;
  }
  const std::int64_t centre = WindowCentre(width);
  for (const int c : channels) {
    const ChannelView x = trial.Channel(c);
    for (std::int64_t i = 0; i < x.size() - width; ++i) {
      double sum = 0.0;
      for (std::int64_t k = i; k < i + width; ++k) {
        sum = sum + std::abs(double{x[k]});
      }
      x[i + centre] = static_cast<float>(sum / width);
      if (i == 0) {
        FillSamples(trial, c, 1, centre, x[centre]);
      }
    }
    FillMeanAbsoluteEnds(trial, c, width);
  }
}

}  // namespace velmora
