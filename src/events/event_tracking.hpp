#pragma once

#include <string>
#include <vector>

#include "core/workbench.hpp"

namespace velmora {

// What a person does with the table of events, with the questions that belong to it. All but the first do
// nothing while tracking is off.

/// F9: asks what a save is to hold and begins with one blank record, or ends tracking.
void ToggleTracking(Workbench& workbench);

/// Insert: one more record.
void InsertEvent(Workbench& workbench);

/// Delete: asks first.
void AskDeleteEvent(Workbench& workbench);

/// Ctrl-Home and Ctrl-End.
void StepForward(Workbench& workbench);
void StepBack(Workbench& workbench);

/// Makes record `event` (from 1) the current one; nothing when there is none.
void ChooseEvent(Workbench& workbench, std::int32_t event);

/// A current record that already has times may be overwritten: asked under "Record All Events".
bool MayRecordAll(Workbench& workbench);

struct ChannelTimes {
  int channel = 1;
  EventTimes times;
};

/// Puts these into the current record; nothing when there are none. Tracking must be on.
void RecordTimes(Workbench& workbench, const std::vector<ChannelTimes>& recorded);

/// "0.831 \u2013 1.456"; empty when neither time is set.
std::string SpanText(const EventTimes& times);

/// The line of a channel (from 1) in a sidebar: current record, on and off time with the values there.
std::string EventTimesLine(const Workbench& workbench, int channel);

/// Unsaved events are asked about before they could be lost: Yes saves them. Returns false to stay, which is
/// also what a cancelled or failed save means.
bool MayLeaveEvents(Workbench& workbench);

}  // namespace velmora
