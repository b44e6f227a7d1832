#pragma once

#include "core/trial/helpers.hpp"

namespace velmora {

/// Tells in one notice which of the channels 1..`channels` lose most of their digits in a file of so many
/// decimals: those whose largest value in the range has fewer than three left.
void TellFewDigits(Workbench& workbench, int channels, SampleRange range, int decimals);

}  // namespace velmora
