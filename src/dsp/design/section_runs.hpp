#pragma once

#include <cstdint>
#include <span>

#include "core/simd.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/filters/biquads.hpp"
#include "dsp/turn.hpp"

namespace velmora {

enum class RunDirection : std::int32_t { ZeroLag, Forward };  // as the dialogue numbers them

/// Samples that a zero-lag run puts in front and behind: three times the coefficients of the whole filter,
/// at most samples - 1.
std::int64_t SectionPadding(std::int64_t samples, std::size_t sections);

/// Runs the sections over whole channels in 64 bits; each result is rounded to 32 bits once.
/// Forward: from rest. Zero-lag: forward, then backward, over the channel continued by reflection through
/// its end samples (value and slope go on), each run begun in the steady state of its first sample.
/// (Gustafsson 1996 for why a start matters; Oppenheim and Schafer, Discrete-Time Signal Processing, 6.3.4
/// for the form.)
///
/// Channels go side by side in vectors of the level given and give the bits of the plain form.
void RunSections(Trial& trial, const ChannelList& channels, const Biquads& sections, RunDirection direction,
                 SimdLevel level = MachineSimdLevel(), const Turn& turn = {});

/// One signal of 64-bit samples in place.
void RunSectionsPlain(std::span<double> x, const Biquads& sections, RunDirection direction);

}  // namespace velmora
