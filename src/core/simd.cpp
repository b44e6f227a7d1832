#include "core/simd.hpp"

namespace velmora {
namespace {

SimdLevel Detect() {
  __builtin_cpu_init();
  const bool wide = __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
                    __builtin_cpu_supports("avx512dq") != 0 && __builtin_cpu_supports("avx512vl") != 0;
  if (wide) {
    return SimdLevel::Avx512;
  }
  return __builtin_cpu_supports("avx2") != 0 ? SimdLevel::Avx2 : SimdLevel::Sse2;
}

}  // namespace

SimdLevel MachineSimdLevel() {
  static const SimdLevel level = Detect();
  return level;
}

std::vector<SimdLevel> MachineSimdLevels() {
  std::vector<SimdLevel> levels;
  for (const SimdLevel level : {SimdLevel::Sse2, SimdLevel::Avx2, SimdLevel::Avx512}) {
    if (level <= MachineSimdLevel()) {
      levels.push_back(level);
    }
  }
  return levels;
}

}  // namespace velmora
