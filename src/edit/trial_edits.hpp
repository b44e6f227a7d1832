#pragma once

#include "core/trial/trial.hpp"

namespace velmora {

/// Puts back the labels and units that the trial before this one had, in every row of which it knew
/// anything. Returns false when nothing is known of an earlier trial.
bool RecallLabels(Trial& trial);

/// Corrects a wrong sampling rate (Hz, above 0): the samples stay, times and durations change.
void CorrectRate(Trial& trial, double rate);

}  // namespace velmora
