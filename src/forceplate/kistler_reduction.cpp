#include "forceplate/kistler_reduction.hpp"

#include <immintrin.h>

#include <cmath>
#include <cstdint>

#include "core/simd.hpp"
#include "forceplate/plate_distances.hpp"
#include "forceplate/stretches.hpp"

namespace velmora {
namespace {

/// The factors as the formulas use them.
struct Job {
  double zero[kKistlerChannels];
  double a;
  double b;
  double az0;
  double S1;
  double S2;
  double S3;
  double minForce;
};

Job JobOf(const Trial& trial, int base, const KistlerFactors& factors, float minForce) {
  Job job{.zero = {},
          .a = factors.a,
          .b = factors.b,
          .az0 = factors.az0,
          .S1 = factors.S1,
          .S2 = factors.S2,
          .S3 = factors.S3,
          .minForce = minForce};
  for (int k = 0; k < kKistlerChannels; ++k) {
    job.zero[k] = trial.ChanOffset[base + 1 + k];
  }
  return job;
}

// One sample, all in 64 bits until it is stored. `d` is its first channel.
void Reduce(float* d, const Job& job) {
  const double F1 = (d[0] - job.zero[0]) * job.S1;
  const double F2 = (d[1] - job.zero[1]) * job.S1;
  const double F3 = (d[2] - job.zero[2]) * job.S2;
  const double F4 = (d[3] - job.zero[3]) * job.S2;
  const double F5 = (d[4] - job.zero[4]) * job.S3;
  const double F6 = (d[5] - job.zero[5]) * job.S3;
  const double F7 = (d[6] - job.zero[6]) * job.S3;
  const double F8 = (d[7] - job.zero[7]) * job.S3;
  double Fx = F1 + F2;
  double Fy = F3 + F4;
  double Fz = F5 + F6 + F7 + F8;
  double Ax = 0.0;
  double Ay = 0.0;
  double Tz = 0.0;
  double Ff = 0.0;
  double CF = 0.0;
  if (std::abs(Fz) >= job.minForce) {
    Ax = (Fx * job.az0 + job.a * (F6 + F7 - F5 - F8)) / Fz;
    Ay = (Fy * job.az0 - job.b * (F7 + F8 - F5 - F6)) / Fz;
    Tz = Fx * Ay + Fy * Ax - (job.a * (F4 - F3) + job.b * (F2 - F1));
    Ff = std::sqrt(Fx * Fx + Fy * Fy);
    CF = std::abs(Ff / Fz);
  } else {
    Fx = Fy = Fz = 0.0;
  }
  d[0] = static_cast<float>(Fx);
  d[1] = static_cast<float>(-Fy);
  d[2] = static_cast<float>(Fz);
  d[3] = static_cast<float>(Ax);
  d[4] = static_cast<float>(Ay);
  d[5] = static_cast<float>(Tz / 100.0);
  d[6] = static_cast<float>(Ff);
  d[7] = static_cast<float>(CF);
}

using Vector = double __attribute__((vector_size(32)));
using Bits = std::int64_t __attribute__((vector_size(32)));
using Floats = float __attribute__((vector_size(16)));
using LooseFloats = float __attribute__((vector_size(16), aligned(4), may_alias));

// GCC 12 takes conversions of whole vectors through memory; the instructions are said by name.
namespace sse2 {
__attribute__((always_inline)) inline Vector SquareRoots(Vector x) {
  const __m128d low = _mm_sqrt_pd(__m128d{x[0], x[1]});
  const __m128d high = _mm_sqrt_pd(__m128d{x[2], x[3]});
  return Vector{low[0], low[1], high[0], high[1]};
}
__attribute__((always_inline)) inline Vector Widened(Floats x) {
  return __builtin_convertvector(x, Vector);
}
__attribute__((always_inline)) inline Floats Narrowed(Vector x) {
  return __builtin_convertvector(x, Floats);
}
#include "forceplate/kistler_kernel.inc"
}  // namespace sse2

SIMD_BEGIN_AVX2
namespace avx2 {
__attribute__((always_inline)) inline Vector SquareRoots(Vector x) {
  return _mm256_sqrt_pd(x);
}
__attribute__((always_inline)) inline Vector Widened(Floats x) {
  return _mm256_cvtps_pd(x);
}
__attribute__((always_inline)) inline Floats Narrowed(Vector x) {
  return _mm256_cvtpd_ps(x);
}
#include "forceplate/kistler_kernel.inc"
}  // namespace avx2
SIMD_END

float* FirstChannel(Trial& trial, int base) {
  (void)trial.Channel(base + 1);
  return trial.Channel(base + kKistlerChannels).data() - (kKistlerChannels - 1);
}

}  // namespace

KistlerFactors KistlerFactorsOf(const ForcePlate& plate) {
  return {.a = static_cast<float>(Centimetres(plate, plate.a)),
          .b = static_cast<float>(Centimetres(plate, plate.b)),
          .az0 = static_cast<float>(Centimetres(plate, plate.az0)),
          .S1 = static_cast<float>(-plate.XYRange / plate.XSens),
          .S2 = static_cast<float>(plate.XYRange / plate.YSens),
          .S3 = static_cast<float>(-plate.ZRange / plate.ZSens)};
}

void ReduceKistlerForces(Trial& trial, int base, const KistlerFactors& factors, float minForce,
                         const Turn& turn, SimdLevel level) {
  float* const first = FirstChannel(trial, base);
  const Job job = JobOf(trial, base, factors, minForce);
  const long stride = trial.matrix.Stride();
  const auto reduceFours = level == SimdLevel::Sse2 ? sse2::ReduceFours : avx2::ReduceFours;
  InStretches(trial.NData, turn, [&](std::int64_t from, std::int64_t samples) {
    float* const at = first + (from - 1) * stride;
    const std::int64_t fours = samples / 4;
    reduceFours(at, stride, fours, job);
    for (std::int64_t k = fours * 4; k < samples; ++k) {
      Reduce(at + k * stride, job);
    }
  });
}

void ReduceKistlerForcesPlainly(Trial& trial, int base, const KistlerFactors& factors, float minForce) {
  float* at = FirstChannel(trial, base);
  const Job job = JobOf(trial, base, factors, minForce);
  for (std::int64_t i = 0; i < trial.NData; ++i, at += trial.matrix.Stride()) {
    Reduce(at, job);
  }
}

}  // namespace velmora
