#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/questions/form_graph.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// Bands beyond these are not drawn. Beside other texts, more bands than those have no numbers, which would
/// run into them.
inline constexpr std::size_t kMostBands = 500;
inline constexpr std::size_t kMostNumberedBands = 40;

/// The picture of something found in a channel over time: on white, with the channel's label and the file's
/// name above, seconds and the channel's units beside.
FormGraph SignalPicture(const Trial& trial, int channel);

/// The abscissa at a place of the range, from 0; a place may lie between two samples. Wants a rate.
double TimeAt(const Trial& trial, SampleRange range, double place);

/// From where to where on the abscissa.
struct TimeSpan {
  double from = 0.0;
  double to = 0.0;
};
/// Shades what was found, with its numbers in its order.
void AddBands(FormGraph& graph, const std::vector<TimeSpan>& found, int colour, bool numbered = true);

/// A level line over all these times.
FormGraph::Plot LevelLine(std::string name, int colour, const std::vector<double>& times, double level);

/// The axes show all plots and ellipses, the ordinate with a little room above and below; so has the abscissa
/// where both have the same scale.
void FitAxes(FormGraph& graph);

/// The ordinate reaches higher by a part of itself, for texts above the plots.
void AddRoomAbove(FormGraph& graph, double part = 0.1);

}  // namespace velmora
