#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/text/numbers.hpp"
#include "core/trial/abscissa.hpp"
#include "graph/single_view.hpp"

namespace velmora {

std::int32_t SingleView::SampleOf(int cursor) const {
  return velmora::SampleOf(workbench_.trial,
                           graph_.Cursors.at(static_cast<std::size_t>(cursor - 1)).XPosition);
}

SampleRange SingleView::PairRange() const {
  const auto [lo, hi] = std::minmax({SampleOf(1), SampleOf(2)});
  return {lo, hi};
}

void SingleView::TakeRange() {
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

void SingleView::SetCursors(const std::vector<double>& positions) {
  graph_.Cursors.clear();
  for (const double x : positions) {
    AddCursor(x, kRed);
  }
  if (Cursors() > 0) {
    graph_.Cursors.front().Color = graph_.Background == kWhite ? kBlue : kYellow;
    graph_.Track = TrackMode::DragCursors;
  }
  TakeRange();
}

void SingleView::AddCursor(double x, Colour colour) {
  GraphCursor cursor;
  cursor.XPosition = x;
  cursor.Color = colour;
  cursor.Crosshair = horizontal_ ? CrosshairStyle::Both : CrosshairStyle::Vertical;
  graph_.Cursors.push_back(cursor);
  NameCursors();
}

void SingleView::NoCursors() {
  SetCursors({});
}

void SingleView::OneCursor() {
  const double a = graph_.Abscissa.Minimum;
  const double b = graph_.Abscissa.Maximum;
  SetCursors({Cursors() > 0 ? graph_.Cursors[0].XPosition : a + (b - a) / 2});
}

void SingleView::TwoCursors() {
  const double a = graph_.Abscissa.Minimum;
  const double b = graph_.Abscissa.Maximum;
  double x1 = a + (b - a) / 4;
  double x2 = b - (b - a) / 4;
  if (Cursors() > 0) {
    x1 = graph_.Cursors[0].XPosition;
    x2 = Cursors() > 1 ? graph_.Cursors[1].XPosition : x1 + (b - x1) / 2;
  }
  SetCursors({x1, x2});
}

// A cursor stays on the trial: the cursor range must name samples that are there.
void SingleView::DoMove(int cursor, double x) {
  if (cursor < 1 || cursor > Cursors()) {
    throw std::out_of_range("there is no cursor " + std::to_string(cursor) + ", but " +
                            std::to_string(Cursors()));
  }
  if (!std::isfinite(x)) {
    throw std::invalid_argument("a cursor cannot be moved there");
  }
  const Graph::Ends ends = graph_.TrialEnds();
  graph_.Cursors[static_cast<std::size_t>(cursor - 1)].XPosition = std::clamp(x, ends.first, ends.last);
  TakeRange();
}

void SingleView::MoveCrosshair(int cursor, double y) {
  if (cursor >= 1 && cursor <= Cursors() && std::isfinite(y)) {
    graph_.Cursors[static_cast<std::size_t>(cursor - 1)].YPosition = y;
  }
}

void SingleView::MoveCursorsToEnds(bool first, bool last) {
  const Trial& trial = workbench_.trial;
  const double start = AbscissaStart(trial);
  const double end = PlaceOf(trial, trial.NData);
  for (GraphCursor& cursor : graph_.Cursors) {
    cursor.XPosition = std::clamp(cursor.XPosition, start, end);
  }
  if (first && Cursors() > 0) {
    graph_.Cursors[0].XPosition = start;
  }
  if (last && Cursors() > 0) {
    graph_.Cursors[Cursors() > 1 ? 1 : 0].XPosition = end;
  }
  TakeRange();
}

void SingleView::LeftCursorToStart() {
  if (Cursors() >= 2) {
    graph_.Cursors[0].XPosition = AbscissaStart(workbench_.trial);
    TakeRange();
    workbench_.trial.CursorLo = 1;
  }
}

void SingleView::RightCursorToEnd() {
  if (Cursors() >= 2) {
    graph_.Cursors[1].XPosition = AbscissaEnd(workbench_.trial);
    TakeRange();
    workbench_.trial.CursorHi = workbench_.trial.NData;
  }
}

// CursorLo is 1 whatever the left end on the screen is: the key means "everything".
void SingleView::CursorsToEnds() {
  if (Cursors() >= 2) {
    graph_.Cursors[0].XPosition = graph_.Abscissa.Minimum;
    graph_.Cursors[1].XPosition = AbscissaEnd(workbench_.trial);
    workbench_.trial.CursorLo = 1;
    workbench_.trial.CursorHi = workbench_.trial.NData;
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
  graph_.Cursors.erase(graph_.Cursors.begin() + which - 1);
  NameCursors();
  TakeRange();
}

void SingleView::ToggleNumbers() {
  if (Cursors() > 1) {
    numbersShown_ = !numbersShown_;
    NameCursors();
  }
}

void SingleView::NameCursors() {
  numbersShown_ = numbersShown_ && Cursors() > 1;
  int number = 0;
  for (GraphCursor& cursor : graph_.Cursors) {
    ++number;
    cursor.Name = numbersShown_ ? FormatNumber(number, "0") : "";
    cursor.NameVisible = numbersShown_;
  }
}

void SingleView::ToggleHorizontal() {
  horizontal_ = !horizontal_;
  for (GraphCursor& cursor : graph_.Cursors) {
    cursor.Crosshair = horizontal_ ? CrosshairStyle::Both : CrosshairStyle::Vertical;
  }
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
  const std::int32_t sample = SampleOf(1);
  CursorValues values;
  values.Sample = FormatNumber(sample, "0");
  values.Time =
      AbscissaText(workbench_, graph_.Cursors[0].XPosition, trial.Duration > kLong ? "0.0" : "0.000");
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
  const double between = std::abs(graph_.Cursors[1].XPosition - graph_.Cursors[0].XPosition);
  return FormatNumber(RoundHalfEven32(between * workbench_.trial.Rate), "0");
}

std::string SingleView::IntervalText() const {
  double interval = workbench_.trial.Duration;
  if (Cursors() == 1) {
    interval = graph_.Cursors[0].XPosition;
  } else if (Cursors() >= 2) {
    interval = std::abs(graph_.Cursors[1].XPosition - graph_.Cursors[0].XPosition);
  }
  return AbscissaText(workbench_, interval, workbench_.patterns.ValuePattern) + " " +
         AbscissaUnits(workbench_);
}

}  // namespace velmora
