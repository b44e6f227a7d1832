#pragma once

#include <vector>

namespace velmora {

/// Vector widths that kernels come in: 16, 32 and 64 bytes. Sse2 is every x86-64 machine.
enum class SimdLevel { Sse2, Avx2, Avx512 };

/// The widest level of this machine, found once.
SimdLevel MachineSimdLevel();

/// Every level this machine has, narrowest first: tests run each against the plain loop.
std::vector<SimdLevel> MachineSimdLevels();

}  // namespace velmora
