#include "events/event_table.hpp"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace velmora {
namespace {

EventRecord& Current(EventMemory& events) {
  return events.ChannelEvents.at(static_cast<std::size_t>(events.CurrentEvent - 1));
}

bool IsSet(const EventTimes& times) {
  return times.on != EventTimes::kNone || times.off != EventTimes::kNone;
}

}  // namespace

void AddEvent(EventMemory& events) {
  events.ChannelEvents.emplace_back();
  ++events.CurrentEvent;
}

void DeleteEvent(EventMemory& events) {
  Current(events) = {};
  if (events.NEvents() >= 2) {
    events.ChannelEvents.pop_back();
  }
  events.CurrentEvent = std::min(events.CurrentEvent, events.NEvents());
}

void PreviousEvent(EventMemory& events) {
  events.CurrentEvent -= events.CurrentEvent > 1 ? 1 : 0;
}

void NextEvent(EventMemory& events) {
  events.CurrentEvent += events.CurrentEvent < events.NEvents() ? 1 : 0;
}

void GoToEvent(EventMemory& events, std::int32_t event) {
  if (event < 1 || event > events.NEvents()) {
    throw std::out_of_range("there is no event " + std::to_string(event) + ", but " +
                            std::to_string(events.NEvents()));
  }
  events.CurrentEvent = event;
}

void StartTracking(EventMemory& events, bool amplitudes) {
  events = {};
  events.EventTracking = true;
  events.EventAmplitudes = amplitudes;
  AddEvent(events);
}

void StopTracking(EventMemory& events) {
  const bool amplitudes = events.EventAmplitudes;
  events = {};
  events.EventAmplitudes = amplitudes;
}

void RecordEvent(EventMemory& events, int channel, EventTimes times) {
  events.EventsUnsaved = true;
  Current(events).at(static_cast<std::size_t>(channel)) = times;
}

int CloseGap(EventMemory& events, double from, double to) {
  int lost = 0;
  for (EventRecord& record : events.ChannelEvents) {
    for (EventTimes& times : record) {
      for (double* time : {&times.on, &times.off}) {
        if (*time == EventTimes::kNone || *time < from) {
          continue;
        }
        lost += *time < to ? 1 : 0;
        *time = *time < to ? EventTimes::kNone : *time - (to - from);
      }
    }
  }
  return lost;
}

bool HoldsTimes(const EventMemory& events) {
  if (events.CurrentEvent < 1) {
    return false;
  }
  const EventRecord& record = events.ChannelEvents.at(static_cast<std::size_t>(events.CurrentEvent - 1));
  return std::any_of(record.begin(), record.end(), IsSet);
}

}  // namespace velmora
