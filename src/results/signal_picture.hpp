#pragma once

#include "core/questions/form_graph.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// The picture of something found in a channel over time: on white, with the channel's label and the file's
/// name above, seconds and the channel's units beside.
FormGraph SignalPicture(const Trial& trial, int channel);

/// The axes show all plots and ellipses, the ordinate with a little room above and below; so has the abscissa
/// where both have the same scale.
void FitAxes(FormGraph& graph);

}  // namespace velmora
