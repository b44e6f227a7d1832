#pragma once

#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// How two trials of different length are brought to one.
enum class MergeLengths {
  NormaliseNext,    // re-sample the next file to the stored length
  NormaliseStored,  // re-sample the stored data to the next file's length
  CutOrPadStored,   // zeros where the stored data end first
  CutOrPadNext,
};

/// Sets the samples of the trial, its time base, its force plates and what belongs to its channels aside in
/// `merge`. Throws std::bad_alloc, and nothing has changed.
void StoreForMerge(Workbench& workbench);

/// Stored data whose seconds are known count seconds again where the next file does. Returns why the
/// abscissas of the two do not go together; empty when they do.
std::string MatchTimeBases(Workbench& workbench);

/// How many intervals between samples the trial has at another rate (Hz); as many as now when a rate is not
/// known.
std::int64_t IntervalsAtRate(const Trial& trial, double rate);

/// Why the two cannot be brought to one rate and length in that way: one sample, or none that would be left,
/// has nothing to re-sample. Empty when they can.
std::string WhyNotMerged(const Trial& stored, const Trial& next, MergeLengths how);

/// Re-samples `trial` to `rate` (Hz) over the same time; nothing happens when a rate is not known.
void SynchroniseRate(Trial& trial, double rate);

/// Brings both to one number of samples. Afterwards row 0 of the one that was left alone holds the
/// times.
void MatchLengths(Trial& stored, Trial& next, MergeLengths how);

/// `next` becomes the stored channels followed by its own, with their labels, units and the rest;
/// both must have the same number of samples, and 64 channels at most together. Row 0 is taken from
/// `times`, which is one of the two. Throws std::invalid_argument or std::bad_alloc, and nothing has changed.
void JoinChannels(const Trial& stored, Trial& next, const Trial& times);

/// The force plates of the stored data, or else those of the next file, become those of the joined trial,
/// where their channels are now. A notice tells of plates that are given up.
void JoinPlates(Workbench& workbench);

}  // namespace velmora
