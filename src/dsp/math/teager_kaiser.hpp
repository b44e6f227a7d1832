#pragma once

#include "core/trial/trial.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// y(i) = x(i)^2 - x(i-1) x(i+1) of the samples as they were, in 64 bits and rounded once; the first and the
/// last become their neighbours. Of a tone A sin(w i) it is (A sin w)^2 everywhere (Kaiser 1990, ICASSP,
/// 381); before a threshold it brings out where a muscle begins (Solnik et al. 2010, Eur. J. Appl. Physiol.
/// 110, 489). At least 3 samples. Throws ArithmeticFault on an overflow.
void TeagerKaiser(Trial& trial, const ChannelList& channels);

}  // namespace velmora
