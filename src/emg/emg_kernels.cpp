#include "emg/emg_kernels.hpp"

#include <algorithm>

namespace velmora {

void ShiftLeft(Trial& trial, const ChannelList& channels, std::int64_t shift) {
  if (shift == 0) {
    return;
  }
  const std::vector<ChannelRun> runs = RunsOf(channels);
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    float* frame = trial.matrix.Frame(i);
    for (const ChannelRun& run : runs) {
      if (i + shift <= trial.NData) {
        std::copy(frame + shift * trial.matrix.Stride() + run.first,
                  frame + shift * trial.matrix.Stride() + run.last + 1, frame + run.first);
      } else {
        std::fill(frame + run.first, frame + run.last + 1, 0.0F);
      }
    }
  }
}

}  // namespace velmora
