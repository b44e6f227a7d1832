#include "events/store_events.hpp"

#include <algorithm>
#include <string>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "events/event_table.hpp"

namespace velmora {
namespace {

bool HaveEvents(const EventMemory& events, const std::vector<FoundEvents>& found) {
  return std::any_of(
      events.ChannelEvents.begin(), events.ChannelEvents.end(), [&](const EventRecord& record) {
        return std::any_of(found.begin(), found.end(),
                           [&](const FoundEvents& of) { return record[of.channel] != EventTimes{}; });
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

void StoreEvents(Workbench& workbench, const std::vector<FoundEvents>& found) {
  EventMemory& events = workbench.events;
  if (events.EventTracking && HaveEvents(events, found) && !MayReplace(workbench)) {
    return;
  }
  std::size_t most = 0;
  for (const FoundEvents& of : found) {
    most = std::max(most, of.times.size());
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
  for (const FoundEvents& of : found) {
    for (std::size_t b = 0; b < events.ChannelEvents.size(); ++b) {
      events.ChannelEvents[b][of.channel] = b < of.times.size() ? of.times[b] : EventTimes{};
    }
  }
  events.EventsUnsaved = true;
  Did(workbench, CountOf(static_cast<std::int64_t>(most), "record") + " of events stored");
}

}  // namespace velmora
