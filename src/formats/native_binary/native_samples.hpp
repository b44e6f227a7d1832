#pragma once

#include <cstdint>
#include <optional>

#include "core/files/files.hpp"
#include "core/questions/progress.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// Cancel is tested row by row, but rows are read together, at least 16 and at most this many bytes of
/// them at a time: all of them for usual files, and few enough of a huge one that Cancel is felt.
inline constexpr std::int64_t kBundleBytes = std::int64_t{256} << 20;

/// Allocates trial.Data for NChan channels and NData samples (NChan 0..64, NData 0 or more) and fills
/// it from `offset`: row 0, the times, then each channel, 32-bit floats. What the file does not hold
/// stays 0, without an error. Returns the last complete row when Cancel was pressed, else nothing.
/// Throws std::bad_alloc, with NData 0.
std::optional<int> ReadNativeSamples(Trial& trial, ProgressPanel& panel, const InputFile& file,
                                     std::int64_t offset, std::int64_t bundleBytes = kBundleBytes);

}  // namespace velmora
