#pragma once

#include <vector>

#include "plot/drawn_plot.hpp"
#include "plot/traces/trace_plottable.hpp"

namespace velmora {

class ResultMarks;
class StackOverlay;

/// A stack of graphs drawn as one picture: lanes of equal height with the abscissa once at the bottom, each
/// with its ordinate and the names of its channels, cursors through all of them.
///
/// On the screen lanes have a least height: what does not fit is scrolled to. A picture holds all.
class StackPlot : public DrawnPlot {
 public:
  explicit StackPlot(QWidget* parent = nullptr);

  /// None shows an empty plot.
  void SetLanes(std::vector<Lane> lanes) { lanes_ = std::move(lanes); }
  void Clear() override { lanes_.clear(); }
  /// The graph in a frame; 0: none.
  void SetSelected(int graph) { selected_ = graph; }
  /// Whether all lanes are shown, however low they get.
  void SetWhole(bool whole) { whole_ = whole; }
  /// The lane (from 0) that is uppermost.
  void ScrollTo(int first) { first_ = first; }
  /// Shows one graph alone; 0: all again.
  void ShowAlone(int graph) { alone_ = graph; }
  [[nodiscard]] int Alone() const { return alone_; }

  void Arrange() final;

  /// Lanes that have room at once, and all there are.
  [[nodiscard]] int FittingLanes() const;
  [[nodiscard]] int Lanes() const { return static_cast<int>(Stacked().size()); }
  [[nodiscard]] int First() const { return first_; }
  /// Of all lanes.
  [[nodiscard]] std::optional<PictureOrder> Picture() const override;

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

 protected:
  [[nodiscard]] StackOverlay& Overlay() const { return *overlay_; }
  [[nodiscard]] const Graph* Lead() const final { return lanes_.empty() ? nullptr : lanes_.front().graph; }

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
  int selected_ = 0;
  int first_ = 0;
  int alone_ = 0;
  bool whole_ = false;
  // The plot library owns these.
  QCPLayoutInset* inset_ = nullptr;
  StackOverlay* overlay_ = nullptr;
};

}  // namespace velmora
