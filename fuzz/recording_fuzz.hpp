#pragma once

#include <cstdlib>

#include "core/workbench.hpp"
#include "fuzz_target.hpp"
#include "import/read_recording.hpp"

namespace velmora::fuzz {

/// Reads the bytes as a file of channels, as the load route does. A trial must hold the samples that it
/// counts, and no more of them than there are bytes.
inline int ReadAsRecording(OpenRecording open, const std::uint8_t* data, std::size_t size) {
  Load load(data, size);
  const Trial& trial = load.trial;
  ReadRecording(load.workbench, load.panel, "fuzz", open);
  if (trial.NData == 0) {
    return 0;
  }
  if (trial.NData < 0 || static_cast<std::size_t>(trial.NData) > size || trial.NPlates > kMostPlates) {
    std::abort();
  }
  ReachSamples(trial);
  for (const FilePlate& plate : trial.FilePlates) {
    static_cast<void>(trial.Data(trial.NData, plate.base + 1));
  }
  return 0;
}

}  // namespace velmora::fuzz
