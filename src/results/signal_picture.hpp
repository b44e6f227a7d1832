#pragma once

#include <cstddef>

#include "core/questions/form_graph.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// Bands beyond these are not drawn, and more bands than those have no numbers, which would run into each
/// other.
inline constexpr std::size_t kMostBands = 500;
inline constexpr std::size_t kMostNumberedBands = 40;

/// The picture of something found in a channel over time: on white, with the channel's label and the file's
/// name above, seconds and the channel's units beside.
FormGraph SignalPicture(const Trial& trial, int channel);

/// The axes show all plots and ellipses, the ordinate with a little room above and below; so has the abscissa
/// where both have the same scale.
void FitAxes(FormGraph& graph);

}  // namespace velmora
