#include "emg/bursts/burst_events.hpp"

#include <algorithm>
#include <string>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "events/event_table.hpp"

namespace velmora {
namespace {

bool HaveEvents(const EventMemory& events, const std::vector<ChannelBursts>& found) {
  return std::any_of(
      events.ChannelEvents.begin(), events.ChannelEvents.end(), [&](const EventRecord& record) {
        return std::any_of(found.begin(), found.end(),
                           [&](const ChannelBursts& of) { return record[of.channel] != EventTimes{}; });
      });
}

bool MayReplace(Workbench& workbench) {
  return workbench.questions.AskBox({.title = "Store as Events",
                                     .text = "The table of events has times of these channels already.\n"
                                             "Press Yes to replace them or No to leave the table as it is.",
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

}  // namespace

void StoreBurstEvents(Workbench& workbench, SampleRange range, const std::vector<ChannelBursts>& found) {
  EventMemory& events = workbench.events;
  if (events.EventTracking && HaveEvents(events, found) && !MayReplace(workbench)) {
    return;
  }
  std::size_t most = 0;
  for (const ChannelBursts& of : found) {
    most = std::max(most, of.bursts.size());
  }
  if (most == 0 && !events.EventTracking) {
    return;
  }
  if (!events.EventTracking) {
    StartTracking(events, false);
  }
  if (events.ChannelEvents.size() < most) {
    events.ChannelEvents.resize(most);
  }
  for (const ChannelBursts& of : found) {
    for (std::size_t b = 0; b < events.ChannelEvents.size(); ++b) {
      EventTimes& times = events.ChannelEvents[b][of.channel];
      times = {};
      if (b < of.bursts.size()) {
        const auto sample = [&range](std::int64_t at) { return static_cast<std::int32_t>(range.lo + at); };
        times = {.on = SampleToTime(workbench.trial, sample(of.bursts[b].on)),
                 .off = SampleToTime(workbench.trial, sample(of.bursts[b].off))};
      }
    }
  }
  events.EventsUnsaved = true;
  Did(workbench, CountOf(static_cast<std::int64_t>(most), "record") + " of events stored");
}

}  // namespace velmora
