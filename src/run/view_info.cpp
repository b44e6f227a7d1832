#include "run/view_info.hpp"

#include "graph/single_view.hpp"

namespace velmora {
namespace {

Json AxisInfo(const Axis& axis) {
  return {{"min", JsonNumber(axis.Minimum)},
          {"max", JsonNumber(axis.Maximum)},
          {"log", axis.Log ? -1 : 0},
          {"caption", axis.Caption}};
}

Json PlotsInfo(const Graph& graph) {
  Json plots = Json::array();
  for (const Plot& plot : graph.Plots) {
    plots.push_back({{"channel", plot.Channel},
                     {"visible", plot.Visible ? -1 : 0},
                     {"colour", plot.ColourIndex},
                     {"line", static_cast<int>(plot.Line)},
                     {"width", JsonNumber(plot.LineWidth)},
                     {"point", static_cast<int>(plot.Point)}});
  }
  return plots;
}

Json CursorsInfo(const Graph& graph) {
  Json cursors = Json::array();
  for (const GraphCursor& cursor : graph.Cursors) {
    cursors.push_back({{"x", JsonNumber(cursor.XPosition)},
                       {"y", JsonNumber(cursor.YPosition)},
                       {"colour", cursor.Color},
                       {"name", cursor.Name}});
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

}  // namespace

Json ViewInfo(const OpenView& view) {
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
