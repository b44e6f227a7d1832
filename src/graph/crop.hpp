#pragma once

#include <cstdint>

#include "core/trial/trial.hpp"

namespace velmora {

/// Which times the samples that stay have: their own, or those of the trial's first samples.
enum class CropTimes { Move, Reset };

/// Keeps samples lo to hi, 1 <= lo <= hi <= NData, and sets NData and Duration. Nothing changes, and
/// false is returned, when that is every sample. Throws std::out_of_range for any other range.
bool CropSamples(Trial& trial, std::int32_t lo, std::int32_t hi, CropTimes times);

/// Removes samples lo to hi, both included, and sets NData and Duration. At least one sample must stay.
/// Throws std::out_of_range as above.
void CutSamples(Trial& trial, std::int32_t lo, std::int32_t hi, CropTimes times);

}  // namespace velmora
