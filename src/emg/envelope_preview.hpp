#pragma once

#include "core/questions/form_graph.hpp"
#include "core/trial/trial.hpp"
#include "dsp/filters/recursive_filter.hpp"

namespace velmora {

/// The filter of the linear envelope at a cut-off in Hz: critically damped, one pass, zero-lag, padded with
/// the means of ten samples.
FilterSettings EnvelopeFilter(float cutoff);

/// What the linear envelope would make of a channel: its samples as they are, rectified, and filtered. Of a
/// long trial its beginning is shown. A cut-off of 0 and below processes nothing.
FormGraph PreviewEnvelope(const Trial& trial, int channel, float cutoff);

}  // namespace velmora
