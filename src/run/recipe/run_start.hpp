#pragma once

#include <optional>
#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// What outlives a trial and is gone by without a question. A recipe says what there was when its trial was
/// loaded, so that its steps come to the same; nothing: as the program starts.
struct RunStart {
  std::string window;  // of spectra, the id of the command that chooses it; empty: none
  std::optional<ThresholdMemory> thresholds;  // of another trial
  // What the picker was left with, for the way back: a recipe begins with nothing picked, and says its picks.
  ChannelFlags picked{};
  PerChannel<float> constants{};
};

RunStart StartOf(const Workbench& workbench);

/// Puts the workbench to this start, whatever there was before.
void TakeUp(Workbench& workbench, const RunStart& start);

}  // namespace velmora
