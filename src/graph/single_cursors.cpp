#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/trial/abscissa.hpp"
#include "graph/single_view.hpp"

namespace velmora {

void SingleView::AddCursors(const std::vector<double>& places, std::optional<Colour> colour) {
  auto place = Lead().Cursors.begin() + Cursors();
  for (const double x : places) {
    const bool first = place == Lead().Cursors.begin();
    GraphCursor cursor;
    cursor.XPosition = x;
    cursor.Color = colour.value_or(first ? FirstCursorColour() : kRed);
    place = Lead().Cursors.insert(place, cursor) + 1;
  }
  if (Cursors() > 0) {
    Lead().Track = TrackMode::DragCursors;
  }
  CursorsChanged();
  TakeRange();
}

void SingleView::KeepFirstTwo() {
  if (Cursors() > 2) {
    Lead().Cursors.erase(Lead().Cursors.begin() + 2, Lead().Cursors.begin() + Cursors());
    CursorsChanged();
    TakeRange();
  }
}

void SingleView::KeepFirstAndLast() {
  if (Cursors() > 2) {
    Lead().Cursors.erase(Lead().Cursors.begin() + 1, Lead().Cursors.begin() + Cursors() - 1);
    CursorsChanged();
    TakeRange();
  }
}

void SingleView::ShowPreview(std::optional<GraphPreview> preview) {
  Lead().Preview = std::move(preview);
  if (onRedraw) {
    onRedraw(Redraw::Preview);
  }
}

void SingleView::RedrawAll() const {
  if (onRedraw) {
    onRedraw(Redraw::All);
  }
}

void SingleView::DoMove(const CursorMove& move) {
  if (move.graph > 1) {
    static_cast<void>(GraphAt(move.graph));
  }
  MoveCommon(move.cursor, move.x);
  moved_ = move.cursor;
}

void SingleView::MoveCrosshair(int cursor, double y) {
  if (cursor >= 1 && cursor <= Cursors() && std::isfinite(y)) {
    Lead().Cursors[static_cast<std::size_t>(cursor - 1)].YPosition = y;
  }
}

void SingleView::DeleteCursor() {
  if (Cursors() == 0) {
    return;
  }
  int which = Cursors();
  if (Cursors() == 2) {
    const Box box{.title = "Delete Cursor?",
                  .text = "Confirm deletion of cursor.",
                  .icon = Icon::Question,
                  .buttons = {Button::Yes, Button::No}};
    if (workbench_.questions.AskBox(box) == Button::No) {
      return;
    }
  } else if (Cursors() > 2) {
    const std::string typed = workbench_.questions.AskInput(
        {.title = "Delete a Cursor",
         .prompt = "Enter number of cursor to delete or press Cancel.\nEnter a number from 1 to " +
                   std::to_string(Cursors()) +
                   ".\nUsually the yellow cursor is 1; red is 2; the rest are sequential from the left.",
         .isNumber = true});
    if (typed.empty()) {
      return;
    }
    which = RoundHalfEven32(Val(typed));
    if (which < 1 || which > Cursors()) {
      ShowRefusal(workbench_,
                  {.title = "Cursor Number Invalid", .text = "No such cursor.", .icon = Icon::Exclamation});
      return;
    }
  }
  Lead().Cursors.erase(Lead().Cursors.begin() + which - 1);
  CursorsChanged();
  TakeRange();
}

void SingleView::ShowNumbers(bool on) {
  numbersShown_ = on;
  CursorsChanged();
}

void SingleView::CursorsChanged() {
  moved_ = 1;
  numbersShown_ = numbersShown_ && Cursors() > 1;
  int number = 0;
  for (GraphCursor& cursor : Lead().Cursors) {
    if (cursor.Kind == CursorKind::Cursor) {
      ++number;
      cursor.Name = numbersShown_ ? FormatNumber(number, "0") : "";
      cursor.NameVisible = numbersShown_;
      cursor.Crosshair = horizontal_ ? CrosshairStyle::Both : CrosshairStyle::Vertical;
    }
  }
}

void SingleView::ToggleHorizontal() {
  horizontal_ = !horizontal_;
  CursorsChanged();
}

void SingleView::ToggleValues() {
  OneCursor();
  valuesShown_ = !valuesShown_;
}

std::optional<CursorValues> SingleView::Values() const {
  if (!valuesShown_ || Cursors() == 0) {
    return std::nullopt;
  }
  constexpr double kLong = 999.0;  // seconds; from there on tenths are enough
  const Trial& trial = workbench_.trial;
  const std::int32_t sample = SampleOf(moved_);
  const double x = Lead().Cursors[static_cast<std::size_t>(moved_ - 1)].XPosition;
  CursorValues values;
  values.Sample = FormatNumber(sample, "0");
  values.Time = AbscissaText(workbench_, x, trial.Duration > kLong ? "0.0" : "0.000");
  const int last = std::min<int>(workbench_.LastChanShown, trial.NChan);
  for (int c = std::max<int>(workbench_.FirstChanShown, 1); c <= last; ++c) {
    values.Rows.push_back(
        {c, FormatNumber(static_cast<double>(trial.Data(sample, c)), workbench_.patterns.ValuePattern)});
  }
  return values;
}

// With one cursor the boxes read "Datum" and "Time", with two "# data" and "Duration".
std::string SingleView::CountText() const {
  if (Cursors() == 0) {
    return FormatNumber(workbench_.trial.NData, "0");
  }
  if (Cursors() == 1) {
    return FormatNumber(SampleOf(1), "0");
  }
  const double between = std::abs(Lead().Cursors[1].XPosition - Lead().Cursors[0].XPosition);
  return FormatNumber(RoundHalfEven32(between * SamplesPerUnit(workbench_.trial)), "0");
}

std::string SingleView::IntervalText() const {
  double interval = workbench_.trial.Duration;
  if (Cursors() == 1) {
    interval = Lead().Cursors[0].XPosition;
  } else if (Cursors() >= 2) {
    interval = std::abs(Lead().Cursors[1].XPosition - Lead().Cursors[0].XPosition);
  }
  return AbscissaText(workbench_, interval, workbench_.patterns.ValuePattern) + " " +
         AbscissaUnits(workbench_);
}

}  // namespace velmora
