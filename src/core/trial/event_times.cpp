#include "core/trial/event_times.hpp"

#include <utility>

#include "core/trial/event_lines.hpp"

namespace velmora {
namespace {

template <typename Move>
void MoveTimes(Workbench& workbench, const Move& move) {
  for (EventRecord& record : workbench.events.ChannelEvents) {
    for (EventTimes& times : record) {
      for (double* time : {&times.on, &times.off}) {
        *time = *time == EventTimes::kNone ? *time : move(*time);
      }
    }
  }
  if (workbench.view != nullptr) {
    workbench.view->EventsChanged();
  }
}

}  // namespace

void FollowRate(Workbench& workbench, double before, double ratio) {
  const double now = workbench.trial.Rate;
  const double factor = before * ratio / now;
  if (before > 0 && now > 0 && factor != 1.0) {
    MoveTimes(workbench, [factor](double time) { return time * factor; });
  }
}

void ReverseEventTimes(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (!(trial.Rate > 0)) {
    return;
  }
  for (EventRecord& record : workbench.events.ChannelEvents) {
    for (EventTimes& times : record) {
      if (times.off != EventTimes::kNone) {
        std::swap(times.on, times.off);
      }
    }
  }
  const double last = (trial.NData - 1) / trial.Rate;
  MoveTimes(workbench, [last](double time) { return last - time; });
  const double start = trial.Data(1, 0);
  RetimeEventLines(trial, [=](double time) { return start + last - time; });
}

}  // namespace velmora
