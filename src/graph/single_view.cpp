#include "graph/single_view.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/questions/progress.hpp"
#include "core/text/text.hpp"
#include "graph/view_window.hpp"

namespace velmora {
SingleView::SingleView(Workbench& workbench) : workbench_(workbench) {
  maximised_ = workbench.graph.GraphWindowMaximized;
  Load();
}

void SingleView::Load() {
  constexpr std::int32_t kQuickSamples = 50000;
  std::optional<ProgressPanel> panel;
  if (workbench_.trial.NData > kQuickSamples) {
    panel.emplace(workbench_);
    panel->SetStatus("Plotting data");
  }
  const Axis before = graph_.Ordinate;
  const bool first = graph_.Plots.empty();
  graph_.Plots.clear();
  graph_.PlotXY(workbench_.trial);
  SetDefaultLooks();
  windowMode_ = false;
  NoCursors();
  ShowChannels();
  CaptionOrdinate(false);
  ShowWindow();
  const auto scale = static_cast<Scale>(workbench_.graph.GraphScaleChoice);
  if (scale == Scale::NoChange && !first) {
    graph_.Ordinate.SetMinMax(before.Minimum, before.Maximum);
    return;
  }
  graph_.AutoScaleOrdinate();
  SetScale(scale);
}

void SingleView::Replot() {
  graph_.PlotXY(workbench_.trial);
  windowMode_ = false;
  SettleViewWindow(workbench_);
  ShowChannels();
  ShowWindow();
  graph_.AutoScaleOrdinate();
  SetScale(static_cast<Scale>(workbench_.graph.GraphScaleChoice));
}

void SingleView::Reset() {
  workbench_.graph.ViewDuration = workbench_.trial.Duration;
  workbench_.graph.GraphScaleChoice = 0;
  offersLines_ = false;
  Load();
  CaptionOrdinate(true);
}

bool SingleView::TrialChanged() {
  if (workbench_.trial.NData == 0) {
    return false;
  }
  MoveCursorsToEnds(false, false);
  Replot();
  CaptionAbscissa();
  return true;
}

void SingleView::Leave() {
  workbench_.graph.GraphWindowMaximized = maximised_;
}

std::string SingleView::TitleText() const {
  if (!numbersShown_) {
    return graph_.Title;
  }
  return graph_.Title + "\nCursor Numbers (press N to remove cursor numbers or Delete to delete a cursor)";
}

void SingleView::SetDefaultLooks() {
  const Trial& trial = workbench_.trial;
  const Axis looks;
  for (Axis* axis : {&graph_.Abscissa, &graph_.Ordinate}) {
    const Axis range = *axis;
    *axis = looks;
    axis->SetMinMax(range.Minimum, range.Maximum);
    axis->Caption = range.Caption;
  }
  CaptionAbscissa();
  graph_.Title = "Single-axis Graph of " + trial.TrialTitle;
  graph_.TitleVisible = true;
  graph_.SidebarVisible = true;
  graph_.Track = TrackMode::None;
  for (Plot& plot : graph_.Plots) {
    plot.Line = LineStyle::Solid;
    plot.LineWidth = 1.0;
    plot.Point = PointStyle::None;
  }
  SetBackground(kBlack);
}

void SingleView::ShowChannels() {
  graph_.Show(workbench_.chooser.ChanSelected);
  KeepColours();
}

void SingleView::CaptionAbscissa() {
  graph_.Abscissa.Clock = workbench_.time.Base == TimeBase::HhMmSs;
  graph_.Abscissa.Caption = LabelWithUnits(workbench_.trial.ChanLabel[0].Text(), AbscissaUnits(workbench_));
}

void SingleView::CaptionOrdinate(bool onlyOfOne) {
  const Plot* first = graph_.FirstVisible();
  if (first == nullptr || (onlyOfOne && graph_.VisiblePlots() > 1)) {
    graph_.Ordinate.Caption.clear();
    return;
  }
  const Trial& trial = workbench_.trial;
  graph_.Ordinate.Caption =
      LabelWithUnits(trial.ChanLabel[first->Channel].Text(), trial.ChanUnits[first->Channel].Text());
}

void SingleView::ShowWindow() {
  zoomed_ = false;
  graph_.AutoScaleAbscissa();
  const double window = workbench_.graph.ViewDuration;
  if (window > 0 && window < workbench_.trial.Duration) {
    graph_.Abscissa.SetMinMax(graph_.Abscissa.Minimum, graph_.Abscissa.Minimum + window);
  }
}

void SingleView::ShowAll() {
  zoomed_ = false;
  windowMode_ = false;
  graph_.AutoScaleAbscissa();
  graph_.AutoScaleOrdinate();
  SetScale(static_cast<Scale>(workbench_.graph.GraphScaleChoice));
}

void SingleView::SetScale(Scale scale) {
  workbench_.graph.GraphScaleChoice = static_cast<std::int32_t>(scale);
  Axis& axis = graph_.Ordinate;
  switch (scale) {
    case Scale::Auto:
      graph_.AutoScaleOrdinate();
      return;
    case Scale::TenVolts:
      axis.SetMinMax(-10, 10);
      return;
    case Scale::Percent:
      axis.SetMinMax(0, 100);
      return;
    case Scale::PlusMinusPercent:
      axis.SetMinMax(-100, 100);
      return;
    case Scale::IncludeZero:
      if (axis.Minimum > 0) {
        axis.SetMinMax(0, axis.Maximum);
      } else if (axis.Maximum < 0) {
        axis.SetMinMax(axis.Minimum, 0);
      }
      return;
    case Scale::PlusMinusMaximum: {
      graph_.AutoScaleOrdinate();
      const double most = std::max(std::abs(axis.Minimum), std::abs(axis.Maximum));
      axis.SetMinMax(-most, most);
      return;
    }
    case Scale::NoChange:
      return;
  }
}

void SingleView::SetBackground(Colour colour) {
  graph_.SetBackground(colour);
  KeepColours();
}

// A channel that turned white is that everywhere.
void SingleView::KeepColours() {
  for (const Plot& plot : graph_.Plots) {
    std::int16_t& colour = workbench_.trial.ChanColour[plot.Channel];
    if (plot.Visible && plot.ColourIndex == kColours) {
      colour = kColours;
    }
  }
}

void SingleView::TogglePoints() {
  if (offersLines_) {
    graph_.SetPoint(PointStyle::Dot);
  } else {
    graph_.SetLine(LineStyle::Solid);
  }
  offersLines_ = !offersLines_;
}

void SingleView::DoClick(const GraphClick& click) {
  if (click.graph != 1) {
    throw std::out_of_range("there is no graph " + std::to_string(click.graph) + ", only graph 1");
  }
  if (click.how == Clicked::Twice) {
    ShowAll();
  }
}

SingleView& OpenSingleView(Workbench& workbench) {
  auto* view = dynamic_cast<SingleView*>(workbench.view.get());
  if (view == nullptr) {
    throw std::runtime_error("no single-axis graph is open");
  }
  return *view;
}

}  // namespace velmora
