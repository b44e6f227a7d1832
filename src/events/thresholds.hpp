#pragma once

#include <optional>
#include <string_view>

#include "core/trial/helpers.hpp"

namespace velmora {

// The channels' thresholds: made from mean and deviation, shown and edited in the picker. The memory of the
// workbench owns them; the graphs draw them, and onsets and EMG statistics compare with them.

/// "Threshold Magnitude": how many standard deviations, with the last answer as default. Nothing when the
/// answer is empty.
std::optional<float> AskSDMultiplier(Workbench& workbench);

/// Every channel's threshold becomes SDMultiplier * ChanSD + ChanMean, of the present trial. A threshold that
/// is no number, since its region has one sample or holds NaN, is told in a notice.
void MakeThresholds(Workbench& workbench);

/// The picker with the thresholds that were made, to look at.
void ShowThresholds(Workbench& workbench);

/// The picker with the thresholds to edit; the answers are left in ChanConst. Returns false when it was
/// cancelled.
bool AskThresholds(Workbench& workbench, std::string_view prompt);

/// "Calculate thresholds": asks for the magnitude, takes the baseline of samples lo to hi, makes the
/// thresholds and shows them.
void CalculateThresholds(Workbench& workbench, SampleRange region);

/// "Set SD Level": another magnitude on the baseline that was taken last.
void SetSDLevel(Workbench& workbench);

/// The thresholds of channels 1 to NChan become these. Tells which are others than before.
void EnterThresholds(Workbench& workbench, const PerChannel<double>& entered);

/// "Edit threshold level(s)".
void EditThresholds(Workbench& workbench);

/// "Read thresholds" and "Save thresholds": the trial's units file.
void ReadThresholds(Workbench& workbench);
void SaveThresholds(Workbench& workbench);

/// What one channel's threshold would be with samples lo to hi for a baseline; mean, deviation and product
/// are rounded to 32 bits.
float CandidateThreshold(const Workbench& workbench, int channel, SampleRange region);

/// Whether the thresholds were made or entered for another file than the one that is loaded: the notice that
/// says so, empty when they are of this one.
std::string ThresholdsOfAnotherTrial(const Workbench& workbench);

}  // namespace velmora
