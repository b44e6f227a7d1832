#include "core/trial/resample.hpp"

#include <algorithm>
#include <bit>
#include <limits>
#include <stdexcept>
#include <utility>

#include "core/simd.hpp"

namespace velmora {
namespace {

// All counts are from 1, as samples are; frames are width floats.
struct Resampling {
  const float* old;
  long before;   // samples in old
  float* fresh;  // old itself when n < before
  long n;        // intervals in fresh
  long width;
  double step;  // old samples from one new sample to the next
};

// Where the new sample k lies: this far behind an old sample that has another one after it.
struct Position {
  long below;
  double fraction;
};

__attribute__((always_inline)) inline Position PositionOf(const Resampling& job, long k) {
  const double x = 1 + static_cast<double>(k - 1) * job.step;
  const long whole = static_cast<long>(x);
  const long below = whole < job.before ? whole : job.before - 1;
  return {below, x - static_cast<double>(below)};
}

// All bits but the sign: as whole numbers they rise with the magnitude, and what is no number is above
// infinity.
constexpr int kMagnitude = 0x7FFFFFFF;

#define SIMD_KERNEL "core/trial/resample_kernel.inc"
#include "core/simd_widths.inc"

int LargestOf(const float* frame, std::int64_t width) {
  int largest = 0;
  for (std::int64_t c = 0; c < width; ++c) {
    largest = std::max(largest, std::bit_cast<int>(frame[c]) & kMagnitude);
  }
  return largest;
}

int InterpolatePlainly(const Resampling& job) {
  int largest = 0;
  for (long k = 2; k <= job.n; ++k) {
    const Position at = PositionOf(job, k);
    const float* a = job.old + (at.below - 1) * job.width;
    const float* b = a + job.width;
    float* to = job.fresh + (k - 1) * job.width;
    for (long c = 0; c < job.width; ++c) {
      const double from = a[c];
      to[c] = static_cast<float>(from + (static_cast<double>(b[c]) - from) * at.fraction);
    }
    largest = std::max(largest, LargestOf(to, job.width));
  }
  return largest;
}

// A frame narrower than the level's vector takes a narrower one.
int Interpolate(const Resampling& job, SimdLevel level) {
  if (level >= SimdLevel::Avx512 && job.width >= avx512::kDoubles) {
    return avx512::Interpolate(job);
  }
  if (level >= SimdLevel::Avx2 && job.width >= avx2::kDoubles) {
    return avx2::Interpolate(job);
  }
  return job.width >= sse2::kDoubles ? sse2::Interpolate(job) : InterpolatePlainly(job);
}

template <typename Interpolation>
float Resample(Trial& trial, std::int64_t n, SampleMatrix& fresh, const Interpolation& interpolate) {
  const std::int64_t before = trial.NData;
  if (n < 1 || before < 2) {
    return std::numeric_limits<float>::infinity();
  }
  if (n >= std::numeric_limits<std::int32_t>::max()) {
    throw std::length_error("a trial holds at most 2147483647 samples");
  }
  const double intervals = static_cast<double>(before - 1);
  const int width = trial.NChan + 1;
  // Without more samples than before, each new one lies at or before the old ones that it is made of:
  // the old memory will do, and fresh memory costs more than the interpolation.
  const bool inPlace = n < before;
  if (!inPlace) {
    fresh.Allocate(trial.NChan, n + 1, SampleMatrix::Fill::None);
    std::copy_n(trial.matrix.Frame(1), width, fresh.Frame(1));
  }
  SampleMatrix& to = inPlace ? trial.matrix : fresh;
  int largest = interpolate(
      Resampling{trial.matrix.Frame(1), before, to.Frame(1), n, width, intervals / static_cast<double>(n)});
  std::copy_n(trial.matrix.Frame(before), width, to.Frame(n + 1));
  largest = std::max({largest, LargestOf(to.Frame(1), width), LargestOf(to.Frame(n + 1), width)});
  if (!inPlace) {
    std::swap(trial.matrix, fresh);
  }
  trial.ResizeData(n + 1);
  trial.Rate = trial.Rate * (static_cast<double>(n) / intervals);
  trial.RebuildTimeColumn();
  return std::bit_cast<float>(largest);
}

}  // namespace

float ResampleAll(Trial& trial, std::int64_t n, SimdLevel level, SampleMatrix* spare) {
  SampleMatrix own;
  return Resample(trial, n, spare != nullptr ? *spare : own,
                  [level](const Resampling& job) { return Interpolate(job, level); });
}

float ResampleAllPlainly(Trial& trial, std::int64_t n) {
  SampleMatrix own;
  return Resample(trial, n, own, InterpolatePlainly);
}

}  // namespace velmora
