#include "graph/graph_commands.hpp"

#include <algorithm>
#include <array>
#include <memory>

#include "events/event_files.hpp"
#include "graph/graph_choose_form.hpp"
#include "graph/multi/multi_commands.hpp"
#include "graph/multi/multi_view.hpp"
#include "graph/opening.hpp"
#include "graph/save_intervals.hpp"
#include "graph/single_view.hpp"
#include "graph/view_saves.hpp"
#include "graph/view_window.hpp"

namespace velmora {
namespace {

void OpenView(Workbench& workbench) {
  CloseView(workbench);
  workbench.view = std::make_unique<SingleView>(workbench);
}

void OpenSingle(Workbench& workbench) {
  if (workbench.trial.NData == 0) {
    return;
  }
  RestoreRate(workbench.trial);
  if (ConfirmMany(workbench) && GraphChooseForm(workbench).Ask()) {
    OpenView(workbench);
  }
}

void OpenAll(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (trial.NData == 0) {
    return;
  }
  RestoreRate(trial);
  ChannelFlags& selected = workbench.chooser.ChanSelected;
  const ChannelFlags before = selected;
  selected.fill(false);
  std::fill_n(selected.begin() + 1, trial.NChan, true);
  if (!ConfirmMany(workbench)) {
    selected = before;
    return;
  }
  SettleViewWindow(workbench);
  OpenView(workbench);
}

void ChangeChannels(Workbench& workbench) {
  OpenGraphView(workbench).ChangeChannels();
}

void SelectChannels(Workbench& workbench) {
  OpenSingleView(workbench).SelectChannels();
}

template <void (SingleView::*procedure)()>
void OnView(Workbench& workbench) {
  (OpenSingleView(workbench).*procedure)();
}

template <void (GraphView::*procedure)()>
void OnGraphView(Workbench& workbench) {
  (OpenGraphView(workbench).*procedure)();
}

template <void (TimeView::*procedure)()>
void OnTimeView(Workbench& workbench) {
  (OpenTimeView(workbench).*procedure)();
}

template <void (*procedure)(Workbench&, TimeView&)>
void WithTimeView(Workbench& workbench) {
  procedure(workbench, OpenTimeView(workbench));
}

template <void (*procedure)(Workbench&, GraphView&)>
void WithView(Workbench& workbench) {
  procedure(workbench, OpenGraphView(workbench));
}

void SaveCursorPlaces(Workbench& workbench) {
  SaveCursors(workbench, OpenSingleView(workbench));
}

template <Scale scale>
void SetScale(Workbench& workbench) {
  OpenGraphView(workbench).SetScale(scale);
}

template <TrackMode mode>
void SetTrack(Workbench& workbench) {
  if (MayPanOrZoom(workbench)) {
    OpenGraphView(workbench).SetTrack(mode);
  }
}

void ResetZoom(Workbench& workbench) {
  GraphView& view = OpenGraphView(workbench);
  if (MayPanOrZoom(workbench)) {
    view.ResetZoom();
  }
}

void SaveEvents(Workbench& workbench) {
  SaveCursorEvents(workbench, OpenSingleView(workbench).CommonCursors());
}

constexpr std::string_view kView = "&View";
constexpr std::string_view kFile = "&Single-axis graph/&File";
constexpr std::string_view kCursor = "&Single-axis graph/&Cursor";
constexpr std::string_view kScale = "&Single-axis graph/&Scale";
constexpr std::string_view kZoom = "&Single-axis graph/&Zoom";
constexpr std::string_view kHelp = "&Single-axis graph/&Help";
constexpr std::string_view kButtons = "&Single-axis graph";

constexpr std::array kGraphCommands = {
    Command{"graph.single", "&Select Channels for Single-Axis Graph", kView, Needs::Data, OpenSingle},
    Command{"graph.all", "&Graph all Channels on Single-axis Graph", kView, Needs::Data, OpenAll},
    Command{"view.change-channels", "&Change selected channels", kFile, Needs::View, ChangeChannels},
    Command{"view.save", "&Save to .VMB file", kFile, Needs::View, WithTimeView<SaveRange>},
    Command{"view.save-intervals", "Save each &Interval between cursors", kFile, Needs::View,
            WithTimeView<SaveIntervals>},
    Command{"view.save-events", "Save &Events (Cursors)", kFile, Needs::View, SaveEvents},
    Command{"style.save", "Save &Graphics Style", kFile, Needs::View, WithView<SaveStyle>},
    Command{"style.recall", "&Recall Graphics Style", kFile, Needs::View, WithView<RecallStyle>},
    Command{"cursor.none", "None &0", kCursor, Needs::View, OnTimeView<&TimeView::NoCursors>},
    Command{"cursor.one", "One &1", kCursor, Needs::View, OnTimeView<&TimeView::OneCursor>},
    Command{"cursor.two", "Two &2", kCursor, Needs::View, OnTimeView<&TimeView::TwoCursors>},
    Command{"cursor.save-events", "Save cursor e&vents", kCursor, Needs::View, SaveCursorPlaces},
    Command{"cursor.values", "&View values at cursor", kCursor, Needs::View,
            OnView<&SingleView::ToggleValues>},
    Command{"cursor.horizontal", "Toggle &Horizontal cursor", kCursor, Needs::View,
            OnView<&SingleView::ToggleHorizontal>},
    Command{"scale.autoscale", "&Autoscale", kScale, Needs::View, SetScale<Scale::Auto>},
    Command{"scale.10-v", "+/- 10 &V", kScale, Needs::View, SetScale<Scale::TenVolts>},
    Command{"scale.0-to-100", "0 to 100&% ", kScale, Needs::View, SetScale<Scale::Percent>},
    Command{"scale.100", "+/- &100% ", kScale, Needs::View, SetScale<Scale::PlusMinusPercent>},
    Command{"scale.include-zero", "Include &zero", kScale, Needs::View, SetScale<Scale::IncludeZero>},
    Command{"scale.maximum", "+/- | &Maximum |", kScale, Needs::View, SetScale<Scale::PlusMinusMaximum>},
    Command{"zoom.pan", "&Pan", kZoom, Needs::View, SetTrack<TrackMode::PanXAndY>},
    Command{"zoom.area", "&Zoom area", kZoom, Needs::View, SetTrack<TrackMode::ZoomArea>},
    Command{"zoom.cursor", "Move &Cursor", kZoom, Needs::View, SetTrack<TrackMode::DragCursors>},
    Command{"zoom.reset", "&Reset (default)", kZoom, Needs::View, ResetZoom},
    Command{"zoom.disable", "&Disable mouse", kZoom, Needs::View, SetTrack<TrackMode::None>},
    Command{"help.keyboard", "&Keyboard functions (?)", kHelp, Needs::View,
            OnGraphView<&GraphView::ShowKeyList>},
    Command{"view.exit", "E&xit", kButtons, Needs::View, LeaveView},
    Command{"view.channels", "&Channels", kButtons, Needs::View, SelectChannels},
    Command{"view.window", "&Window", kButtons, Needs::View, OnGraphView<&GraphView::ToggleWindow>},
    Command{"view.points", "&Points", kButtons, Needs::View, OnView<&SingleView::TogglePoints>},
    Command{"view.reset", "&Reset", kButtons, Needs::View, OnGraphView<&GraphView::Reset>},
};

}  // namespace

std::span<const Command> GraphCommands() {
  return kGraphCommands;
}

}  // namespace velmora
