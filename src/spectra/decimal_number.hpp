#pragma once

#include <span>

#include "core/simd.hpp"

namespace velmora {

/// The numbers that the shortest decimal texts of 32-bit values read as: 0.1 for 0.1F, which itself is
/// 0.100000001490116. Not finite values stay. As many numbers as values.
void DecimalNumbers(std::span<const float> values, std::span<double> numbers,
                    SimdLevel level = MachineSimdLevel());

/// The same of one value through its text: what the fast way is held to.
double DecimalNumberPlainly(float value);

}  // namespace velmora
