#pragma once

#include <optional>
#include <span>
#include <vector>

#include "core/trial/helpers.hpp"

namespace velmora {

/// Whether a vertical force points down: its mean is below 0. Of action and reaction, plates give either.
bool PointsDown(std::span<const double> vertical);

/// The force that opposes it.
void TurnForce(std::span<double> force);

/// How many metres a unit of the channel is; nothing unless it is in m, cm or mm.
std::optional<double> MetresIn(const Trial& trial, int channel);

/// Warns where a channel that newtons are asked of says that it is in something else.
void TellIfNotNewtons(Workbench& workbench, int channel);

}  // namespace velmora
