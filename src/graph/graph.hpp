#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/questions/form_graph.hpp"
#include "core/trial/trial.hpp"
#include "graph/colours.hpp"
#include "graph/envelope_pyramid.hpp"
#include "graph/sample_times.hpp"

namespace velmora {

// A graph as data: what is drawn, not how. A widget draws it and moves its cursors; the views decide
// what is in it.

enum class LineStyle { None, Solid, Dotted, Dashed, DashDot, DashDotDot };
enum class PointStyle { None, Dot, Star, SmallX, LargeX, Plus, Cross, Circle, Square, Diamond };
enum class TrackMode { None, PanXAndY, PanX, PanY, ZoomArea, DragCursors };
enum class CrosshairStyle { None, Horizontal, Vertical, Both };

/// What a line of a graph's list of cursors stands for. A person sets cursors; the others are marks that a
/// command made, and the samples between the cursors do not depend on them.
enum class CursorKind { Cursor, Threshold, Onset, Offset, Value };
/// As the info names it: "cursor", "threshold", "onset", "offset", "value".
std::string_view KindName(CursorKind kind);

/// One channel against row 0.
struct Plot {
  int Channel = 0;
  std::string Name;
  bool Visible = false;
  int ColourIndex = 0;  // into ColourTable
  Colour LineColor = kWhite;
  LineStyle Line = LineStyle::Solid;
  double LineWidth = 1.0;  // device-independent pixels
  PointStyle Point = PointStyle::None;
  bool Bars = false;  // from zero to each sample, in place of the line
};

struct Axis {
  double Minimum = 0.0;
  double Maximum = 1.0;
  bool Log = false;
  bool Clock = false;  // seconds, with hh:mm:ss for numerals
  std::string Caption;
  bool CaptionVisible = true;
  bool LabelsVisible = true;  // ticks and their numerals
  bool MajorGrid = true;
  bool ZeroLine = false;
  Colour GridColor = kGridGrey;

  void SetMinMax(double minimum, double maximum);
  /// A range on one side of zero is drawn out to it.
  void IncludeZero();
  /// As far to both sides of zero as the farther end.
  void CentreOnZero();
};

/// A line at XPosition (units of the abscissa), its handle at YPosition (units of the ordinate).
struct GraphCursor {
  double XPosition = 0.0;
  double YPosition = 0.0;
  Colour Color = kYellow;
  CrosshairStyle Crosshair = CrosshairStyle::Vertical;
  std::string Name;
  bool NameVisible = false;
  CursorKind Kind = CursorKind::Cursor;
};

/// What names an axis or a trace: "Force (N)"; without units the label stands alone.
std::string LabelWithUnits(std::string_view label, std::string_view units);

/// What the drawing asks of the samples; graphs of one trial have it in common.
struct PlottedSamples {
  EnvelopePyramid envelope;
  SampleTimes times;
  // The columns asked for last: graphs above each other all ask for the same.
  std::vector<SampleSpan> asked;
  std::optional<ColumnExtremes> columns;
};

/// The edges of bands of standard deviations, as a drawing asks for them. Rows count from 0 as in the
/// samples' own matrix, of which row 0 is the same.
struct BandEdges {
  SampleMatrix matrix;
  EnvelopePyramid envelope;
};

/// K standard deviations to both sides of a mean.
struct DeviationBand {
  int Channel = 0;    // of the mean
  int SDChannel = 0;  // of the standard deviation
  double K = 1.0;
  int Low = 0;  // the row of the lower edge; the upper one is the next
  std::shared_ptr<const BandEdges> Edges;
};

/// What a dialogue beside the graph would do, drawn while it is open.
struct GraphPreview {
  /// A line across the graph that a person may drag.
  struct Level {
    double y = 0.0;
    std::string text;
  };
  std::vector<Level> Levels;
  std::vector<double> Hits;  // where cursors would come to stand

  [[nodiscard]] bool Empty() const { return Levels.empty() && Hits.empty(); }
};

/// A wide, faint line behind the trace of a channel that is shown, such as the mean of other trials. Its
/// values stand evenly over all that is plotted, however long that is or becomes.
struct Backdrop {
  int Channel = 0;
  std::vector<float> Values;
};

/// How plots are drawn whose abscissa is no time: as paths from each sample to the next, wherever it lies.
struct PathLook {
  bool ColourByTime = false;  // from early to late
  std::string From{};         // the times of the first and the last sample, which stand at the colours
  std::string To{};
  SampleSpan Stronger{};  // samples with a wider line
};

class Graph {
 public:
  std::vector<Plot> Plots;  // channel c is plot c - 1
  Axis Abscissa;
  Axis Ordinate;
  bool EqualScales = false;          // both axes: what they show at least, a unit of both as long
  std::vector<GraphCursor> Cursors;  // cursor 1 first
  std::vector<DeviationBand> Deviations;
  std::vector<Backdrop> Backdrops;
  std::optional<PathLook> Path;  // set: not over time
  // What a result view adds; nobody drags these.
  std::vector<FormGraph::Mark> Marks;
  std::vector<FormGraph::Band> Bands;
  std::vector<FormGraph::Point> Points;
  std::vector<FormGraph::Ellipse> Ellipses;
  std::optional<GraphPreview> Preview;  // set: a dialogue works on the graph, and the cursors rest
  std::string Title;
  bool TitleVisible = true;
  bool SidebarVisible = true;
  Colour Background = kBlack;
  TrackMode Track = TrackMode::None;

  /// Takes every channel as a plot against row 0, with all its samples. Plots that were there keep
  /// their looks; axes and cursors stay. The trial must outlive the graph, and its samples must not
  /// change until they are plotted again.
  void PlotXY(const Trial& trial);
  /// The same of what another graph plots, with which it shares the envelope: 64 graphs cost no more than
  /// one.
  void PlotAs(const Graph& other);

  /// The selected channels are visible, all in the colours that the trial has for them.
  void Show(const ChannelFlags& selected);
  /// On black a visible plot of colour 0, which is black, turns white.
  void SetBackground(Colour colour);

  /// The times between which a range of the abscissa lies.
  struct Ends {
    double first;
    double last;
  };
  [[nodiscard]] Ends TrialEnds() const;
  /// The ranges that a person chose with the mouse. The abscissa of time keeps to the trial, but with equal
  /// scales, and no range gets so narrow that the numbers give out; one that cannot be shown changes nothing.
  /// Returns whether the abscissa has another range now.
  bool ShowRange(double left, double right, double bottom, double top);
  /// From the first to the last of row 0. Where row 0 ends with the trial, in AbscissaEnd itself: the
  /// 32 bits of the time column hold it only nearly.
  void AutoScaleAbscissa();
  /// The extremes of all samples of the visible plots and of the lines behind them, a unit around them when
  /// they are one value. Stays as it is when nothing visible is a number.
  void AutoScaleOrdinate();

  [[nodiscard]] int VisiblePlots() const;
  /// nullptr when none is visible.
  [[nodiscard]] const Plot* FirstVisible() const;
  [[nodiscard]] const EnvelopePyramid& Envelope() const { return plotted_->envelope; }
  /// As EnvelopePyramid::Columns; until the next call of any graph of the same samples.
  [[nodiscard]] const ColumnExtremes& Columns(const std::vector<SampleSpan>& spans) const;
  [[nodiscard]] const SampleTimes& Times() const { return plotted_->times; }
  /// What is plotted; nullptr before PlotXY.
  [[nodiscard]] const Trial* Plotted() const { return trial_; }

  // Styles of all visible plots.
  void SetLine(LineStyle style);
  void SetLineWidth(double width);
  void SetPoint(PointStyle style);
  /// The first half of the visible plots solid, the rest dashed.
  void HalveLines();
  /// Plot by plot the next style, from solid on and from dots on.
  void AlternateLines();
  void AlternateSolidAndDashed();
  void AlternatePoints();
  /// What these give the k-th, from 0, of the visible plots.
  [[nodiscard]] static LineStyle HalvedLine(int k, int plots);
  [[nodiscard]] static LineStyle AlternateLine(int k);
  [[nodiscard]] static PointStyle AlternatePoint(int k);

  /// Background, axes and styles of plots as text, and back. Reading throws std::invalid_argument and
  /// changes nothing when the text is not such a style; plots it does not tell of stay.
  [[nodiscard]] std::string StyleText() const;
  void ReadStyle(const std::string& text);

 private:
  std::vector<Plot*> Visible();

  void TakePlots();

  const Trial* trial_ = nullptr;
  std::shared_ptr<PlottedSamples> plotted_ = std::make_shared<PlottedSamples>();
};

}  // namespace velmora
