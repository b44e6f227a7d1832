#include "events/event_tracking.hpp"

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_list.hpp"
#include "events/event_files.hpp"
#include "events/event_table.hpp"

namespace velmora {
namespace {

bool Tracks(const Workbench& workbench) {
  return workbench.events.EventTracking && workbench.events.CurrentEvent > 0;
}

std::string Place(const Workbench& workbench) {
  return std::to_string(workbench.events.CurrentEvent) + " of " + std::to_string(workbench.events.NEvents());
}

void TellEvents(Workbench& workbench, const std::string& words, const ChannelList& channels = {}) {
  Did(workbench, words, channels);
  if (workbench.view != nullptr) {
    workbench.view->EventsChanged();
  }
}

void Start(Workbench& workbench) {
  const Button answer = workbench.questions.AskBox(
      {.title = "Start Onset/Event Recording",
       .text = "Press Yes to save event/onset-offset times and amplitudes, No for times only or Cancel.",
       .icon = Icon::Question,
       .buttons = {Button::Yes, Button::No, Button::Cancel}});
  if (answer == Button::Cancel) {
    return;
  }
  StartTracking(workbench.events, answer == Button::Yes);
  TellEvents(workbench,
             answer == Button::Yes ? "Event tracking, times and amplitudes" : "Event tracking, times");
}

template <typename Move>
void Step(Workbench& workbench, const Move& move) {
  const std::int32_t before = workbench.events.CurrentEvent;
  if (Tracks(workbench)) {
    move(workbench.events);
  }
  if (workbench.events.CurrentEvent != before) {
    TellEvents(workbench, "Event " + Place(workbench));
  }
}

// The values of a channel at a time, as far as the trial still reaches.
std::string TimeAndValue(const Trial& trial, int channel, double time) {
  if (time == EventTimes::kNone) {
    return {};
  }
  const std::int32_t sample = TimeToSample(trial, time);
  const std::string value = sample >= 1 && sample <= trial.NData
                                ? FormatNumber(trial.Data(sample, channel), "0.000 ")
                                : std::string(". ");
  return FormatNumber(time, "0.000 ") + Trim(trial.ChanUnits[0].Text()) + ",  " + value +
         Trim(trial.ChanUnits[channel].Text());
}

}  // namespace

void ToggleTracking(Workbench& workbench) {
  EventMemory& events = workbench.events;
  if (!events.EventTracking) {
    Start(workbench);
    return;
  }
  const std::string lost =
      events.EventsUnsaved ? ", " + CountOf(events.NEvents(), "record") + " discarded unsaved" : "";
  StopTracking(events);
  TellEvents(workbench, "Event tracking ended" + lost);
}

void InsertEvent(Workbench& workbench) {
  if (Tracks(workbench)) {
    AddEvent(workbench.events);
    TellEvents(workbench, "Event " + Place(workbench) + " added");
  }
}

void AskDeleteEvent(Workbench& workbench) {
  if (!Tracks(workbench)) {
    return;
  }
  const std::string number = std::to_string(workbench.events.CurrentEvent);
  const Button answer = workbench.questions.AskBox({.title = "Delete Last Event?",
                                                    .text = "Confirm deletion of event " + number + ".",
                                                    .icon = Icon::Question,
                                                    .buttons = {Button::Yes, Button::No}});
  if (answer == Button::Yes) {
    DeleteEvent(workbench.events);
    TellEvents(workbench, "Event " + number + " deleted");
  }
}

void StepForward(Workbench& workbench) {
  Step(workbench, NextEvent);
}

void StepBack(Workbench& workbench) {
  Step(workbench, PreviousEvent);
}

void ChooseEvent(Workbench& workbench, std::int32_t event) {
  if (event >= 1 && event <= workbench.events.NEvents()) {
    Step(workbench, [event](EventMemory& events) { GoToEvent(events, event); });
  }
}

bool MayRecordAll(Workbench& workbench) {
  if (!Tracks(workbench)) {
    return false;
  }
  return !HoldsTimes(workbench.events) ||
         workbench.questions.AskBox({.title = "Record All Events",
                                     .text = "Do you want to record the results for all windows?",
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

void RecordTimes(Workbench& workbench, const std::vector<ChannelTimes>& recorded) {
  ChannelList channels;
  for (const ChannelTimes& one : recorded) {
    RecordEvent(workbench.events, one.channel, one.times);
    channels.push_back(one.channel);
  }
  if (!channels.empty()) {
    TellEvents(workbench, "Event " + Place(workbench) + " recorded", channels);
  }
}

std::string SpanText(const EventTimes& times) {
  const auto text = [](double time) {
    return time == EventTimes::kNone ? std::string() : FormatNumber(time, "0.000");
  };
  return times.on == EventTimes::kNone && times.off == EventTimes::kNone
             ? ""
             : text(times.on) + " \u2013 " + text(times.off);
}

std::string EventTimesLine(const Workbench& workbench, int channel) {
  const Trial& trial = workbench.trial;
  const EventMemory& events = workbench.events;
  const EventRecord& record = events.ChannelEvents.at(static_cast<std::size_t>(events.CurrentEvent - 1));
  const EventTimes& times = record[channel];
  return "Channel #" + ChannelNumber(channel) + ":  " + Trim(trial.ChanLabel[channel].Text()) +
         "  Event:" + std::to_string(events.CurrentEvent) + " of" + std::to_string(events.NEvents()) +
         ".    1= " + TimeAndValue(trial, channel, times.on) +
         ";  2= " + TimeAndValue(trial, channel, times.off);
}

bool MayLeaveEvents(Workbench& workbench) {
  if (!workbench.events.EventTracking || !workbench.events.EventsUnsaved) {
    return true;
  }
  const Button answer = workbench.questions.AskBox(
      {.title = "Events Not Saved",
       .text = "You have NOT saved your events/onsets-offsets.  Press to Yes to save the events,\n"
               "No to exit without saving or Cancel.",
       .icon = Icon::Exclamation,
       .buttons = {Button::Yes, Button::No, Button::Cancel}});
  if (answer == Button::Yes) {
    SaveChannelEvents(workbench);
    return !workbench.events.EventsUnsaved;
  }
  return answer == Button::No;
}

}  // namespace velmora
