#include "core/trial/resample.hpp"

#include <algorithm>
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

#define SIMD_KERNEL "core/trial/resample_kernel.inc"
#include "core/simd_widths.inc"

void InterpolatePlainly(const Resampling& job) {
  for (long k = 2; k <= job.n; ++k) {
    const Position at = PositionOf(job, k);
    const float* a = job.old + (at.below - 1) * job.width;
    const float* b = a + job.width;
    float* to = job.fresh + (k - 1) * job.width;
    for (long c = 0; c < job.width; ++c) {
      const double from = a[c];
      to[c] = static_cast<float>(from + (static_cast<double>(b[c]) - from) * at.fraction);
    }
  }
}

// A frame narrower than the level's vector takes a narrower one.
void Interpolate(const Resampling& job, SimdLevel level) {
  if (level >= SimdLevel::Avx512 && job.width >= avx512::kDoubles) {
    avx512::Interpolate(job);
  } else if (level >= SimdLevel::Avx2 && job.width >= avx2::kDoubles) {
    avx2::Interpolate(job);
  } else if (job.width >= sse2::kDoubles) {
    sse2::Interpolate(job);
  } else {
    InterpolatePlainly(job);
  }
}

template <typename Interpolation>
void Resample(Trial& trial, std::int64_t n, SampleMatrix& fresh, const Interpolation& interpolate) {
  const std::int64_t before = trial.NData;
  if (n < 1 || before < 2) {
    return;
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
  interpolate(
      Resampling{trial.matrix.Frame(1), before, to.Frame(1), n, width, intervals / static_cast<double>(n)});
  std::copy_n(trial.matrix.Frame(before), width, to.Frame(n + 1));
  if (!inPlace) {
    std::swap(trial.matrix, fresh);
  }
  trial.ResizeData(n + 1);
  trial.Rate = trial.Rate * (static_cast<double>(n) / intervals);
  trial.RebuildTimeColumn();
}

}  // namespace

void ResampleAll(Trial& trial, std::int64_t n, SimdLevel level, SampleMatrix* spare) {
  SampleMatrix own;
  Resample(trial, n, spare != nullptr ? *spare : own,
           [level](const Resampling& job) { Interpolate(job, level); });
}

void ResampleAllPlainly(Trial& trial, std::int64_t n) {
  SampleMatrix own;
  Resample(trial, n, own, InterpolatePlainly);
}

}  // namespace velmora
