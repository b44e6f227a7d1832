#include "graph/view_window.hpp"

#include <algorithm>

#include "graph/single_view.hpp"

namespace velmora {

void SettleViewWindow(Workbench& workbench) {
  GraphMemory& memory = workbench.graph;
  const double duration = workbench.trial.Duration;
  if (memory.ViewDuration == 0 || memory.ViewDuration > duration) {
    memory.ViewDuration = duration;
  }
  if (memory.PanSize > duration) {
    memory.PanSize = duration / 2;
  }
  if (memory.PanSize > memory.ViewDuration) {
    memory.PanSize = 0;
  }
}

void SingleView::ToggleWindow() {
  const Trial& trial = workbench_.trial;
  zoomed_ = false;
  if (Cursors() == 0 || windowMode_) {
    graph_.AutoScaleAbscissa();
    if (Cursors() >= 2 && trial.Rate > 0) {
      graph_.Abscissa.Maximum = trial.NData / trial.Rate;
    }
    windowMode_ = false;
  } else if (Cursors() == 1) {
    const double t = graph_.Cursors[0].XPosition;
    if (t > 0) {
      graph_.Abscissa.SetMinMax(0, t);
      windowMode_ = true;
    }
  } else {
    const auto [t1, t2] = std::minmax(graph_.Cursors[0].XPosition, graph_.Cursors[1].XPosition);
    if (t1 < t2) {
      workbench_.graph.ViewDuration = t2 - t1;
      workbench_.graph.PanSize = 0;
      graph_.Abscissa.SetMinMax(t1, t2);
      windowMode_ = true;
    }
  }
  if (Cursors() > 0) {
    TakeRange();
  }
}

double SingleView::PanWindow() const {
  return zoomed_ ? graph_.Abscissa.Maximum - graph_.Abscissa.Minimum : workbench_.graph.ViewDuration;
}

void SingleView::ShowRange(double left, double right, double bottom, double top) {
  zoomed_ = graph_.ShowRange(left, right, bottom, top) || zoomed_;
}

// The step is the whole window; at an end the last full window stays on the screen.
void SingleView::PanForward(bool toEnd) {
  const double duration = workbench_.trial.Duration;
  const double window = PanWindow();
  Axis& axis = graph_.Abscissa;
  if (toEnd || axis.Maximum >= duration) {
    Request(WindowRequest::Beep);
    axis.SetMinMax(duration - window, duration);
  } else {
    axis.SetMinMax(axis.Maximum, axis.Maximum + window);
  }
}

void SingleView::PanBack(bool toStart) {
  const double window = PanWindow();
  Axis& axis = graph_.Abscissa;
  if (toStart || axis.Minimum <= 0) {
    Request(WindowRequest::Beep);
    axis.SetMinMax(0, window);
  } else {
    axis.SetMinMax(axis.Minimum - window, axis.Minimum);
  }
}

}  // namespace velmora
