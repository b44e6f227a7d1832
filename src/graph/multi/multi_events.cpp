#include "graph/multi/multi_events.hpp"

#include <array>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"
#include "events/event_files.hpp"
#include "events/event_help.hpp"
#include "events/event_tracking.hpp"
#include "graph/multi/multi_onsets.hpp"
#include "graph/multi/multi_thresholds.hpp"

namespace velmora {
namespace {

// Times count from the first sample, whatever the abscissa starts at.
double PointTime(const Trial& trial, double x) {
  return SampleToTime(trial, SampleOf(trial, x));
}

// 1 where the abscissa counts seconds.
double UnitsPerSecond(const Trial& trial) {
  return trial.Rate > 0 ? trial.Rate / SamplesPerUnit(trial) : 1.0;
}

// The onset and offset of the graph, else its cursors.
EventTimes TimesOf(const Trial& trial, const MultiView& view, int graph) {
  if (const std::optional<OnsetMarks> marks = OnsetMarksOf(view.GraphAt(graph))) {
    return {PointTime(trial, marks->onset), PointTime(trial, marks->offset)};
  }
  const std::vector<double> cursors = view.CommonCursors();
  if (cursors.size() >= 2) {
    return {PointTime(trial, cursors[0]), PointTime(trial, cursors[1])};
  }
  return {(cursors[0] - AbscissaStart(trial)) / UnitsPerSecond(trial), EventTimes::kNone};
}

bool MayRecord(const Workbench& workbench, const MultiView& view) {
  return workbench.events.EventTracking && view.Cursors() > 0;
}

}  // namespace

void RecordAll(Workbench& workbench, const MultiView& view) {
  if (!MayRecord(workbench, view) || !MayRecordAll(workbench)) {
    return;
  }
  std::vector<ChannelTimes> recorded;
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    if (const int graph = view.GraphOf(c); graph > 0) {
      recorded.push_back({c, TimesOf(workbench.trial, view, graph)});
    }
  }
  RecordTimes(workbench, recorded);
}

void RecordGraph(Workbench& workbench, const MultiView& view, int graph) {
  if (MayRecord(workbench, view)) {
    RecordTimes(workbench, {{view.ChannelOf(graph), TimesOf(workbench.trial, view, graph)}});
  }
}

// The events that are recorded, on the graphs of their channels: the current record in full, the others
// faint.
void MultiView::ShowEvents() {
  constexpr double kFaint = 0.45;
  const EventMemory& events = workbench_.events;
  const double perSecond = UnitsPerSecond(workbench_.trial);
  const auto placeOf = [start = AbscissaStart(workbench_.trial), perSecond](double time) {
    return start + time * perSecond;
  };
  for (Graph& graph : graphs_) {
    graph.Bands.clear();
    graph.Marks.clear();
  }
  for (std::int32_t e = 1; e <= events.NEvents(); ++e) {
    const EventRecord& record = events.ChannelEvents[static_cast<std::size_t>(e - 1)];
    const double strength = e == events.CurrentEvent ? 1.0 : kFaint;
    for (int c = 1; c <= workbench_.trial.NChan; ++c) {
      const EventTimes& times = record[c];
      if (graphOf_[c] == 0 || times.on == EventTimes::kNone) {
        continue;
      }
      Graph& graph = GraphAt(graphOf_[c]);
      const int colour = workbench_.trial.ChanColour[c];
      if (times.off == EventTimes::kNone) {
        graph.Marks.push_back(
            {.x = placeOf(times.on), .text = std::to_string(e), .colour = colour, .strength = strength});
      } else {
        graph.Bands.push_back({.from = placeOf(times.on),
                               .to = placeOf(times.off),
                               .text = std::to_string(e),
                               .colour = colour,
                               .strength = strength,
                               .above = true});
      }
    }
  }
}

bool MultiView::MayLeave() {
  return MayLeaveEvents(workbench_);
}

std::vector<std::string> MultiView::EventLines() const {
  std::vector<std::string> lines;
  if (workbench_.events.CurrentEvent < 1) {
    return lines;
  }
  for (int g = 1; g <= NGraphs(); ++g) {
    if (const int channel = ChannelOf(g); channel > 0) {
      lines.push_back(EventTimesLine(workbench_, channel));
    }
  }
  return lines;
}

bool MultiView::PressEventKey(const KeyPress& key, const std::string& name) {
  const bool ctrl = key.ctrl;
  if (name == "O") {
    Run("cursor.onsets");
  } else if (name == "T") {
    ChangeThreshold(workbench_, *this);
  } else if (name == "F9") {
    Run("event.open");
  } else if (name == "INSERT") {
    Run("event.add");
  } else if (name == "F10") {
    Run("event.save");
  } else if (name == "DELETE") {
    AskDeleteEvent(workbench_);
  } else if (ctrl && name == "HOME") {
    StepForward(workbench_);
  } else if (ctrl && name == "END") {
    StepBack(workbench_);
  } else {
    return false;
  }
  return true;
}

namespace {

template <void (*procedure)(Workbench&)>
void InMultiView(Workbench& workbench) {
  OpenMultiView(workbench);
  procedure(workbench);
}

template <void (*procedure)(Workbench&, MultiView&)>
void OnMultiView(Workbench& workbench) {
  procedure(workbench, OpenMultiView(workbench));
}

void StoreEvents(Workbench& workbench) {
  RecordAll(workbench, OpenMultiView(workbench));
}

bool HasOnsets(const Workbench& workbench) {
  const MultiView* view = FindMultiView(workbench);
  return view != nullptr && OnsetsShown(*view);
}

bool IsTracking(const Workbench& workbench) {
  return workbench.events.EventTracking;
}

const char* WhyNoScan(const Workbench& workbench) {
  const MultiView* view = FindMultiView(workbench);
  if (view != nullptr && view->Cursors() < 2) {
    return "Set two cursors first";
  }
  return workbench.thresholds.ThresholdsValid ? nullptr : "Calculate, edit or read thresholds first";
}

const char* WhyNoEvents(const Workbench& workbench) {
  return workbench.events.EventTracking ? nullptr : "Start with F9 first";
}

constexpr std::string_view kOnsetMenu = "&Multi-axis graph/&Cursor";
constexpr std::string_view kEventMenu = "&Multi-axis graph/&Event";
constexpr std::string_view kEventHelpMenu = "&Multi-axis graph/&Help";

constexpr std::array kEventCommands = {
    Command{"cursor.onsets", "&Onsets", kOnsetMenu, Needs::View, OnMultiView<FindOnsets>, WhyNoScan,
            HasOnsets},
    Command{"cursor.remove-onsets", "&Remove onsets", kOnsetMenu, Needs::View, OnMultiView<RemoveOnsets>},
    Command{"event.open", "&Open File for results (F9)", kEventMenu, Needs::View, InMultiView<ToggleTracking>,
            nullptr, IsTracking},
    Command{"event.find", "&Find onsets/offsets (O)", kEventMenu, Needs::View, OnMultiView<FindOnsets>,
            WhyNoScan},
    Command{"event.store", "Store &Events/onsets-offsets in file (right-click)", kEventMenu, Needs::View,
            StoreEvents, WhyNoEvents},
    Command{"event.add", "&Add another set of results (Insert)", kEventMenu, Needs::View,
            InMultiView<InsertEvent>, WhyNoEvents},
    Command{"event.save", "&Save results to file (F10)", kEventMenu, Needs::View,
            InMultiView<SaveChannelEvents>},
    Command{"help.events", "E&vent tracking", kEventHelpMenu, Needs::View, InMultiView<ShowEventHelp>},
    Command{"help.onsets", "EMG &Onset determination", kEventHelpMenu, Needs::View,
            InMultiView<ShowOnsetHelp>},
};

}  // namespace

std::span<const Command> EventCommands() {
  return kEventCommands;
}

}  // namespace velmora
