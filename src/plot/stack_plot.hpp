#pragma once

#include <qcustomplot.h>

#include <optional>
#include <vector>

#include "graph/picture.hpp"
#include "plot/traces/trace_plottable.hpp"

namespace velmora {

class ResultMarks;
class StackOverlay;

/// A stack of graphs drawn as one picture: lanes of equal height with the abscissa once at the bottom, each
/// with its ordinate and the names of its channels, cursors through all of them. It shows what the graphs
/// hold at the last Arrange; they must outlive it or be replaced.
///
/// On the screen lanes have a least height: what does not fit is scrolled to. A picture holds all.
class StackPlot : public QCustomPlot {
 public:
  explicit StackPlot(QWidget* parent = nullptr);

  /// None shows an empty plot.
  void SetLanes(std::vector<Lane> lanes) { lanes_ = std::move(lanes); }
  void SetTitle(const QString& title) { title_ = title; }
  void SetPaper(std::optional<Colour> paper) { paper_ = paper; }
  /// The graph in a frame; 0: none.
  void SetSelected(int graph) { selected_ = graph; }
  /// Whether all lanes are shown, however low they get.
  void SetWhole(bool whole) { whole_ = whole; }
  /// The lane (from 0) that is uppermost.
  void ScrollTo(int first) { first_ = first; }
  /// Shows one graph alone; 0: all again.
  void ShowAlone(int graph) { alone_ = graph; }
  [[nodiscard]] int Alone() const { return alone_; }

  /// Takes everything from the graphs; draws nothing yet.
  void Arrange();

  /// Lanes that have room at once, and all there are.
  [[nodiscard]] int FittingLanes() const;
  [[nodiscard]] int Lanes() const { return static_cast<int>(Stacked().size()); }
  [[nodiscard]] int First() const { return first_; }
  [[nodiscard]] Colour Background() const;
  /// What is shown, all lanes of it, as a picture of the same size; nothing without a graph.
  [[nodiscard]] std::optional<PictureOrder> Picture() const;

  /// A lane on the screen.
  struct Shown {
    Lane lane;
    QCPAxisRect* rect = nullptr;
  };
  [[nodiscard]] const std::vector<Shown>& ShownLanes() const { return shown_; }
  /// The lane at a place, its label beside it included; nullptr: none.
  [[nodiscard]] const Shown* LaneAt(const QPointF& place) const;
  /// The lane of a graph that is on the screen; nullptr: none.
  [[nodiscard]] const Shown* LaneOf(int graph) const;
  /// Whether the place is a lane's label: its names or what stands to its left.
  [[nodiscard]] bool IsLabel(const Shown& shown, const QPointF& place) const;
  [[nodiscard]] int Selected() const { return selected_; }
  /// What stands above the lanes; empty: nothing.
  [[nodiscard]] QString Heading() const;

 protected:
  [[nodiscard]] StackOverlay& Overlay() const { return *overlay_; }
  /// The topmost layer, which can be drawn without the rest.
  [[nodiscard]] QCPLayer* CursorLayer() const { return layer("overlay"); }

 private:
  /// What draws one lane; the plot library deletes it.
  struct Drawn {
    QCPAxisRect* rect = nullptr;
    TracePlottable* traces = nullptr;
    ResultMarks* marks = nullptr;
  };
  [[nodiscard]] std::vector<Lane> Stacked() const;
  [[nodiscard]] QRect Room() const;
  [[nodiscard]] int LeftMargin() const;
  void SetCount(std::size_t count);
  void Place(std::size_t k, const QRect& place);
  void ArrangeLane(const Drawn& drawn, const Lane& lane, bool lowest);

  std::vector<Lane> lanes_;
  std::vector<Drawn> drawn_;
  std::vector<Shown> shown_;
  QString title_;
  std::optional<Colour> paper_;
  int selected_ = 0;
  int first_ = 0;
  int alone_ = 0;
  bool whole_ = false;
  // The plot library owns these.
  QCPLayoutInset* inset_ = nullptr;
  StackOverlay* overlay_ = nullptr;
};

}  // namespace velmora
