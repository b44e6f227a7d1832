#include "dsp/filters/filter_and_tell.hpp"

#include "dsp/filters/filter_messages.hpp"

namespace velmora {
namespace {

PerChannel<FilterVerdict> FilterUnderPanel(Workbench& workbench, const ChannelsFilter& filter) {
  ProgressPanel panel(workbench, ProgressPanel::Kind::Processing);
  return FilterChannels(workbench.trial, filter, MachineSimdLevel(), TurnOf(panel));
}

}  // namespace

void FilterAndTell(Workbench& workbench, const ChannelsFilter& filter) {
  const PerChannel<FilterVerdict> verdicts = FilterUnderPanel(workbench, filter);
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    ShowVerdict(workbench, c, verdicts[c]);
  }
}

}  // namespace velmora
