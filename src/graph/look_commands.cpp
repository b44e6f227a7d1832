#include "graph/look_commands.hpp"

#include <array>

#include "graph/graph_view.hpp"
#include "graph/threshold_lines.hpp"

namespace velmora {
namespace {

// What is set is set in all graphs; what is toggled follows the first.
std::span<Graph> GraphsOf(Workbench& workbench) {
  return OpenGraphView(workbench).Graphs();
}

template <bool x, bool y>
void SetGrid(Workbench& workbench) {
  for (Graph& graph : GraphsOf(workbench)) {
    graph.Abscissa.MajorGrid = x;
    graph.Ordinate.MajorGrid = y;
    graph.Ordinate.ZeroLine = false;
  }
}

template <bool x, bool y>
void SetLabels(Workbench& workbench) {
  for (Graph& graph : GraphsOf(workbench)) {
    graph.Abscissa.LabelsVisible = x;
    graph.Ordinate.LabelsVisible = y;
  }
}

void ZeroLineOnly(Workbench& workbench) {
  SetGrid<false, false>(workbench);
  for (Graph& graph : GraphsOf(workbench)) {
    graph.Ordinate.ZeroLine = true;
  }
}

void ZeroLineWithoutLabels(Workbench& workbench) {
  ZeroLineOnly(workbench);
  SetLabels<false, false>(workbench);
}

template <bool Graph::*shown>
void Toggle(Workbench& workbench) {
  const bool now = !(OpenGraphView(workbench).Lead().*shown);
  for (Graph& graph : GraphsOf(workbench)) {
    graph.*shown = now;
  }
}

template <Axis Graph::*axis>
void ToggleCaption(Workbench& workbench) {
  const bool now = !(OpenGraphView(workbench).Lead().*axis).CaptionVisible;
  for (Graph& graph : GraphsOf(workbench)) {
    (graph.*axis).CaptionVisible = now;
  }
}

template <Axis Graph::*axis, bool log>
void SetLog(Workbench& workbench) {
  for (Graph& graph : GraphsOf(workbench)) {
    (graph.*axis).Log = log;
  }
}

void SetDefaults(Workbench& workbench) {
  OpenGraphView(workbench).SetDefaultLooks();
}

template <std::size_t k>
void SetBackground(Workbench& workbench) {
  OpenGraphView(workbench).SetBackground(kBackgrounds[k].colour);
}

template <LineStyle style>
void SetLine(Workbench& workbench) {
  for (Graph& graph : GraphsOf(workbench)) {
    graph.SetLine(style);
  }
}

template <int pixels>
void SetWidth(Workbench& workbench) {
  for (Graph& graph : GraphsOf(workbench)) {
    graph.SetLineWidth(pixels);
  }
}

template <PointStyle style>
void SetPoint(Workbench& workbench) {
  for (Graph& graph : GraphsOf(workbench)) {
    graph.SetPoint(style);
  }
}

template <void (Graph::*procedure)()>
void OnGraphs(Workbench& workbench) {
  for (Graph& graph : GraphsOf(workbench)) {
    (graph.*procedure)();
  }
}

void ToggleThresholds(Workbench& workbench) {
  ToggleThresholdLines(OpenTimeView(workbench), workbench.thresholds);
}

bool ShowsThresholds(const Workbench& workbench) {
  const TimeView* view = FindTimeView(workbench);
  return view != nullptr && ThresholdsShown(*view);
}

constexpr std::string_view kGrid = "&Single-axis graph/&Grid";
constexpr std::string_view kBack = "&Single-axis graph/&Background";
constexpr std::string_view kAbscissa = "&Single-axis graph/&Abscissa";
constexpr std::string_view kOrdinate = "&Single-axis graph/&Ordinate";
constexpr std::string_view kLine = "&Single-axis graph/&Line";
constexpr std::string_view kPoint = "&Single-axis graph/&Point";

template <std::size_t k>
constexpr Command BackgroundCommand() {
  return {kBackgrounds[k].id, kBackgrounds[k].caption, kBack, Needs::View, SetBackground<k>};
}

constexpr std::array kLookCommands = {
    Command{"grid.none", "&No grid lines", kGrid, Needs::View, SetGrid<false, false>},
    Command{"grid.both", "&Both X && Y grids", kGrid, Needs::View, SetGrid<true, true>},
    Command{"grid.x", "&X grid lines", kGrid, Needs::View, SetGrid<true, false>},
    Command{"grid.y", "&Y grid lines", kGrid, Needs::View, SetGrid<false, true>},
    Command{"grid.zero", "&Zero only", kGrid, Needs::View, ZeroLineOnly},
    Command{"grid.no-labels", "&No labels", kGrid, Needs::View, SetLabels<false, false>},
    Command{"grid.x-numerals", "X numerals only", kGrid, Needs::View, SetLabels<true, false>},
    Command{"grid.y-numerals", "Y numerals only", kGrid, Needs::View, SetLabels<false, true>},
    Command{"grid.x-y-numerals", "X-Y numerals only", kGrid, Needs::View, SetLabels<true, true>},
    Command{"grid.zero-no-labels", "Zero && no &Labels", kGrid, Needs::View, ZeroLineWithoutLabels},
    Command{"grid.title", "Add/remove &Title", kGrid, Needs::View, Toggle<&Graph::TitleVisible>},
    Command{"grid.abscissa-label", "Add/remove &Abscissa label", kGrid, Needs::View,
            ToggleCaption<&Graph::Abscissa>},
    Command{"grid.ordinate-label", "Add/remove &Ordinate label", kGrid, Needs::View,
            ToggleCaption<&Graph::Ordinate>},
    Command{"grid.thresholds", "&Include thresholds", kGrid, Needs::View, ToggleThresholds, nullptr,
            ShowsThresholds},
    Command{"grid.sidebar", "Add/remove &Sidebar", kGrid, Needs::View, Toggle<&Graph::SidebarVisible>},
    Command{"grid.default", "&Default", kGrid, Needs::View, SetDefaults},
    BackgroundCommand<0>(),
    BackgroundCommand<1>(),
    BackgroundCommand<2>(),
    BackgroundCommand<3>(),
    BackgroundCommand<4>(),
    Command{"abscissa.linear", "&Linear", kAbscissa, Needs::View, SetLog<&Graph::Abscissa, false>},
    Command{"abscissa.log", "Lo&g", kAbscissa, Needs::View, SetLog<&Graph::Abscissa, true>},
    Command{"ordinate.linear", "&Linear", kOrdinate, Needs::View, SetLog<&Graph::Ordinate, false>},
    Command{"ordinate.log", "Lo&g", kOrdinate, Needs::View, SetLog<&Graph::Ordinate, true>},
    Command{"line.none", "&None", kLine, Needs::View, SetLine<LineStyle::None>},
    Command{"line.solid", "&Solid", kLine, Needs::View, SetLine<LineStyle::Solid>},
    Command{"line.dotted", "&Dotted", kLine, Needs::View, SetLine<LineStyle::Dotted>},
    Command{"line.dashed", "Das&hed", kLine, Needs::View, SetLine<LineStyle::Dashed>},
    Command{"line.dash-1-dot", "Dash &1 Dot", kLine, Needs::View, SetLine<LineStyle::DashDot>},
    Command{"line.dash-2-dots", "Dash &2 Dots", kLine, Needs::View, SetLine<LineStyle::DashDotDot>},
    Command{"line.half", "&Half solid && dashed", kLine, Needs::View, OnGraphs<&Graph::HalveLines>},
    Command{"line.alternate", "&Alternate styles", kLine, Needs::View, OnGraphs<&Graph::AlternateLines>},
    Command{"line.thick", "&Thick", kLine, Needs::View, SetWidth<3>},
    Command{"line.thin", "T&hin", kLine, Needs::View, SetWidth<1>},
    Command{"point.none", "&None", kPoint, Needs::View, SetPoint<PointStyle::None>},
    Command{"point.dot", "Dot &.", kPoint, Needs::View, SetPoint<PointStyle::Dot>},
    Command{"point.star", "Star &*", kPoint, Needs::View, SetPoint<PointStyle::Star>},
    Command{"point.small-x", "&Small x", kPoint, Needs::View, SetPoint<PointStyle::SmallX>},
    Command{"point.large-x", "&Large X", kPoint, Needs::View, SetPoint<PointStyle::LargeX>},
    Command{"point.plus", "&Plus +", kPoint, Needs::View, SetPoint<PointStyle::Plus>},
    Command{"point.cross", "&Cross", kPoint, Needs::View, SetPoint<PointStyle::Cross>},
    Command{"point.circle", "Circle &O", kPoint, Needs::View, SetPoint<PointStyle::Circle>},
    Command{"point.square", "S&quare", kPoint, Needs::View, SetPoint<PointStyle::Square>},
    Command{"point.diamond", "&Diamond", kPoint, Needs::View, SetPoint<PointStyle::Diamond>},
    Command{"point.alternate", "&Alternate styles", kPoint, Needs::View, OnGraphs<&Graph::AlternatePoints>},
};

}  // namespace

std::span<const Command> LookCommands() {
  return kLookCommands;
}

}  // namespace velmora
