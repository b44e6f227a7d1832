#include "graph/xy/xy_setup.hpp"

#include <algorithm>

#include "core/text/text.hpp"

namespace velmora {

std::vector<int> ChannelsOfY(const XYSetup& setup, const Trial& trial) {
  std::vector<int> channels;
  for (int c = 1; c <= trial.NChan; ++c) {
    if (setup.Y[c]) {
      channels.push_back(c);
    }
  }
  return channels;
}

SampleRange RangeOf(const XYSetup& setup, const Trial& trial) {
  if (!setup.BetweenCursors) {
    return {1, trial.NData};
  }
  return {std::clamp(trial.CursorLo, 1, trial.NData), std::clamp(trial.CursorHi, 1, trial.NData)};
}

std::string LabelOf(const Trial& trial, int channel) {
  return Trim(trial.ChanLabel[channel].Text());
}

std::string UnitsOf(const Workbench& workbench, int channel) {
  return channel == 0 ? AbscissaUnits(workbench) : Trim(workbench.trial.ChanUnits[channel].Text());
}

bool UnitsAgree(const XYSetup& setup, const Workbench& workbench) {
  const std::vector<int> y = ChannelsOfY(setup, workbench.trial);
  const std::string units = UnitsOf(workbench, setup.X);
  return !units.empty() && !y.empty() &&
         std::all_of(y.begin(), y.end(), [&](int channel) { return UnitsOf(workbench, channel) == units; });
}

bool MayColourByTime(Workbench& workbench, std::size_t channels) {
  if (channels <= 1) {
    return true;
  }
  ShowRefusal(workbench, {.title = "Colour by Time",
                          .text = "The colours of time need one channel as Y; choose one, or leave them out.",
                          .icon = Icon::Exclamation});
  return false;
}

XYSetup FirstSetup(const Workbench& workbench) {
  const Trial& trial = workbench.trial;
  XYSetup setup;
  setup.Y = workbench.chooser.ChanSelected;
  std::vector<int> selected = ChannelsOfY(setup, trial);
  if (selected.size() < 2) {
    setup.Y.fill(false);
    setup.X = trial.NChan > 1 ? 1 : 0;
    setup.Y[setup.X + 1] = true;
  } else {
    setup.X = selected.front();
    setup.Y[setup.X] = false;
  }
  setup.EqualScales = UnitsAgree(setup, workbench);
  return setup;
}

}  // namespace velmora
