#include "graph/single_view.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/questions/picker.hpp"
#include "core/questions/progress.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"
#include "graph/graph_choose_form.hpp"
#include "graph/view_window.hpp"

namespace velmora {

SingleView::SingleView(Workbench& workbench)
    : TimeView(workbench), channels_(workbench.chooser.ChanSelected) {
  Load();
}

void SingleView::Load() {
  constexpr std::int32_t kQuickSamples = 50000;
  std::optional<ProgressPanel> panel;
  if (workbench_.trial.NData > kQuickSamples) {
    panel.emplace(workbench_);
    panel->SetStatus("Plotting data");
  }
  Graph& graph = Lead();
  const Axis before = graph.Ordinate;
  const bool first = graph.Plots.empty();
  graph.Plots.clear();
  graph.PlotXY(workbench_.trial);
  SetDefaultLooks();
  windowMode_ = false;
  TriggeringOffered = true;
  NoCursors();
  ShowChannels();
  CaptionOrdinate(false);
  ShowWindow();
  const auto scale = static_cast<Scale>(workbench_.graph.GraphScaleChoice);
  if (scale == Scale::NoChange && !first) {
    graph.Ordinate.SetMinMax(before.Minimum, before.Maximum);
    return;
  }
  graph.AutoScaleOrdinate();
  SetScale(scale);
}

void SingleView::Replot() {
  Lead().PlotXY(workbench_.trial);
  windowMode_ = false;
  SettleViewWindow(workbench_);
  ShowChannels();
  ShowWindow();
  Lead().AutoScaleOrdinate();
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
  FollowAbscissa();
  MoveCursorsToEnds(false, false);
  Replot();
  CaptionAbscissa();
  return true;
}

std::string SingleView::TitleText() const {
  if (!numbersShown_) {
    return Lead().Title;
  }
  return Lead().Title + "\nCursor Numbers (press N to remove cursor numbers or Delete to delete a cursor)";
}

void SingleView::SetDefaultLooks() {
  ClearLooks(Lead());
  CaptionAbscissa();
  Lead().Title = "Single-axis Graph of " + TitleOnOneLine(workbench_.trial);
  SetBackground(kBlack);
}

// What a picker of another command is left with is nothing to the graph. A trial that has none of its
// channels is shown whole.
void SingleView::ShowChannels() {
  ChannelFlags channels = channels_;
  const auto end = channels.begin() + workbench_.trial.NChan + 1;
  if (std::find(channels.begin() + 1, end, true) == end) {
    std::fill(channels.begin() + 1, end, true);
  }
  TimeView::ShowChannels(Lead(), channels);
  ThresholdsChanged();
}

void SingleView::SelectChannels() {
  ChooserState& chooser = workbench_.chooser;
  chooser.ChanSelected = channels_;
  chooser.ChooserPrompt.clear();
  chooser.ChooserSelectMode = true;
  if (ChannelPicker(workbench_).Show()) {
    channels_ = chooser.ChanSelected;
    ShowChannels();
    CaptionOrdinate(true);
  }
}

void SingleView::CaptionOrdinate(bool onlyOfOne) {
  const Plot* first = Lead().FirstVisible();
  if (first == nullptr || (onlyOfOne && Lead().VisiblePlots() > 1)) {
    Lead().Ordinate.Caption.clear();
    return;
  }
  const Trial& trial = workbench_.trial;
  Lead().Ordinate.Caption =
      LabelWithUnits(trial.ChanLabel[first->Channel].Text(), trial.ChanUnits[first->Channel].Text());
}

void SingleView::ShowAll() {
  zoomed_ = false;
  windowMode_ = false;
  ShowWholeAbscissa();
  Lead().AutoScaleOrdinate();
  SetScale(static_cast<Scale>(workbench_.graph.GraphScaleChoice));
}

void SingleView::SetScale(Scale scale) {
  workbench_.graph.GraphScaleChoice = static_cast<std::int32_t>(scale);
  ScaleOrdinate(Lead().Ordinate, scale, [this] { Lead().AutoScaleOrdinate(); });
}

void SingleView::ResetZoom() {
  ShowAll();
  Lead().Track = Cursors() > 0 ? TrackMode::DragCursors : TrackMode::None;
}

void SingleView::ChangeChannels() {
  workbench_.chooser.ChanSelected = channels_;
  if (GraphChooseForm(workbench_).Ask()) {
    channels_ = workbench_.chooser.ChanSelected;
    maximised_ = workbench_.graph.GraphWindowMaximized;
    Load();
  }
}

void SingleView::TogglePoints() {
  if (offersLines_) {
    Lead().SetPoint(PointStyle::Dot);
  } else {
    Lead().SetLine(LineStyle::Solid);
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

double SingleView::PanWindow() const {
  return zoomed_ ? Lead().Abscissa.Maximum - Lead().Abscissa.Minimum : workbench_.graph.ViewDuration;
}

// The step is the whole window; at an end the last full window stays on the screen.
void SingleView::PanForward(bool toEnd) {
  const double end = AbscissaEnd(workbench_.trial);
  const double window = PanWindow();
  Axis& axis = Lead().Abscissa;
  if (toEnd || axis.Maximum >= end) {
    Request(WindowRequest::Beep);
    axis.SetMinMax(end - window, end);
  } else {
    axis.SetMinMax(axis.Maximum, axis.Maximum + window);
  }
}

void SingleView::PanBack(bool toStart) {
  const double start = AbscissaStart(workbench_.trial);
  const double window = PanWindow();
  Axis& axis = Lead().Abscissa;
  if (toStart || axis.Minimum <= start) {
    Request(WindowRequest::Beep);
    axis.SetMinMax(start, start + window);
  } else {
    axis.SetMinMax(axis.Minimum - window, axis.Minimum);
  }
}

SingleView& OpenSingleView(Workbench& workbench) {
  return OpenAs<SingleView>(workbench, "single-axis graph");
}

}  // namespace velmora
