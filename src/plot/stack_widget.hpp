#pragma once

#include "plot/gesture.hpp"
#include "plot/range_moves.hpp"
#include "plot/stack_overlay.hpp"
#include "plot/stack_plot.hpp"

namespace velmora {

/// A stack of graphs under the mouse. It changes nothing of them by itself: it tells what a person did, and
/// shows them again when Redraw is called.
///   wheel               zoom of the abscissa at the pointer; with shift of the lane's ordinate; with ctrl
///                       a pan; beside the lanes it scrolls
///   middle button       pan, whatever the mode
///   left button         drags a cursor, a threshold line, an onset; else what the graphs' track mode says
///   double click        on a lane's label: the lane alone, and back
class StackWidget : public StackPlot {
  Q_OBJECT

 public:
  explicit StackWidget(QWidget* parent = nullptr);

  [[nodiscard]] QSize minimumSizeHint() const override { return {320, 200}; }

  void Redraw() override;
  bool CancelGesture() override;

 signals:
  /// Cursor `cursor` (from 1) of the graph's list was dragged to `x`.
  void cursorDragged(int graph, int cursor, double x);
  void thresholdDragged(int graph, double y);
  void dragEnded();
  void rangeChosen(int graph, const velmora::GraphRange& range);
  void pointed(double x, double y);
  void clicked(int graph);
  /// On the line of its threshold.
  void thresholdClicked(int graph);
  void doubleClicked(int graph);
  void rightClicked(int graph);
  /// Of how many lanes, which one stands above and how many have room.
  void scrolled();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  [[nodiscard]] static RangeMoves MovesOf(const Shown& shown);
  void DragLine(const QPointF& place);
  [[nodiscard]] Qt::CursorShape PointerAt(const QPointF& place) const;

  Gesture gesture_ = Gesture::None;
  StackOverlay::Hit hit_;
  int graph_ = 0;  // that was pressed
  QPointF pressed_;
  QPointF last_;
};

}  // namespace velmora
