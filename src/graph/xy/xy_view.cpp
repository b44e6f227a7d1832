#include "graph/xy/xy_view.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <stdexcept>

#include "core/questions/progress.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/math/prediction_ellipse.hpp"
#include "graph/copied_channels.hpp"
#include "graph/view_keys.hpp"
#include "graph/xy/path_measures.hpp"
#include "graph/xy/xy_choose_form.hpp"

namespace velmora {
namespace {

constexpr const char* kKeyList =
    "C = start Calculator\nL = toggle Line mode\nP = toggle Points\n"
    "T = Table of loop area, length, slope\nW = Window between the cursors\n"
    "F = Full range\nZ = Zoom in/out of window\nF1 or ? = show this help screen\nF2 or R = reset\n"
    "F3  = full-screen\nF4  = window\nF6  = full width\nF7  = full height";

}  // namespace

XYView::XYView(Workbench& workbench, const XYSetup& setup) : GraphView(workbench), setup_(setup) {
  Load();
}

void XYView::Load() {
  Lead().Plots.clear();
  TakeSamples();
  SetDefaultLooks();
  ShowAll();
  TellMissingEllipses();
}

// --- Samples

void XYView::TakeSamples() {
  constexpr std::int32_t kQuickSamples = 200'000;
  const Trial& trial = workbench_.trial;
  range_ = RangeOf(setup_, trial);
  channels_ = ChannelsOfY(setup_, trial);
  std::optional<ProgressPanel> panel;
  if (range_.hi - range_.lo > kQuickSamples) {
    panel.emplace(workbench_);
    panel->SetStatus("Plotting data");
  }
  CopyChannels(trial, setup_.X, channels_, range_, shown_);
  constexpr float kBreak = std::numeric_limits<float>::quiet_NaN();
  const auto rows = static_cast<int>(channels_.size());
  for (std::int64_t i = 1; i <= shown_.NData; ++i) {
    float* frame = shown_.matrix.Frame(i);
    for (int row = 0; row <= rows; ++row) {
      frame[row] = std::isfinite(frame[row]) ? frame[row] : kBreak;
    }
  }
  Lead().PlotXY(shown_);
  Lead().Path.emplace();
  ChannelFlags all{};
  std::fill_n(all.begin() + 1, rows, true);
  Lead().Show(all);
  picked_.reset();
  Measure();
  Decorate();
}

void XYView::Measure() {
  table_ = {.name = "frmXY",
            .title = "Against " + LabelOf(workbench_.trial, setup_.X) +
                     "; the loop closed from end to start, counter-clockwise above 0",
            .columns = {"Channel", "Label", "Loop area", "Path length", "r", "Slope", "n"}};
  points_.clear();
  ellipses_.clear();
  std::vector<double> x;
  std::vector<double> y;
  for (int plot = 1; plot <= static_cast<int>(channels_.size()); ++plot) {
    x.clear();
    y.clear();
    for (std::int64_t i = 1; i <= shown_.NData; ++i) {
      const float* frame = shown_.matrix.Frame(i);
      if (!std::isnan(frame[0]) && !std::isnan(frame[plot])) {
        x.push_back(frame[0]);
        y.push_back(frame[plot]);
      }
    }
    const PathMeasures path = MeasurePath(x, y);
    const int channel = ChannelOf(plot);
    points_.push_back(path.count);
    if (const std::optional<PredictionEllipse> e = PredictionEllipse95(x, y)) {
      const int colour = Lead().Plots[static_cast<std::size_t>(plot - 1)].ColourIndex;
      ellipses_.push_back({e->x, e->y, e->major, e->minor, e->angle, colour});
    }
    table_.rows.push_back({ChannelNumber(channel), LabelOf(workbench_.trial, channel), CellOf(path.loopArea),
                           CellOf(path.length), CellOf(path.r), CellOf(path.slope),
                           static_cast<double>(path.count)});
  }
  KeepTable(workbench_.results.ResultTables, table_);
}

// --- Looks

void XYView::Decorate() {
  Graph& graph = Lead();
  graph.EqualScales = setup_.EqualScales;
  graph.Path = PathLook{.ColourByTime = setup_.ColourByTime && channels_.size() == 1,
                        .From = TimeText(range_.lo),
                        .To = TimeText(range_.hi),
                        .Stronger = BetweenCursors()};
  graph.Ellipses = setup_.Ellipse ? ellipses_ : std::vector<FormGraph::Ellipse>();
  if (graph.Path->ColourByTime) {
    for (FormGraph::Ellipse& ellipse : graph.Ellipses) {
      ellipse.colour = 0;  // the channel's own is nowhere else
    }
  }
  graph.Points.clear();
  if (setup_.Marks) {
    AddEnds();
  }
  if (picked_) {
    graph.Points.push_back({picked_->x, picked_->y, PickedText(), 0});
  }
}

void XYView::AddEnds() {
  for (int plot = 1; plot <= static_cast<int>(channels_.size()); ++plot) {
    const auto isPoint = [&](std::int64_t i) {
      const float* frame = shown_.matrix.Frame(i);
      return !std::isnan(frame[0]) && !std::isnan(frame[plot]);
    };
    std::int64_t first = 1;
    std::int64_t last = shown_.NData;
    while (first <= last && !isPoint(first)) {
      ++first;
    }
    while (last > first && !isPoint(last)) {
      --last;
    }
    if (first > last) {
      continue;
    }
    const int own = Lead().Plots[static_cast<std::size_t>(plot - 1)].ColourIndex;
    const int colour = Lead().Path->ColourByTime ? 0 : own;
    const auto add = [&](std::int64_t i, const char* text) {
      const float* frame = shown_.matrix.Frame(i);
      Lead().Points.push_back({frame[0], frame[plot], text, colour});
    };
    add(first, first == last ? "Start, end" : "Start");
    if (first < last) {
      add(last, "End");
    }
  }
}

// Counted in the samples that are shown; empty when the cursors leave nothing out.
SampleSpan XYView::BetweenCursors() const {
  const Trial& trial = workbench_.trial;
  const std::int64_t lo = std::max<std::int64_t>(trial.CursorLo, range_.lo);
  const std::int64_t hi = std::min<std::int64_t>(trial.CursorHi, range_.hi);
  if (hi <= lo || (lo == range_.lo && hi == range_.hi)) {
    return {};
  }
  return {lo - range_.lo + 1, hi - range_.lo + 2};
}

std::string XYView::TimeText(std::int32_t sample) const {
  const std::string time =
      AbscissaText(workbench_, workbench_.trial.Data(sample, 0), workbench_.patterns.TimePattern);
  const std::string units = AbscissaUnits(workbench_);
  return units.empty() ? time : time + " " + units;
}

void XYView::SetDefaultLooks() {
  ClearLooks(Lead());
  CaptionAxes();
  SetBackground(kBlack);
}

void XYView::CaptionAxes() {
  Graph& graph = Lead();
  graph.Title = "X-Y Plot of " + TitleOnOneLine(workbench_.trial);
  graph.Abscissa.Caption = LabelWithUnits(LabelOf(workbench_.trial, setup_.X), UnitsOf(workbench_, setup_.X));
  graph.Abscissa.Clock = setup_.X == 0 && workbench_.time.Base == TimeBase::HhMmSs;
  graph.Ordinate.Caption.clear();
  if (channels_.size() == 1) {
    graph.Ordinate.Caption =
        LabelWithUnits(LabelOf(workbench_.trial, channels_[0]), UnitsOf(workbench_, channels_[0]));
  }
}

void XYView::ToggleEqualScales() {
  setup_.EqualScales = !setup_.EqualScales;
  Decorate();
}

void XYView::ToggleMarks() {
  setup_.Marks = !setup_.Marks;
  Decorate();
}

void XYView::ToggleColourByTime() {
  if (!setup_.ColourByTime && !MayColourByTime(workbench_, channels_.size())) {
    return;
  }
  setup_.ColourByTime = !setup_.ColourByTime;
  Decorate();
}

void XYView::ToggleEllipse() {
  setup_.Ellipse = !setup_.Ellipse;
  Decorate();
  ShowAll();
  TellMissingEllipses();
}

void XYView::TellMissingEllipses() {
  if (setup_.Ellipse && ellipses_.size() < channels_.size()) {
    RefuseTooFewData(workbench_, "An ellipse needs 3 points at least.");
  }
}

// --- Ranges

void XYView::ShowAll() {
  windowMode_ = false;
  ScaleToFit(1, shown_.NData);
  SetScale(scale_);
}

// A little room all around: a path runs along its extremes.
void XYView::ScaleToFit(std::int64_t first, std::int64_t last) {
  constexpr double kRoom = 0.04;
  Graph& graph = Lead();
  const ColumnExtremes extremes = graph.Envelope().Columns(first, last, 1);
  const auto show = [](Axis& axis, double low, double high) {
    if (!(low <= high)) {
      return;  // no number at all
    }
    const double room = high > low ? kRoom * (high - low) : 1.0;
    axis.SetMinMax(axis.Log ? low : low - room, axis.Log ? high : high + room);
  };
  Extremes up;
  for (const Plot& plot : graph.Plots) {
    const Extremes own = extremes.At(0, plot.Channel);
    up.min = std::min(up.min, own.min);
    up.max = std::max(up.max, own.max);
  }
  const Extremes across = extremes.At(0, 0);
  double left = across.min;
  double right = across.max;
  double bottom = up.min;
  double top = up.max;
  for (const FormGraph::Ellipse& ellipse : graph.Ellipses) {
    const double angle = ellipse.angle * std::numbers::pi / 180;
    const double wide = std::hypot(ellipse.major * std::cos(angle), ellipse.minor * std::sin(angle));
    const double high = std::hypot(ellipse.major * std::sin(angle), ellipse.minor * std::cos(angle));
    left = std::min(left, ellipse.x - wide);
    right = std::max(right, ellipse.x + wide);
    bottom = std::min(bottom, ellipse.y - high);
    top = std::max(top, ellipse.y + high);
  }
  show(graph.Abscissa, left, right);
  show(graph.Ordinate, bottom, top);
}

void XYView::SetScale(Scale scale) {
  scale_ = scale;
  ScaleOrdinate(Lead().Ordinate, scale, [this] {
    const Axis across = Lead().Abscissa;
    ScaleToFit(1, shown_.NData);
    Lead().Abscissa.SetMinMax(across.Minimum, across.Maximum);
  });
}

void XYView::ResetZoom() {
  Lead().Track = TrackMode::None;
  ShowAll();
}

void XYView::Reset() {
  scale_ = Scale::Auto;
  SetDefaultLooks();
  ShowAll();
}

void XYView::Replot() {
  TakeSamples();
  ShowAll();
}

void XYView::ToggleWindow() {
  const SampleSpan between = Lead().Path->Stronger;
  if (windowMode_ || between.begin >= between.end) {
    ShowAll();
    return;
  }
  ScaleToFit(between.begin, between.end - 1);
  windowMode_ = true;
}

// --- A trial that changes

std::vector<Extremes> XYView::Reach() const {
  std::vector<Extremes> reach;
  for (int row = 0; row <= static_cast<int>(channels_.size()); ++row) {
    reach.push_back(Lead().Envelope().Whole(row));
  }
  return reach;
}

bool XYView::TrialChanged() {
  const Trial& trial = workbench_.trial;
  if (trial.NData == 0 || setup_.X > trial.NChan || ChannelsOfY(setup_, trial).empty()) {
    return false;
  }
  const auto samples = shown_.NData;
  const std::vector<int> channels = channels_;
  const std::vector<Extremes> reach = Reach();
  TakeSamples();
  CaptionAxes();
  if (shown_.NData != samples || channels_ != channels || Reach() != reach) {
    ShowAll();
  }
  return true;
}

void XYView::ChangeChannels() {
  XYSetup setup = setup_;
  if (XYChooseForm(workbench_, setup).Ask()) {
    setup_ = setup;
    Load();
  }
}

// --- What a person does

void XYView::ShowKeyList() {
  ShowKeys(workbench_, kKeyList);
}

bool XYView::DoKey(const KeyPress& key) {
  const std::string name = ToUpper(key.name);
  if (AsksForHelp(name)) {
    ShowKeyList();
  } else if (name == "F2" || name == "R") {
    Reset();
  } else if (name == "T") {
    workbench_.RunById(workbench_, "xy.table");
  } else {
    return PressGraphKey(name);
  }
  return true;
}

void XYView::DoMove(const CursorMove& move) {
  throw std::out_of_range("there is no cursor " + std::to_string(move.cursor));
}

void XYView::DoClick(const GraphClick& click) {
  static_cast<void>(GraphAt(click.graph));
  if (click.how == Clicked::Twice) {
    ShowAll();
  }
}

void XYView::Pick(double x, double y, PixelSize pixel) {
  constexpr double kNear = 20.0;  // pixels
  const auto place = [](const Axis& axis, double value) { return axis.Log ? std::log(value) : value; };
  const Graph& graph = Lead();
  const double px = place(graph.Abscissa, x);
  const double py = place(graph.Ordinate, y);
  double least = kNear * kNear;
  picked_.reset();
  for (std::int64_t i = 1; i <= shown_.NData; ++i) {
    const float* frame = shown_.matrix.Frame(i);
    const double dx = (place(graph.Abscissa, frame[0]) - px) / pixel.x;
    for (const Plot& plot : graph.Plots) {
      const double dy = (place(graph.Ordinate, frame[plot.Channel]) - py) / pixel.y;
      const double square = dx * dx + dy * dy;
      if (square < least) {
        least = square;
        picked_ = {static_cast<std::int32_t>(range_.lo + i - 1), plot.Channel, frame[0], frame[plot.Channel]};
      }
    }
  }
  Decorate();
}

void XYView::LeaveMode() {
  if (Lead().Track == TrackMode::None) {
    picked_.reset();
    Decorate();
  }
  SetTrack(TrackMode::None);
}

std::string XYView::PickedText() const {
  if (!picked_) {
    return {};
  }
  const auto value = [this](double number, int channel) {
    const std::string units = UnitsOf(workbench_, channel);
    return FormatNumber(number, workbench_.patterns.ValuePattern) + (units.empty() ? "" : " " + units);
  };
  return "n = " + std::to_string(picked_->sample) + ", " + TimeText(picked_->sample) + ": " +
         value(picked_->x, setup_.X) + ", " + value(picked_->y, ChannelOf(picked_->plot));
}

XYView& OpenXYView(Workbench& workbench) {
  return OpenAs<XYView>(workbench, "X-Y plot");
}

const XYView* FindXYView(const Workbench& workbench) {
  return dynamic_cast<const XYView*>(workbench.view.get());
}

}  // namespace velmora
