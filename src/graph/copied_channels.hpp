#pragma once

#include <span>

#include "core/trial/helpers.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// Takes samples of some channels into a trial of their own, which can be drawn while a command works on the
/// samples: row 0 of it is `abscissa` (0: the trial's own), its channels are `channels`, one after the other,
/// with their labels, units and colours. Throws std::bad_alloc.
void CopyChannels(const Trial& from, int abscissa, std::span<const int> channels, SampleRange range,
                  Trial& to);

}  // namespace velmora
