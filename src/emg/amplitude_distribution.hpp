#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/command_memory.hpp"
#include "core/simd.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// Amplitude probability distribution of a whole channel and its running sum (Jonsson 1982, J. Human Ergol.
/// 11, 73): percent of the samples in each of `bins` bins of the rectified signal, and the amplitudes below
/// which 10, 50 and 90 % of the samples lie, in percent of the largest. `bins` at least 1.
///
/// Bins other than 100 do not span the amplitudes evenly: the width is largest * bins / 10000, as results of
/// earlier years were computed. The three amplitudes are carried on from the last bin below their level; a
/// level that the first bin reaches is 0.
///
/// Returns nothing for a channel of zeros, or with a sample that is not finite.
std::optional<AmplitudeDistribution> ComputeAmplitudeDistribution(Trial& trial, int channel,
                                                                  std::int16_t bins,
                                                                  SimdLevel level = MachineSimdLevel());

/// The report: one line for the channel, one for each of the three amplitudes through `pattern`.
std::string DistributionText(const Trial& trial, int channel, const AmplitudeDistribution& distribution,
                             std::string_view pattern);

}  // namespace velmora
