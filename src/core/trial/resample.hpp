#pragma once

#include <cstdint>

#include "core/simd.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// Re-samples every channel to n intervals (n+1 samples) by linear interpolation over the same
/// duration; Rate changes by n/(NData-1) and the time column is rebuilt. The first and last samples
/// are kept as they are. Nothing happens with n below 1 or NData below 2. Every level gives the same
/// bits. Throws std::bad_alloc, or std::length_error when n+1 does not fit 32 bits, before anything has
/// changed.
///
/// More samples than before need another matrix. `spare` lends its memory for it and gets that of the trial,
/// for whoever re-samples one trial after the other.
///
/// Returns the largest magnitude of any sample, which costs nothing on the way: infinity or no number when
/// one is, and infinity when nothing was done.
float ResampleAll(Trial& trial, std::int64_t n, SimdLevel level = MachineSimdLevel(),
                  SampleMatrix* spare = nullptr);

/// The same without vectors: what the levels are held to.
float ResampleAllPlainly(Trial& trial, std::int64_t n);

}  // namespace velmora
