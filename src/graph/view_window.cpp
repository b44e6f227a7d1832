#include "graph/view_window.hpp"

#include <algorithm>
#include <utility>

#include "core/trial/abscissa.hpp"
#include "graph/time_view.hpp"

namespace velmora {

void SettleViewWindow(Workbench& workbench, LongPan longPan) {
  GraphMemory& memory = workbench.graph;
  const double duration = workbench.trial.Duration;
  if (memory.ViewDuration == 0 || memory.ViewDuration > duration) {
    memory.ViewDuration = duration;
  }
  if (memory.PanSize > duration) {
    memory.PanSize = duration / 2;
  }
  if (memory.PanSize > memory.ViewDuration) {
    memory.PanSize = longPan == LongPan::NextWindow ? 0 : memory.ViewDuration;
  }
}

void TimeView::SetAbscissa(double minimum, double maximum) {
  for (Graph& graph : graphs_) {
    graph.Abscissa.SetMinMax(minimum, maximum);
  }
}

void TimeView::ShowWholeAbscissa() {
  Lead().AutoScaleAbscissa();
  SetAbscissa(Lead().Abscissa.Minimum, Lead().Abscissa.Maximum);
}

TimeView::AbscissaShown TimeView::AbscissaNow() const {
  const Trial& trial = workbench_.trial;
  return {SamplesPerUnit(trial), AbscissaStart(trial), trial.Duration, trial.NData};
}

// The samples are the same and their places are others: a cursor is at a sample, a window as many of them.
void TimeView::FollowAbscissa() {
  const AbscissaShown now = AbscissaNow();
  const bool sameSamples = now.samples == shown_.samples && !std::exchange(replaced_, false);
  if (!sameSamples || !(now.rate > 0 && shown_.rate > 0) ||
      (now.rate == shown_.rate && now.start == shown_.start)) {
    return;
  }
  const double ratio = shown_.rate / now.rate;
  for (Graph& graph : graphs_) {
    for (GraphCursor& cursor : graph.Cursors) {
      cursor.XPosition = now.start + (cursor.XPosition - shown_.start) * ratio;
    }
  }
  GraphMemory& memory = workbench_.graph;
  memory.ViewDuration = memory.ViewDuration == shown_.duration ? now.duration : memory.ViewDuration * ratio;
  memory.PanSize *= ratio;
}

void TimeView::ShowWindow() {
  shown_ = AbscissaNow();
  zoomed_ = false;
  ShowWholeAbscissa();
  const double window = workbench_.graph.ViewDuration;
  if (window > 0 && window < workbench_.trial.Duration) {
    const double start = Lead().Abscissa.Minimum;
    SetAbscissa(start, start + window);
  }
}

void TimeView::ToggleWindow() {
  const Trial& trial = workbench_.trial;
  const std::vector<double> cursors = CommonCursors();
  zoomed_ = false;
  if (cursors.empty() || windowMode_) {
    ShowWholeAbscissa();
    if (cursors.size() >= 2 && trial.Rate > 0) {
      SetAbscissa(Lead().Abscissa.Minimum, AbscissaStart(trial) + trial.NData / SamplesPerUnit(trial));
    }
    windowMode_ = false;
  } else if (cursors.size() == 1) {
    const double start = AbscissaStart(trial);
    if (cursors[0] > start) {
      SetAbscissa(start, cursors[0]);
      windowMode_ = true;
    }
  } else {
    const auto [t1, t2] = std::minmax(cursors[0], cursors[1]);
    if (t1 < t2) {
      workbench_.graph.ViewDuration = t2 - t1;
      workbench_.graph.PanSize = 0;
      SetAbscissa(t1, t2);
      windowMode_ = true;
    }
  }
  if (!cursors.empty()) {
    TakeRange();
  }
}

void TimeView::ShowRange(int graph, double left, double right, double bottom, double top) {
  Graph& under = GraphAt(graph);
  zoomed_ = under.ShowRange(left, right, bottom, top) || zoomed_;
  SetAbscissa(under.Abscissa.Minimum, under.Abscissa.Maximum);
}

}  // namespace velmora
