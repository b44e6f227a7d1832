#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/trial/abscissa.hpp"
#include "graph/time_view.hpp"

namespace velmora {

int TimeView::Cursors() const {
  const std::vector<GraphCursor>& all = Lead().Cursors;
  return static_cast<int>(std::count_if(
      all.begin(), all.end(), [](const GraphCursor& cursor) { return cursor.Kind == CursorKind::Cursor; }));
}

std::vector<double> TimeView::CommonCursors() const {
  std::vector<double> places;
  for (const GraphCursor& cursor : Lead().Cursors) {
    if (cursor.Kind == CursorKind::Cursor) {
      places.push_back(cursor.XPosition);
    }
  }
  return places;
}

std::int32_t TimeView::SampleOf(int cursor) const {
  return velmora::SampleOf(workbench_.trial,
                           Lead().Cursors.at(static_cast<std::size_t>(cursor - 1)).XPosition);
}

SampleRange TimeView::PairRange() const {
  const auto [lo, hi] = std::minmax({SampleOf(1), SampleOf(2)});
  return {lo, hi};
}

void TimeView::TakeRange() {
  Trial& trial = workbench_.trial;
  SampleRange range{1, trial.NData};
  if (Cursors() >= 2) {
    range = PairRange();
  } else if (Cursors() == 1) {
    range.hi = SampleOf(1);
  }
  trial.CursorLo = range.lo;
  trial.CursorHi = range.hi;
}

// Lines of thresholds stay: they are shown until the person removes them.
void TimeView::SetCursors(const std::vector<double>& positions) {
  for (Graph& graph : graphs_) {
    std::erase_if(graph.Cursors,
                  [](const GraphCursor& cursor) { return cursor.Kind != CursorKind::Threshold; });
    auto place = graph.Cursors.begin();
    for (const double x : positions) {
      GraphCursor cursor;
      cursor.XPosition = x;
      cursor.Color = kRed;
      place = graph.Cursors.insert(place, cursor) + 1;
    }
    if (!positions.empty()) {
      graph.Cursors.front().Color = FirstCursorColour();
      graph.Track = TrackMode::DragCursors;
    }
  }
  CursorsChanged();
  TakeRange();
}

Colour TimeView::FirstCursorColour() const {
  return Lead().Background == kWhite ? kBlue : kYellow;
}

void TimeView::OneCursor() {
  const double a = Lead().Abscissa.Minimum;
  const double b = Lead().Abscissa.Maximum;
  const std::vector<double> before = CommonCursors();
  SetCursors({before.empty() ? a + (b - a) / 2 : before[0]});
}

void TimeView::TwoCursors() {
  const double a = Lead().Abscissa.Minimum;
  const double b = Lead().Abscissa.Maximum;
  const std::vector<double> before = CommonCursors();
  double x1 = a + (b - a) / 4;
  double x2 = b - (b - a) / 4;
  if (!before.empty()) {
    x1 = before[0];
    x2 = before.size() > 1 ? before[1] : x1 + (b - x1) / 2;
  }
  SetCursors({x1, x2});
}

void TimeView::PlaceCursor(int cursor, double x) {
  for (Graph& graph : graphs_) {
    graph.Cursors[static_cast<std::size_t>(cursor - 1)].XPosition = x;
  }
}

// A cursor stays on the trial: the cursor range must name samples that are there.
void TimeView::MoveCommon(int cursor, double x) {
  if (cursor < 1 || cursor > Cursors()) {
    throw std::out_of_range("there is no cursor " + std::to_string(cursor) + ", but " +
                            std::to_string(Cursors()));
  }
  if (!std::isfinite(x)) {
    throw std::invalid_argument("a cursor cannot be moved there");
  }
  const Graph::Ends ends = Lead().TrialEnds();
  PlaceCursor(cursor, std::clamp(x, ends.first, ends.last));
  TakeRange();
}

void TimeView::MoveCursorsToEnds(bool first, bool last) {
  const Trial& trial = workbench_.trial;
  const double start = AbscissaStart(trial);
  const double end = PlaceOf(trial, trial.NData);
  RemoveMarksOutside(start, end);
  for (Graph& graph : graphs_) {
    for (GraphCursor& cursor : graph.Cursors) {
      cursor.XPosition = std::clamp(cursor.XPosition, start, end);
    }
  }
  if (first && Cursors() > 0) {
    PlaceCursor(1, start);
  }
  if (last && Cursors() > 0) {
    PlaceCursor(Cursors() > 1 ? 2 : 1, end);
  }
  TakeRange();
}

// A burst that reaches into the trial has its ends at those of the trial; what has gone as a whole is no
// mark.
void TimeView::RemoveMarksOutside(double start, double end) {
  const double rate = SamplesPerUnit(workbench_.trial);
  const double half = rate > 0 ? 0.5 / rate : 0.0;  // of a sample: row 0 has 32 bits
  for (Graph& graph : graphs_) {
    const auto isGone = [&](const GraphCursor& mark) {
      const bool before = mark.XPosition < start - half;
      const bool behind = mark.XPosition > end + half;
      return (before && mark.Kind == CursorKind::Offset) || (behind && mark.Kind == CursorKind::Onset) ||
             ((before || behind) && mark.Kind == CursorKind::Value);
    };
    const bool burst = std::none_of(graph.Cursors.begin(), graph.Cursors.end(), [&](const GraphCursor& mark) {
      return mark.Kind != CursorKind::Value && isGone(mark);
    });
    std::erase_if(graph.Cursors, [&](const GraphCursor& mark) {
      const bool ofBurst = mark.Kind == CursorKind::Onset || mark.Kind == CursorKind::Offset;
      return ofBurst ? !burst : isGone(mark);
    });
  }
}

void TimeView::BringForward(double by) {
  for (Graph& graph : graphs_) {
    for (GraphCursor& cursor : graph.Cursors) {
      cursor.XPosition -= by;
    }
  }
}

void TimeView::RemoveCursors(CursorKind kind) {
  for (Graph& graph : graphs_) {
    std::erase_if(graph.Cursors, [kind](const GraphCursor& cursor) { return cursor.Kind == kind; });
  }
}

void TimeView::RemoveMarks() {
  for (const CursorKind kind : {CursorKind::Onset, CursorKind::Offset, CursorKind::Value}) {
    RemoveCursors(kind);
  }
}

void TimeView::LeftCursorToStart() {
  if (Cursors() >= 2) {
    PlaceCursor(1, AbscissaStart(workbench_.trial));
    TakeRange();
    workbench_.trial.CursorLo = 1;
  }
}

void TimeView::RightCursorToEnd() {
  if (Cursors() >= 2) {
    PlaceCursor(2, AbscissaEnd(workbench_.trial));
    TakeRange();
    workbench_.trial.CursorHi = workbench_.trial.NData;
  }
}

// CursorLo is 1 whatever the left end on the screen is: the key means "everything".
void TimeView::CursorsToEnds() {
  if (Cursors() >= 2) {
    PlaceCursor(1, Lead().Abscissa.Minimum);
    PlaceCursor(2, AbscissaEnd(workbench_.trial));
    workbench_.trial.CursorLo = 1;
    workbench_.trial.CursorHi = workbench_.trial.NData;
  }
}

void TimeView::SetStatRange() {
  GraphMemory& memory = workbench_.graph;
  memory.StatLo = 1;
  memory.StatHi = workbench_.trial.NData;
  if (Cursors() >= 2) {
    const SampleRange pair = PairRange();
    memory.StatLo = pair.lo;
    memory.StatHi = pair.hi;
  } else if (Cursors() == 1) {
    memory.StatLo = SampleOf(1);
  }
}

}  // namespace velmora
