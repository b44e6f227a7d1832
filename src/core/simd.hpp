#pragma once

#include <vector>

namespace velmora {

/// Vector widths that kernels come in: 16, 32 and 64 bytes. Sse2 is every x86-64 machine.
enum class SimdLevel { Sse2, Avx2, Avx512 };

/// The widest level of this machine, found once.
SimdLevel MachineSimdLevel();

/// Every level this machine has, narrowest first: tests run each against the plain loop.
std::vector<SimdLevel> MachineSimdLevels();

/// What a kernel is at a level, of the three that core/simd_widths.inc makes of it.
template <typename Kernel>
Kernel AtLevel(SimdLevel level, Kernel sse2, Kernel avx2, Kernel avx512) {
  switch (level) {
    case SimdLevel::Avx512:
      return avx512;
    case SimdLevel::Avx2:
      return avx2;
    case SimdLevel::Sse2:
      break;
  }
  return sse2;
}

}  // namespace velmora

// What stands between SIMD_BEGIN_... and SIMD_END is compiled for that width, whatever the machine that
// builds: the caller has asked MachineSimdLevel(). GCC and clang say it by pragmas of their own.
#define SIMD_PRAGMA(words) _Pragma(#words)
#ifdef __clang__
#define SIMD_BEGIN_AVX2 \
  SIMD_PRAGMA(clang attribute push(__attribute__((target("avx2,popcnt"))), apply_to = function))
#define SIMD_BEGIN_AVX512                                                                                \
  SIMD_PRAGMA(clang attribute push(__attribute__((target("avx512f,avx512bw,avx512dq,avx512vl,popcnt"))), \
                                   apply_to = function))
#define SIMD_END SIMD_PRAGMA(clang attribute pop)
#else
#define SIMD_BEGIN_AVX2 SIMD_PRAGMA(GCC push_options) SIMD_PRAGMA(GCC target("avx2"))
// GCC prefers vectors of half the width in loops that it turns into vectors by itself.
#define SIMD_BEGIN_AVX512       \
  SIMD_PRAGMA(GCC push_options) \
  SIMD_PRAGMA(GCC target("avx512f,avx512bw,avx512dq,avx512vl,prefer-vector-width=512"))
#define SIMD_END SIMD_PRAGMA(GCC pop_options)
#endif
