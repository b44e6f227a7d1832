#pragma once

#include <cstdint>
#include <vector>

#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// What an X-Y plot shows, and how.
struct XYSetup {
  int X = 0;  // 0: the abscissa
  ChannelFlags Y{};
  bool BetweenCursors = false;  // else all samples
  bool EqualScales = false;
  bool Marks = true;  // of start and end
  bool ColourByTime = false;
  bool Ellipse = false;
};

/// Ascending; those that the trial has.
std::vector<int> ChannelsOfY(const XYSetup& setup, const Trial& trial);

/// The samples that are shown, as the trial's cursors now stand.
SampleRange RangeOf(const XYSetup& setup, const Trial& trial);

/// Whether X and all Y are of the same unit, and it has a name.
bool UnitsAgree(const XYSetup& setup, const Workbench& workbench);

/// Whether so many channels of Y can have the colours of time; a box says so when they cannot.
bool MayColourByTime(Workbench& workbench, std::size_t channels);

/// "Time", or the label of a channel.
std::string LabelOf(const Trial& trial, int channel);

/// The units of a channel; of the abscissa (0) as people read them.
std::string UnitsOf(const Workbench& workbench, int channel);

/// What the dialogue offers first: of the channels that are selected the first as X and the others as Y.
XYSetup FirstSetup(const Workbench& workbench);

}  // namespace velmora
