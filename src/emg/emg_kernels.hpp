#pragma once

#include <cstdint>

#include "core/trial/trial.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// Moves the samples of channels to the left by `shift` samples (0 and more); the last ones become 0, all of
/// them for a shift of NData or more. The trial keeps its length.
void ShiftLeft(Trial& trial, const ChannelList& channels, std::int64_t shift);

}  // namespace velmora
