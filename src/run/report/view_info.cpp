#include "run/report/view_info.hpp"

#include "graph/multi/multi_view.hpp"
#include "graph/single_view.hpp"
#include "graph/xy/xy_view.hpp"

namespace velmora {
namespace {

Json AxisInfo(const Axis& axis) {
  return {{"min", JsonNumber(axis.Minimum)},
          {"max", JsonNumber(axis.Maximum)},
          {"log", axis.Log ? -1 : 0},
          {"caption", axis.Caption}};
}

Json PlotInfo(const Plot& plot) {
  return {{"channel", plot.Channel},
          {"visible", plot.Visible ? -1 : 0},
          {"colour", plot.ColourIndex},
          {"line", static_cast<int>(plot.Line)},
          {"width", JsonNumber(plot.LineWidth)},
          {"point", static_cast<int>(plot.Point)}};
}

Json PlotsInfo(const Graph& graph) {
  Json plots = Json::array();
  for (const Plot& plot : graph.Plots) {
    plots.push_back(PlotInfo(plot));
  }
  return plots;
}

Json CursorsInfo(const Graph& graph) {
  Json cursors = Json::array();
  for (const GraphCursor& cursor : graph.Cursors) {
    cursors.push_back({{"x", JsonNumber(cursor.XPosition)},
                       {"y", JsonNumber(cursor.YPosition)},
                       {"colour", cursor.Color},
                       {"name", cursor.Name},
                       {"kind", KindName(cursor.Kind)}});
  }
  return cursors;
}

Json ValuesInfo(const CursorValues& values) {
  Json rows = Json::object();
  for (const CursorValues::Row& row : values.Rows) {
    rows[std::to_string(row.channel)] = row.value;
  }
  return {{"sample", values.Sample}, {"time", values.Time}, {"channels", rows}};
}

Json LaneInfo(const MultiView& view, int number) {
  const Graph& graph = view.GraphAt(number);
  Json plots = Json::array();
  for (const int channel : view.ChannelsOf(number)) {
    plots.push_back(PlotInfo(graph.Plots[static_cast<std::size_t>(channel - 1)]));
  }
  Json bands = Json::array();
  for (const DeviationBand& band : graph.Deviations) {
    bands.push_back({{"channel", band.Channel}, {"sd", band.SDChannel}, {"k", JsonNumber(band.K)}});
  }
  return {
      {"number", number}, {"x", AxisInfo(graph.Abscissa)}, {"y", AxisInfo(graph.Ordinate)}, {"plots", plots},
      {"bands", bands},   {"cursors", CursorsInfo(graph)}};
}

Json MultiInfo(const MultiView& view) {
  Json graphs = Json::array();
  for (const int number : view.ShownGraphs()) {
    graphs.push_back(LaneInfo(view, number));
  }
  return {
      {"kind", "multi"},           {"title", view.TitleText()},   {"WindowMode", view.WindowMode() ? -1 : 0},
      {"NGraphs", view.NGraphs()}, {"selected", view.Selected()}, {"sidebar", view.SidebarLines()},
      {"graphs", graphs}};
}

Json XYInfo(const XYView& view) {
  const Graph& graph = view.Drawing();
  Json x = AxisInfo(graph.Abscissa);
  x["channel"] = view.Setup().X;
  Json plots = Json::array();
  for (const Plot& plot : graph.Plots) {
    plots.push_back({{"channel", view.ChannelOf(plot.Channel)},
                     {"visible", plot.Visible ? -1 : 0},
                     {"colour", plot.ColourIndex},
                     {"n", view.PointsOf(plot.Channel)}});
  }
  return {{"kind", "xy"},
          {"title", view.TitleText()},
          {"x", x},
          {"y", AxisInfo(graph.Ordinate)},
          {"plots", plots},
          {"equal", graph.EqualScales ? -1 : 0},
          {"range", {view.Range().lo, view.Range().hi}}};
}

}  // namespace

Json ViewInfo(const OpenView& view) {
  if (const auto* multi = dynamic_cast<const MultiView*>(&view)) {
    return MultiInfo(*multi);
  }
  if (const auto* xy = dynamic_cast<const XYView*>(&view)) {
    return XYInfo(*xy);
  }
  const auto* single = dynamic_cast<const SingleView*>(&view);
  if (single == nullptr) {
    return nullptr;
  }
  const Graph& graph = single->Drawing();
  Json info = {{"kind", "single"},
               {"title", single->TitleText()},
               {"WindowMode", single->WindowMode() ? -1 : 0},
               {"x", AxisInfo(graph.Abscissa)},
               {"y", AxisInfo(graph.Ordinate)},
               {"plots", PlotsInfo(graph)},
               {"cursors", CursorsInfo(graph)},
               {"# data", single->CountText()},
               {"Interval", single->IntervalText()}};
  if (const std::optional<CursorValues> values = single->Values()) {
    info["values"] = ValuesInfo(*values);
  }
  return info;
}

}  // namespace velmora
