// Cursors that move by keys and by the mouse, and the stretch of the abscissa that is shown.
#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"
#include "graph/multi/multi_view.hpp"

namespace velmora {
namespace {

// By the keys held: shift 1, control 2, alt 4.
constexpr std::array kSteps = {1, 5, 10, 100, 50, 500, 1000, 1};

int StepOf(const KeyPress& key) {
  const int mask = (key.shift ? 1 : 0) + (key.ctrl ? 2 : 0) + (key.alt ? 4 : 0);
  return kSteps[static_cast<std::size_t>(mask)];
}

}  // namespace

std::optional<CursorMove> MultiView::ArrowMove(const KeyPress& key) const {
  const std::string name = ToUpper(key.name);
  const bool left = name == "LEFT" || name == "RIGHT";
  const int cursor = left ? 1 : 2;
  if ((!left && name != "UP" && name != "DOWN") || cursor > Cursors()) {
    return std::nullopt;
  }
  const int sign = name == "RIGHT" || name == "UP" ? 1 : -1;
  const std::int64_t index = std::int64_t{SampleOf(cursor)} - 1 + std::int64_t{sign} * StepOf(key);
  const std::int64_t last = workbench_.trial.NData - 1;
  const auto sample = static_cast<std::int32_t>(std::clamp<std::int64_t>(index, 0, last)) + 1;
  return CursorMove{cursor, PlaceOf(workbench_.trial, sample), 0};
}

void MultiView::DoMove(const CursorMove& move) {
  if (move.graph == 0 && (move.cursor <= Cursors() || selected_ == 0)) {
    MoveCommon(move.cursor, move.x);
    return;
  }
  Graph& graph = GraphAt(move.graph > 0 ? move.graph : selected_);
  if (move.cursor < 1 || move.cursor > static_cast<int>(graph.Cursors.size())) {
    throw std::out_of_range("there is no cursor " + std::to_string(move.cursor) + " on graph " +
                            std::to_string(move.graph > 0 ? move.graph : selected_));
  }
  GraphCursor& cursor = graph.Cursors[static_cast<std::size_t>(move.cursor - 1)];
  if (cursor.Kind == CursorKind::Cursor) {
    MoveCommon(move.cursor, move.x);
    return;
  }
  if (!std::isfinite(move.x)) {
    throw std::invalid_argument("a cursor cannot be moved there");
  }
  const Graph::Ends ends = graph.TrialEnds();
  cursor.XPosition = std::clamp(move.x, ends.first, ends.last);
}

void MultiView::ResetCursors() {
  const double a = Lead().Abscissa.Minimum;
  const double b = Lead().Abscissa.Maximum;
  if (Cursors() == 1) {
    MoveCommon(1, a + (b - a) / 2);
  } else if (Cursors() == 2) {
    MoveCommon(1, a + (b - a) / 4);
    MoveCommon(2, b - (b - a) / 4);
  }
}

double MultiView::PanWindow() const {
  const Axis& shown = Lead().Abscissa;
  return zoomed_ ? shown.Maximum - shown.Minimum : workbench_.graph.ViewDuration;
}

double MultiView::PanStep() const {
  return zoomed_ || workbench_.graph.PanSize == 0 ? PanWindow() : workbench_.graph.PanSize;
}

void MultiView::ShowStretch(double start) {
  SetAbscissa(start, start + PanWindow());
}

void MultiView::PanForward(bool toEnd) {
  const double end = AbscissaEnd(workbench_.trial);
  const double next = Lead().Abscissa.Minimum + PanStep();
  const double rounding = 1e-9 * PanWindow();
  if (toEnd || next + PanWindow() > end + rounding) {
    Request(WindowRequest::Beep);
    ShowStretch(end - PanWindow());
  } else {
    ShowStretch(next);
  }
}

void MultiView::PanBack(bool toStart) {
  const double start = AbscissaStart(workbench_.trial);
  const double next = Lead().Abscissa.Minimum - PanStep();
  const double rounding = 1e-9 * PanWindow();
  if (toStart || next < start - rounding) {
    Request(WindowRequest::Beep);
    ShowStretch(start);
  } else {
    ShowStretch(next);
  }
}

}  // namespace velmora
