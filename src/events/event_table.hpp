#pragma once

#include "core/command_memory.hpp"

namespace velmora {

// The table of events, record by record. A record that is added is blank; a person steps through the records
// and fills the current one.

/// One blank record at the end. CurrentEvent moves on by one, so that the distance it had been stepped back
/// by stays.
void AddEvent(EventMemory& events);

/// Blanks the current record. Of two records or more the last one goes, whichever was blanked, and
/// CurrentEvent stays within the table.
void DeleteEvent(EventMemory& events);

void PreviousEvent(EventMemory& events);
void NextEvent(EventMemory& events);

/// Record `event` (from 1) becomes the current one. Throws std::out_of_range when there is none.
void GoToEvent(EventMemory& events, std::int32_t event);

/// Tracking begins with one blank record.
void StartTracking(EventMemory& events, bool amplitudes);
/// The table goes, saved or not.
void StopTracking(EventMemory& events);

/// Times of a channel (1..64) in the current record; there must be one.
void RecordEvent(EventMemory& events, int channel, EventTimes times);

/// What was recorded from `from` on, but before `to` (seconds from the first sample), has been taken out of
/// the trial: later times come forward, so that each stays on its sample, and times in it are none any more.
/// Returns how many these were.
int CloseGap(EventMemory& events, double from, double to);

/// Whether the current record has any time.
bool HoldsTimes(const EventMemory& events);

}  // namespace velmora
