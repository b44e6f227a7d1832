#include "graph/view_window.hpp"

#include <algorithm>
#include <cmath>

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

SingleView::Ends SingleView::TrialEnds() const {
  const Trial& trial = workbench_.trial;
  return {std::min(0.0, static_cast<double>(trial.Data(1, 0))),
          std::max(trial.Duration, static_cast<double>(trial.Data(trial.NData, 0)))};
}

double SingleView::PanWindow() const {
  return zoomed_ ? graph_.Abscissa.Maximum - graph_.Abscissa.Minimum : workbench_.graph.ViewDuration;
}

namespace {

// Wide enough for numbers of which 32 bits (samples) or 64 bits (times) are kept.
bool CanShow(const Axis& axis, double low, double high, double narrowest) {
  const double most = std::max(std::abs(low), std::abs(high));
  return std::isfinite(high - low) && high - low > narrowest * most && (!axis.Log || low > 0);
}

}  // namespace

void SingleView::ShowRange(double left, double right, double bottom, double top) {
  constexpr double kNarrowestTime = 1e-9;
  constexpr double kNarrowestValue = 1e-6;
  Axis& across = graph_.Abscissa;
  const bool moves = left != across.Minimum || right != across.Maximum;
  if (moves && CanShow(across, left, right, kNarrowestTime)) {
    const Ends ends = TrialEnds();
    const double first = std::min(ends.first, across.Minimum);
    const double last = std::max(ends.last, across.Maximum);
    if (!across.Log) {  // whose zero is never in reach
      const double width = std::min(right - left, last - first);
      left = std::clamp(left, first, last - width);
      right = left + width;
    }
    across.SetMinMax(left, right);
    zoomed_ = true;
  }
  if (CanShow(graph_.Ordinate, bottom, top, kNarrowestValue)) {
    graph_.Ordinate.SetMinMax(bottom, top);
  }
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
