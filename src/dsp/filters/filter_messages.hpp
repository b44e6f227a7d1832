#pragma once

#include <string>

#include "core/workbench.hpp"
#include "dsp/filters/filter_section.hpp"

namespace velmora {

/// Why a filter was not accepted: a sentence and, where there is one, the limit. Empty when it was.
std::string ReasonText(const FilterVerdict& verdict);

/// The same in a few words with what was asked for: "600 Hz, at most 250 Hz".
std::string ShortReason(const FilterVerdict& verdict);

/// The end of every refusal of one channel, from 1.
std::string CancelledText(int channel);

/// The boxes that a verdict calls for, none when the filter was accepted without a warning.
/// `channel` from 1.
void ShowVerdict(Workbench& workbench, int channel, const FilterVerdict& verdict);

}  // namespace velmora
