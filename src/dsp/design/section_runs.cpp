#include "dsp/design/section_runs.hpp"

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <deque>
#include <vector>

#include "core/cores.hpp"
#include "core/trial/huge_block.hpp"
#include "dsp/design/reflection.hpp"

namespace velmora {
namespace {

struct RowKernel {
  int lanes;
  void (*sweep)(double* row, std::ptrdiff_t stride, std::int64_t count, const Biquad& section, double* state);
  void (*widen)(const float* from, std::ptrdiff_t stride, std::int64_t count, double* row);
  void (*narrow)(const double* row, std::int64_t count, float* to, std::ptrdiff_t stride);
};

namespace section_sse2 {
#define LANES 2
#define WIDEN(floats) __builtin_convertvector(floats, Doubles)
#include "dsp/design/section_lanes.inc"
#undef WIDEN
#undef LANES
}  // namespace section_sse2

SIMD_BEGIN_AVX2
namespace section_avx2 {
#define LANES 4
#define WIDEN(floats) _mm256_cvtps_pd(floats)
#include "dsp/design/section_lanes.inc"
#undef WIDEN
#undef LANES
}  // namespace section_avx2
SIMD_END

SIMD_BEGIN_AVX512
namespace section_avx512 {
#define LANES 8
#define WIDEN(floats) _mm512_maskz_cvtps_pd(0xFF, floats)
#include "dsp/design/section_lanes.inc"
#undef WIDEN
#undef LANES
}  // namespace section_avx512
SIMD_END

// Narrowest first.
std::span<const RowKernel> RowKernelsOf(SimdLevel level) {
  static constexpr std::array kSse2 = {section_sse2::Kernel<1>(), section_sse2::Kernel<2>(),
                                       section_sse2::Kernel<4>()};
  static constexpr std::array kAvx2 = {section_avx2::Kernel<1>(), section_avx2::Kernel<2>(),
                                       section_avx2::Kernel<4>()};
  static constexpr std::array kAvx512 = {section_avx512::Kernel<1>(), section_avx512::Kernel<2>(),
                                         section_avx512::Kernel<4>()};
  return AtLevel<std::span<const RowKernel>>(level, kSse2, kAvx2, kAvx512);
}

// After an endless run of samples u.
std::vector<SectionState> SteadyState(const Biquads& sections, double u) {
  std::vector<SectionState> states;
  for (const Biquad& c : sections) {
    const double v = u * (c.b0 + c.b1 + c.b2) / (1 + c.a1 + c.a2);
    states.push_back({v - c.b0 * u, c.b2 * u - c.a2 * v});
    u = v;
  }
  return states;
}

template <typename Samples>
void SweepPlain(Samples first, Samples last, const Biquads& sections, std::vector<SectionState> states) {
  for (; first != last; ++first) {
    *first = NextOutput(sections, states, *first);
  }
}

// Rows in work at once: the signals of a strip between two states that are kept, and what of them stays in
// the first-level cache.
constexpr std::int64_t kBlock = 256;
constexpr std::int64_t kTileOfRows = 32;

std::int64_t BlocksOf(std::int64_t rows) {
  return (rows + kBlock - 1) / kBlock;
}

// Channels side by side, run together. A zero-lag run needs the forward results last to first: instead of
// keeping them all it keeps the states before each block and runs the block forward again when its turn
// comes, so that a long trial takes no second matrix of 64-bit numbers.
class SectionStrip {
 public:
  SectionStrip(Trial& trial, std::span<const int> channels, const Biquads& sections, const RowKernel& kernel)
      : trial_(trial),
        channels_(channels.begin(), channels.end()),
        sections_(sections),
        kernel_(kernel),
        lanes_(kernel.lanes),
        neighbours_(static_cast<int>(channels.size()) == kernel.lanes &&
                    channels.back() - channels.front() + 1 == kernel.lanes),
        rows_(static_cast<std::size_t>(kBlock * lanes_) * sizeof(double)),
        state_(static_cast<std::size_t>(2 * lanes_) * sections.size() * sizeof(double)) {}

  // From rest, a block after the other.
  void Forward(std::int64_t block) {
    const std::int64_t at = block * kBlock;
    const std::int64_t n = std::min<std::int64_t>(kBlock, trial_.NData - at);
    if (block == 0) {
      std::fill_n(State(), StateSize(), 0.0);
    }
    LoadRows(at, n);
    Sweep(n, 1);
    StoreRows(at, n);
  }

  // The first run of a zero-lag filter, from the first block to the last.
  void ForwardOfTwo(std::int64_t block) {
    if (block == 0) {
      padding_ = SectionPadding(trial_.NData, sections_.size());
      MakeEnds();
      kept_.resize(static_cast<std::size_t>(Blocks()) * StateSize());
      SetSteady(ends_.data());
    }
    std::copy_n(State(), StateSize(), Kept(block));
    TakeBlock(block);
  }

  // The second, from the last to the first.
  void Backward(std::int64_t block) {
    const std::int64_t n = RowsOf(block);
    if (block + 1 < Blocks()) {  // the last one stands there still
      std::copy_n(Kept(block), StateSize(), State());
      TakeBlock(block);
      std::copy_n(backward_.data(), StateSize(), State());
    } else {
      SetSteady(Rows() + (n - 1) * lanes_);
    }
    Sweep(n, -1);
    backward_.assign(State(), State() + StateSize());
    PutBlock(block * kBlock, n);
  }

 private:
  [[nodiscard]] double* Rows() const { return static_cast<double*>(rows_.Get()); }
  [[nodiscard]] double* State() const { return static_cast<double*>(state_.Get()); }
  // Of the continued channel.
  [[nodiscard]] std::int64_t Blocks() const { return BlocksOf(trial_.NData + 2 * padding_); }
  [[nodiscard]] std::int64_t RowsOf(std::int64_t block) const {
    return std::min(kBlock, trial_.NData + 2 * padding_ - block * kBlock);
  }
  double* Kept(std::int64_t block) { return kept_.data() + static_cast<std::size_t>(block) * StateSize(); }
  [[nodiscard]] std::size_t StateSize() const {
    return 2 * static_cast<std::size_t>(lanes_) * sections_.size();
  }

  // Samples from row `at` (from 0) of the channel to the rows from `to` on; lanes without a channel hold
  // zeros.
  void LoadRows(std::int64_t at, std::int64_t n, std::int64_t to = 0) {
    double* row = Rows() + to * lanes_;
    if (neighbours_) {
      kernel_.widen(trial_.matrix.Frame(at + 1) + channels_.front(), trial_.matrix.Stride(), n, row);
      return;
    }
    for (std::int64_t i = 0; i < n; ++i, row += lanes_) {
      const float* frame = trial_.matrix.Frame(at + 1 + i);
      std::size_t lane = 0;
      for (; lane < channels_.size(); ++lane) {
        row[lane] = frame[channels_[lane]];
      }
      std::fill(row + lane, row + lanes_, 0.0);
    }
  }

  void StoreRows(std::int64_t at, std::int64_t n, std::int64_t from = 0) {
    const double* row = Rows() + from * lanes_;
    if (neighbours_) {
      kernel_.narrow(row, n, trial_.matrix.Frame(at + 1) + channels_.front(), trial_.matrix.Stride());
      return;
    }
    for (std::int64_t i = 0; i < n; ++i, row += lanes_) {
      float* frame = trial_.matrix.Frame(at + 1 + i);
      for (std::size_t lane = 0; lane < channels_.size(); ++lane) {
        frame[channels_[lane]] = static_cast<float>(row[lane]);
      }
    }
  }

  // All sections over the first n rows, a tile at a time, forward or backward.
  void Sweep(std::int64_t n, int way) {
    for (std::int64_t done = 0; done < n; done += kTileOfRows) {
      const std::int64_t now = std::min(kTileOfRows, n - done);
      double* first = Rows() + (way > 0 ? done : n - 1 - done) * lanes_;
      for (std::size_t k = 0; k < sections_.size(); ++k) {
        kernel_.sweep(first, std::ptrdiff_t{way} * lanes_, now, sections_[k],
                      State() + k * 2 * static_cast<std::size_t>(lanes_));
      }
    }
  }

  void SetSteady(const double* row) {
    for (int lane = 0; lane < lanes_; ++lane) {
      const std::vector<SectionState> steady = SteadyState(sections_, row[lane]);
      for (std::size_t k = 0; k < steady.size(); ++k) {
        double* at = State() + k * 2 * static_cast<std::size_t>(lanes_) + lane;
        at[0] = steady[k].s1;
        at[lanes_] = steady[k].s2;
      }
    }
  }

  // What lies in front and behind: kept from the start, since the samples it is made of are overwritten.
  void MakeEnds() {
    ends_.assign(static_cast<std::size_t>(2 * padding_ * lanes_), 0.0);
    const std::int64_t n = trial_.NData;
    const auto sample = [this](std::int64_t i, int c) { return double{trial_.matrix.Frame(i)[c]}; };
    for (std::size_t lane = 0; lane < channels_.size(); ++lane) {
      const int c = channels_[lane];
      double* head = ends_.data() + lane;
      double* tail = head + padding_ * lanes_;
      for (std::int64_t m = 1; m <= padding_; ++m) {
        head[(padding_ - m) * lanes_] = 2 * sample(1, c) - sample(1 + m, c);
        tail[(m - 1) * lanes_] = 2 * sample(n, c) - sample(n - m, c);
      }
    }
    if (padding_ == 0) {  // a single sample, which is its own end
      ends_.assign(static_cast<std::size_t>(lanes_), 0.0);
      for (std::size_t lane = 0; lane < channels_.size(); ++lane) {
        ends_[lane] = sample(1, channels_[lane]);
      }
    }
  }

  // Calls data(first, n, row) for the part of the rows [at, at+n) of the continued channel that is the
  // channel, and end(first, n, row) for the parts that are not; `first` counts in each from 0.
  template <typename Data, typename End>
  void ForParts(std::int64_t at, std::int64_t n, const Data& data, const End& end) {
    const std::int64_t limits[] = {0, padding_, padding_ + trial_.NData, 2 * padding_ + trial_.NData};
    for (int part = 0; part < 3; ++part) {
      const std::int64_t lo = std::max(at, limits[part]);
      const std::int64_t hi = std::min(at + n, limits[part + 1]);
      if (lo < hi && part == 1) {
        data(lo - padding_, hi - lo, lo - at);
      } else if (lo < hi) {
        end(part == 0 ? lo : lo - trial_.NData, hi - lo, lo - at);
      }
    }
  }

  void TakeBlock(std::int64_t block) {
    const std::int64_t n = RowsOf(block);
    ForParts(
        block * kBlock, n,
        [this](std::int64_t first, std::int64_t count, std::int64_t row) { LoadRows(first, count, row); },
        [this](std::int64_t first, std::int64_t count, std::int64_t row) {
          std::copy_n(ends_.data() + first * lanes_, count * lanes_, Rows() + row * lanes_);
        });
    Sweep(n, 1);
  }

  void PutBlock(std::int64_t at, std::int64_t n) {
    ForParts(
        at, n,
        [this](std::int64_t first, std::int64_t count, std::int64_t row) { StoreRows(first, count, row); },
        [](std::int64_t, std::int64_t, std::int64_t) {});
  }

  Trial& trial_;
  std::vector<int> channels_;
  const Biquads& sections_;
  const RowKernel& kernel_;
  std::ptrdiff_t lanes_;
  bool neighbours_;
  HugeBlock rows_;
  HugeBlock state_;
  std::vector<double> ends_;
  std::vector<double> kept_;      // the states before each block
  std::vector<double> backward_;  // the state behind the block before
  std::int64_t padding_ = 0;
};

// As few strips as have a lane for each channel.
std::deque<SectionStrip> StripsOf(Trial& trial, const ChannelList& channels, const Biquads& sections,
                                  std::span<const RowKernel> kernels) {
  std::deque<SectionStrip> strips;
  for (std::span<const int> left = channels; !left.empty();) {
    const auto fitting = std::find_if(kernels.begin(), kernels.end() - 1, [&left](const RowKernel& kernel) {
      return kernel.lanes >= static_cast<int>(left.size());
    });
    const std::size_t taken = std::min<std::size_t>(left.size(), static_cast<std::size_t>(fitting->lanes));
    strips.emplace_back(trial, left.first(taken), sections, *fitting);
    left = left.subspan(taken);
  }
  return strips;
}

// A turn may throw, which is how Cancel comes: the other cores are to hear of it.
void GiveOrStop(const Turn& turn, std::atomic<bool>& stopped) {
  try {
    Give(turn);
  } catch (...) {
    stopped = true;
    throw;
  }
}

}  // namespace

std::int64_t SectionPadding(std::int64_t samples, std::size_t sections) {
  return std::min<std::int64_t>(samples - 1, 3 * (2 * static_cast<std::int64_t>(sections) + 1));
}

void RunSections(Trial& trial, const ChannelList& channels, const Biquads& sections, RunDirection direction,
                 SimdLevel level, const Turn& turn) {
  if (trial.NData < 1 || sections.empty()) {
    return;
  }
  std::deque<SectionStrip> strips = StripsOf(trial, channels, sections, RowKernelsOf(level));
  const std::int64_t frames = direction == RunDirection::Forward
                                  ? trial.NData
                                  : trial.NData + 2 * SectionPadding(trial.NData, sections.size());
  const std::int64_t blocks = BlocksOf(frames);
  // A core has strips of its own, and goes over all of them block by block: what one strip has brought into
  // the caches the others find there.
  constexpr std::int64_t kFewestFrames = 1024;  // fewer are done before a thread runs
  const std::size_t parts = frames < kFewestFrames ? 1 : std::min(PartsForCores(), strips.size());
  std::atomic<bool> stopped = false;
  OnCores(parts, [&](std::size_t part) {
    const Share share = ShareOf(strips.size(), part, parts);
    const auto step = [&](void (SectionStrip::*run)(std::int64_t), std::int64_t block) {
      for (std::size_t k = share.first; k < share.end; ++k) {
        (strips[k].*run)(block);
      }
      if (part == 0) {
        GiveOrStop(turn, stopped);
      }
      return !stopped;
    };
    const bool forward = direction == RunDirection::Forward;
    bool goesOn = true;
    for (std::int64_t block = 0; goesOn && block < blocks; ++block) {
      goesOn = step(forward ? &SectionStrip::Forward : &SectionStrip::ForwardOfTwo, block);
    }
    for (std::int64_t block = blocks - 1; goesOn && !forward && block >= 0; --block) {
      goesOn = step(&SectionStrip::Backward, block);
    }
  });
}

void RunSectionsPlain(std::span<double> x, const Biquads& sections, RunDirection direction) {
  if (x.empty() || sections.empty()) {
    return;
  }
  if (direction == RunDirection::Forward) {
    SweepPlain(x.begin(), x.end(), sections, std::vector<SectionState>(sections.size()));
    return;
  }
  const std::int64_t padding = SectionPadding(static_cast<std::int64_t>(x.size()), sections.size());
  std::vector<double> run = ContinuedByReflection(x, padding);
  SweepPlain(run.begin(), run.end(), sections, SteadyState(sections, run.front()));
  SweepPlain(run.rbegin(), run.rend(), sections, SteadyState(sections, run.back()));
  std::copy_n(run.begin() + padding, x.size(), x.begin());
}

}  // namespace velmora
