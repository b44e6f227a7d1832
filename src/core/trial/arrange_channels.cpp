#include "core/trial/arrange_channels.hpp"

#include <algorithm>
#include <optional>
#include <vector>

#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

// Everything outside the trial that is kept per channel. What is added to a memory is added here.
template <typename Each>
void EachRow(Workbench& workbench, const Each& each) {
  FilterMemory& filters = workbench.filters;
  each(filters.ZeroLag);
  each(filters.FilterCutoffs);
  each(filters.SecondCutoffs);
  each(filters.LastLowPassCutoffs);
  each(filters.LastHighPassCutoffs);
  each(workbench.scaling.ScaleMemory);
  each(workbench.bias.BiasMemory);
  ThresholdMemory& thresholds = workbench.thresholds;
  each(thresholds.ChanMean);
  each(thresholds.ChanSD);
  each(thresholds.ChanThreshold);
  for (EventRecord& record : workbench.events.ChannelEvents) {
    each(record);
  }
  each(workbench.graph.GraphOfChannel);
  each(workbench.chooser.ChanSelected);
  each(workbench.chooser.ChanConst);
  each(workbench.chooser.ChooserNames);
}

// By how much all of a run of channels moves when it stays together, from the channel behind `base`.
std::optional<int> ShiftOf(std::span<const int> order, int base, int channels) {
  const auto first = std::find(order.begin(), order.end(), base + 1);
  if (order.end() - first < channels) {
    return std::nullopt;
  }
  for (int k = 1; k < channels; ++k) {
    if (first[k] != base + 1 + k) {
      return std::nullopt;
    }
  }
  return static_cast<int>(first - order.begin()) - base;
}

void ForgetPlates(Trial& trial) {
  trial.FilePlates.clear();
  trial.NPlates = 0;
}

void ArrangePlates(Workbench& workbench, std::span<const int> order) {
  Trial& trial = workbench.trial;
  if (trial.FilePlates.empty()) {
    return;
  }
  const auto shiftOf = [&](const FilePlate& plate) { return ShiftOf(order, plate.base, plate.channels); };
  const std::optional<int> shift = shiftOf(trial.FilePlates.front());
  const bool together = shift && std::all_of(trial.FilePlates.begin(), trial.FilePlates.end(),
                                             [&](const FilePlate& plate) { return shiftOf(plate) == shift; });
  if (!together) {
    ForgetPlates(trial);
    AddNotice(workbench,
              "The force plates of the file are no longer known: their channels do not lie together.");
    return;
  }
  MoveFilePlates(workbench, *shift);
}

// What the file says of its plates is said of raw channels: it goes, or somebody would reduce them again.
void ForgetReducedForces(Trial& trial) {
  if (trial.ForcesReduced) {
    trial.ForcesReduced = false;
    ForgetPlates(trial);
  }
}

}  // namespace

void MoveFilePlates(Workbench& workbench, int channels) {
  std::vector<FilePlate>& plates = workbench.trial.FilePlates;
  if (!plates.empty() && workbench.plates.FirstChannel == plates.front().base) {
    workbench.plates.FirstChannel += channels;
  }
  for (FilePlate& plate : plates) {
    plate.base += channels;
  }
}

void ArrangeChannels(Workbench& workbench, std::span<const int> order) {
  ForgetReducedForces(workbench.trial);
  ArrangePlates(workbench, order);
  workbench.trial.ArrangeChannels(order);
  EachRow(workbench, [&order](auto& row) {
    const auto before = row;
    std::fill(row.begin() + 1, row.end(), std::decay_t<decltype(row[1])>{});
    for (std::size_t k = 0; k < order.size(); ++k) {
      row[k + 1] = before[order[k]];
    }
  });
  ShowFirstChannelPage(workbench);
}

void ForgetChannel(Workbench& workbench, int channel) {
  EachRow(workbench, [channel](auto& row) { row[channel] = std::decay_t<decltype(row[1])>{}; });
}

}  // namespace velmora
