#include "ensemble/ensemble_sums.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace velmora {
namespace {

using Run = ChannelRun;

struct Accumulation {
  const float* samples;  // the first frame
  long stride;           // floats from one frame to the next
  long frames;
  float* sums;  // frames of twice the width
  long width;   // channels
  const Run* runs;
  const Run* runsEnd;
};

#define SIMD_KERNEL "ensemble/ensemble_lanes.inc"
#include "core/simd_widths.inc"

// The runs of a frame are short: 64-byte vectors take longer to set up than they save.
template <typename Kernel>
Kernel Fastest(SimdLevel level, Kernel sse2, Kernel avx2, Kernel avx512) {
  return AtLevel(std::min(level, SimdLevel::Avx2), sse2, avx2, avx512);
}

}  // namespace

struct EnsembleSums::Job : Accumulation {
  Job(const EnsembleSums& of, const Trial& trial) {
    if (trial.NData != of.intervals_ + 1 || of.channels_.empty() || of.channels_.back() > trial.NChan) {
      throw std::invalid_argument("the trial does not fit the average");
    }
    samples = trial.matrix.Frame(1);
    stride = trial.matrix.Stride();
    frames = trial.NData;
    sums = const_cast<float*>(of.sums_.Frame(1));  // NOLINT: written to by those alone that may
    width = of.Width();
    runs = of.runs_.data();
    runsEnd = runs + of.runs_.size();
  }
};

void EnsembleSums::Begin(const ChannelList& channels, std::int32_t intervals) {
  channels_.clear();
  sums_.Allocate(2 * static_cast<int>(channels.size()) - 1, static_cast<std::int64_t>(intervals) + 1);
  channels_ = channels;
  runs_ = RunsOf(channels);
  intervals_ = intervals;
}

bool EnsembleSums::Fits(const Trial& trial, SimdLevel level) const {
  const Job job(*this, trial);
  return Fastest(level, &sse2::StaysFinite, &avx2::StaysFinite, &avx512::StaysFinite)(job);
}

void EnsembleSums::Add(const Trial& trial, SimdLevel level) {
  Fastest(level, &sse2::Accumulate<true>, &avx2::Accumulate<true>,
          &avx512::Accumulate<true>)(Job(*this, trial));
}

void EnsembleSums::Remove(const Trial& trial, SimdLevel level) {
  Fastest(level, &sse2::Accumulate<false>, &avx2::Accumulate<false>,
          &avx512::Accumulate<false>)(Job(*this, trial));
}

float EnsembleSums::Mean(std::int64_t k, int j, std::int32_t files) const {
  return Sum(k, j) / static_cast<float>(files);
}

float EnsembleSums::Deviation(std::int64_t k, int j, std::int32_t files) const {
  const auto n = static_cast<float>(files);
  const float s = Sum(k, j);
  const float variance = Squares(k, j) - s * s / n;
  return variance < 0 ? 0.0F : std::sqrt(variance / (n - 1));
}

double CoefficientOfVariation(Trial& trial, int mean, int deviation) {
  const ChannelView means = trial.Channel(mean);
  const ChannelView deviations = trial.Channel(deviation);
  double a = 0.0;
  double b = 0.0;
  for (std::int64_t k = 0; k < means.size(); ++k) {
    a += static_cast<double>(means[k]) * means[k];
    b += static_cast<double>(deviations[k]) * deviations[k];
  }
  const auto samples = static_cast<double>(means.size());
  const double size = std::sqrt(a / samples);
  return size == 0.0 ? 0.0 : 100 * std::sqrt(b / samples) / size;
}

}  // namespace velmora
