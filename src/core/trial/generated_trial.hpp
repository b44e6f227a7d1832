#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// Samples of a trial of generated waveforms: rate * time + 1. None, refused under the title of the dialogue,
/// for a rate (Hz) or time (s) that is not above zero or makes too many.
std::optional<std::int64_t> GeneratedSamples(Workbench& workbench, double rate, double time,
                                             const std::string& title);

/// Begins such a trial, without channels. Refuses the same, and returns false.
bool StartGeneratedTrial(Workbench& workbench, double rate, double time, const std::string& title);

}  // namespace velmora
