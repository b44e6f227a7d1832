#include "graph/view_window.hpp"

#include <algorithm>

#include "core/trial/abscissa.hpp"
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
      graph_.Abscissa.Maximum = AbscissaStart(trial) + trial.NData / trial.Rate;
    }
    windowMode_ = false;
  } else if (Cursors() == 1) {
    const double start = AbscissaStart(trial);
    const double t = graph_.Cursors[0].XPosition;
    if (t > start) {
      graph_.Abscissa.SetMinMax(start, t);
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
  const double end = AbscissaEnd(workbench_.trial);
  const double window = PanWindow();
  Axis& axis = graph_.Abscissa;
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
  Axis& axis = graph_.Abscissa;
  if (toStart || axis.Minimum <= start) {
    Request(WindowRequest::Beep);
    axis.SetMinMax(start, start + window);
  } else {
    axis.SetMinMax(axis.Minimum - window, axis.Minimum);
  }
}

}  // namespace velmora
