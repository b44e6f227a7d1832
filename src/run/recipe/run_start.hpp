#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "core/workbench.hpp"

namespace velmora {

/// What dialogues offer again, as they were left; and the type of trigger, the one preference that an answer
/// may leave out, while none is chosen.
using OfferedAgain = std::tuple<FilterMemory, SmoothingMemory, ScalingMemory, BiasLevels, ImpactMemory,
                                GraphMemory, PlateMemory, EnsembleMemory, std::int32_t>;

/// What outlives a trial and is gone by without a question. A recipe says what there was when its trial was
/// loaded, so that its steps come to the same; nothing: as the program starts.
struct RunStart {
  std::string window;  // of spectra, the id of the command that chooses it; empty: none
  std::optional<ThresholdMemory> thresholds;  // of another trial
  // For the way back: a recipe begins with nothing picked and nothing offered, and says all that it enters.
  ChannelFlags picked{};
  PerChannel<float> constants{};
  std::optional<OfferedAgain> offered;
};

RunStart StartOf(const Workbench& workbench);

/// Puts the workbench to this start, whatever there was before.
void TakeUp(Workbench& workbench, const RunStart& start);

}  // namespace velmora
