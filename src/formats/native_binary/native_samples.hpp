#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/files/files.hpp"
#include "core/questions/progress.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// Cancel is tested row by row, but rows are read together, at least 16 and at most this many bytes of
/// them at a time: all of them for usual files, and few enough of a huge one that Cancel is felt.
inline constexpr std::int64_t kBundleBytes = std::int64_t{256} << 20;

/// Where the rows lie in a file: row 0, the times, then each channel, 32-bit floats.
struct NativeRows {
  std::int64_t offset = 0;   // of row 0
  std::int64_t samples = 0;  // in each row
};

struct NativeSamplesRead {
  /// The last complete row, when Cancel was pressed.
  std::optional<int> cancelledAfter;
  /// What the file should have held and did not give: a disk that fails, a file that is cut meanwhile.
  struct Loss {
    int row = 0;              // the first place, row by row
    std::int64_t sample = 0;  // from 1
    std::int64_t samples = 0;
    std::string why;
  };
  std::optional<Loss> lost;
};

/// Allocates trial.Data for NChan channels and NData samples (NChan 0..64, NData 0 to rows.samples) and
/// fills it from the rows. What the file does not hold stays 0, without an error.
/// Throws std::bad_alloc, with NData 0.
NativeSamplesRead ReadNativeSamples(Trial& trial, ProgressPanel& panel, const InputFile& file,
                                    NativeRows rows, std::int64_t bundleBytes = kBundleBytes);

}  // namespace velmora
