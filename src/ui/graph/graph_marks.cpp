#include "ui/graph/graph_marks.hpp"

#include "graph/multi/multi_view.hpp"
#include "graph/single_view.hpp"

namespace velmora::ui {
namespace {

template <Colour colour>
bool HasBackground(const GraphView& view, const Workbench& /*workbench*/) {
  return view.Lead().Background == colour;
}
template <Scale scale>
bool HasScale(const GraphView& view, const Workbench& /*workbench*/) {
  return view.ShownScale() == static_cast<std::int32_t>(scale);
}
template <TrackMode mode>
bool HasTrack(const GraphView& view, const Workbench& /*workbench*/) {
  return view.Lead().Track == mode;
}
template <Axis Graph::*axis, bool log>
bool HasLog(const GraphView& view, const Workbench& /*workbench*/) {
  return (view.Lead().*axis).Log == log;
}
template <int count>
bool HasCursors(const GraphView& view, const Workbench& /*workbench*/) {
  const auto* cursors = dynamic_cast<const TimeView*>(&view);
  return cursors != nullptr && cursors->Cursors() == count;
}
template <bool Graph::*shown>
bool Shows(const GraphView& view, const Workbench& /*workbench*/) {
  return view.Lead().*shown;
}
template <Axis Graph::*axis>
bool ShowsCaption(const GraphView& view, const Workbench& /*workbench*/) {
  return (view.Lead().*axis).CaptionVisible;
}

template <bool x, bool y, bool zero>
bool HasGrid(const GraphView& view, const Workbench& /*workbench*/) {
  const Graph& graph = view.Lead();
  return graph.Abscissa.MajorGrid == x && graph.Ordinate.MajorGrid == y && graph.Ordinate.ZeroLine == zero;
}
template <bool x, bool y>
bool HasNumerals(const GraphView& view, const Workbench& /*workbench*/) {
  const Graph& graph = view.Lead();
  return graph.Abscissa.LabelsVisible == x && graph.Ordinate.LabelsVisible == y;
}

/// Whether every visible plot, told with its number from 0 in its graph, fits, and there are at least so
/// many.
template <typename Fits>
bool Every(const GraphView& view, int least, const Fits& fits) {
  int count = 0;
  for (const Graph& graph : view.Graphs()) {
    int k = 0;
    for (const Plot& plot : graph.Plots) {
      if (plot.Visible && !fits(plot, k++)) {
        return false;
      }
    }
    count += k;
  }
  return count >= least;
}
template <LineStyle style>
bool HasLine(const GraphView& view, const Workbench& /*workbench*/) {
  return Every(view, 1, [](const Plot& plot, int /*k*/) { return plot.Line == style; });
}
template <PointStyle style>
bool HasPoint(const GraphView& view, const Workbench& /*workbench*/) {
  return Every(view, 1, [](const Plot& plot, int /*k*/) { return plot.Point == style; });
}
template <int pixels>
bool HasWidth(const GraphView& view, const Workbench& /*workbench*/) {
  return Every(view, 1, [](const Plot& plot, int /*k*/) { return plot.LineWidth == pixels; });
}

// What a single plot has is no pattern but a style.
bool HasHalvedLines(const GraphView& view, const Workbench& /*workbench*/) {
  const int plots = view.Lead().VisiblePlots();
  return Every(view, 2,
               [plots](const Plot& plot, int k) { return plot.Line == Graph::HalvedLine(k, plots); });
}
bool HasAlternateLines(const GraphView& view, const Workbench& /*workbench*/) {
  return Every(view, 2, [](const Plot& plot, int k) { return plot.Line == Graph::AlternateLine(k); });
}
bool HasAlternatePoints(const GraphView& view, const Workbench& /*workbench*/) {
  return Every(view, 2, [](const Plot& plot, int k) { return plot.Point == Graph::AlternatePoint(k); });
}
bool HasZeroWithoutNumerals(const GraphView& view, const Workbench& workbench) {
  return HasGrid<false, false, true>(view, workbench) && HasNumerals<false, false>(view, workbench);
}
bool ShowsValues(const GraphView& view, const Workbench& /*workbench*/) {
  const auto* single = dynamic_cast<const SingleView*>(&view);
  return single != nullptr && single->Values().has_value();
}
bool ShowsHorizontal(const GraphView& view, const Workbench& /*workbench*/) {
  const auto* single = dynamic_cast<const SingleView*>(&view);
  return single != nullptr && single->HorizontalShown();
}

struct NamedMark {
  std::string_view id;
  Mark mark;
};

constexpr NamedMark kMarks[] = {{"background.black", HasBackground<kBlack>},
                                {"background.white", HasBackground<kWhite>},
                                {"background.green", HasBackground<kDarkGreen>},
                                {"background.grey", HasBackground<kDarkGrey>},
                                {"background.blue", HasBackground<kDarkBlue>},
                                {"scale.autoscale", HasScale<Scale::Auto>},
                                {"scale.10-v", HasScale<Scale::TenVolts>},
                                {"scale.0-to-100", HasScale<Scale::Percent>},
                                {"scale.100", HasScale<Scale::PlusMinusPercent>},
                                {"scale.include-zero", HasScale<Scale::IncludeZero>},
                                {"scale.maximum", HasScale<Scale::PlusMinusMaximum>},
                                {"zoom.pan", HasTrack<TrackMode::PanXAndY>},
                                {"zoom.pan-x", HasTrack<TrackMode::PanX>},
                                {"zoom.pan-y", HasTrack<TrackMode::PanY>},
                                {"zoom.area", HasTrack<TrackMode::ZoomArea>},
                                {"zoom.cursor", HasTrack<TrackMode::DragCursors>},
                                {"zoom.disable", HasTrack<TrackMode::None>},
                                {"abscissa.linear", HasLog<&Graph::Abscissa, false>},
                                {"abscissa.log", HasLog<&Graph::Abscissa, true>},
                                {"ordinate.linear", HasLog<&Graph::Ordinate, false>},
                                {"ordinate.log", HasLog<&Graph::Ordinate, true>},
                                {"cursor.none", HasCursors<0>},
                                {"cursor.one", HasCursors<1>},
                                {"cursor.two", HasCursors<2>},
                                {"cursor.values", ShowsValues},
                                {"cursor.horizontal", ShowsHorizontal},
                                {"grid.none", HasGrid<false, false, false>},
                                {"grid.both", HasGrid<true, true, false>},
                                {"grid.x", HasGrid<true, false, false>},
                                {"grid.y", HasGrid<false, true, false>},
                                {"grid.zero", HasGrid<false, false, true>},
                                {"grid.no-labels", HasNumerals<false, false>},
                                {"grid.x-numerals", HasNumerals<true, false>},
                                {"grid.y-numerals", HasNumerals<false, true>},
                                {"grid.x-y-numerals", HasNumerals<true, true>},
                                {"grid.zero-no-labels", HasZeroWithoutNumerals},
                                {"line.none", HasLine<LineStyle::None>},
                                {"line.solid", HasLine<LineStyle::Solid>},
                                {"line.dotted", HasLine<LineStyle::Dotted>},
                                {"line.dashed", HasLine<LineStyle::Dashed>},
                                {"line.dash-1-dot", HasLine<LineStyle::DashDot>},
                                {"line.dash-2-dots", HasLine<LineStyle::DashDotDot>},
                                {"line.half", HasHalvedLines},
                                {"line.alternate", HasAlternateLines},
                                {"line.thick", HasWidth<3>},
                                {"line.thin", HasWidth<1>},
                                {"point.none", HasPoint<PointStyle::None>},
                                {"point.dot", HasPoint<PointStyle::Dot>},
                                {"point.star", HasPoint<PointStyle::Star>},
                                {"point.small-x", HasPoint<PointStyle::SmallX>},
                                {"point.large-x", HasPoint<PointStyle::LargeX>},
                                {"point.plus", HasPoint<PointStyle::Plus>},
                                {"point.cross", HasPoint<PointStyle::Cross>},
                                {"point.circle", HasPoint<PointStyle::Circle>},
                                {"point.square", HasPoint<PointStyle::Square>},
                                {"point.diamond", HasPoint<PointStyle::Diamond>},
                                {"point.alternate", HasAlternatePoints},
                                {"grid.title", Shows<&Graph::TitleVisible>},
                                {"grid.sidebar", Shows<&Graph::SidebarVisible>},
                                {"grid.abscissa-label", ShowsCaption<&Graph::Abscissa>},
                                {"grid.ordinate-label", ShowsCaption<&Graph::Ordinate>}};

}  // namespace

const std::map<std::string_view, Mark>& GraphMarks() {
  static const std::map<std::string_view, Mark> marks = [] {
    std::map<std::string_view, Mark> all;
    for (const auto& [id, mark] : kMarks) {
      all.emplace(id, mark);
    }
    return all;
  }();
  return marks;
}

}  // namespace velmora::ui
